// Circles of arcs that are asked for again and again.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "common/detail/arc.h"

namespace calcora::detail {

/// Remembers the circles of arcs from the origin, by chord and bulge: the later of two that want one
/// place stays. The circles are those of an object that overrides nothing.
class CircleMemo {
public:
    Circle circleOf(const Point2DF& chord, double bulge)
    {
        if (kept_.empty()) kept_.resize(kPlaces);
        const auto bitsOf = [](double value) { return std::bit_cast<std::uint64_t>(value); };
        std::uint64_t hash = bitsOf(chord.x()) * 0x9E3779B97F4A7C15u;
        hash = (hash ^ (hash >> 29)) + bitsOf(chord.y()) * 0xBF58476D1CE4E5B9u;
        hash = (hash ^ (hash >> 32)) + bitsOf(bulge);
        Kept& kept = kept_[static_cast<std::size_t>(hash * 0x94D049BB133111EBu >> kHashShift)];
        if (!(kept.chord == chord && kept.bulge == bulge))
            kept = {chord, bulge, plainArcCircle(Point2DF(), chord, bulge)};
        return kept.circle;
    }

private:
    struct Kept {
        Point2DF chord;
        double bulge = 0.0;
        Circle circle = {};
    };
    static constexpr std::size_t kPlaces = 512;
    static constexpr int kHashShift = 64 - (std::bit_width(kPlaces) - 1);

    std::vector<Kept> kept_;
};

}  // namespace calcora::detail
