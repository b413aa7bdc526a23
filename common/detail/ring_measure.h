// Areas of rings with arcs, of objects that override nothing.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

#include "common/detail/arc.h"

namespace calcora::detail {

/// The ring areas of IcommonFunc and of IDataGeo, to the bit, without lists of points and bulges.
class RingMeasure {
public:
    /// An object for many rings keeps what rests on a bulge alone, since most arcs bound two loops.
    explicit RingMeasure(bool forMany) : keeps_(forMany) {}

    /// bulgePolygonArea() of a ring of `count` > 0 vertices; missing bulges are 0.
    double polygonArea(const Point2DF* ring, int count, const double* bulges, int bulgeCount);

    /// What DataGeo sorts loops by: the ring cut at its arcs' topmost and lowest points only. Nothing
    /// where rounding brings such a point and a vertex to one place.
    std::optional<double> signedArea(const Point2DF* ring, int count, const double* bulges,
                                     int bulgeCount);

private:
    /// What is known of a bulge: the area beside its whole arc.
    struct WholeArc {
        double size = -1.0;
        BesideChord beside{0.0};
    };
    /// A place where an arc is cut.
    struct Cut {
        double place;
        Point2DF point;
    };

    static constexpr std::size_t kKept = 1024;
    static constexpr std::size_t kMostCuts = 4;

    const WholeArc& wholeArc(double size);
    double besideOf(double chordSquared, double bulge, double share);
    void sortCuts();

    bool keeps_;
    std::vector<WholeArc> known_;
    std::array<Cut, kMostCuts> cuts_;
    std::size_t cutCount_ = 0;
};

}  // namespace calcora::detail
