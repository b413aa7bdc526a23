// Numbered places, to be found again by what lies near.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

#include "tavrel/points.h"

namespace calcora::app {

class PlaceGrid {
public:
    /// Places are near that are up to `reach` apart in x and in y.
    explicit PlaceGrid(double reach) : reach_(reach) {}

    void add(const tav::Point2DF& place, int number)
    {
        cells_[cellOf(place, 0, 0)].emplace_back(place, number);
    }

    /// visit(place, number) for the places near this one.
    template <class Visit>
    void forEachNear(const tav::Point2DF& place, Visit&& visit) const
    {
        for (int dx = -1; dx <= 1; ++dx)
            for (int dy = -1; dy <= 1; ++dy) {
                const auto cell = cells_.find(cellOf(place, dx, dy));
                if (cell == cells_.end()) continue;
                for (const auto& [other, number] : cell->second)
                    if (std::fabs(other.x() - place.x()) <= reach_ &&
                        std::fabs(other.y() - place.y()) <= reach_)
                        visit(other, number);
            }
    }

private:
    struct Cell {
        double x = 0;
        double y = 0;
        friend bool operator==(const Cell& a, const Cell& b) = default;
    };
    struct CellHash {
        std::size_t operator()(const Cell& cell) const
        {
            // Adding 0 makes one zero of the two.
            std::uint64_t hash = std::bit_cast<std::uint64_t>(cell.x + 0.0) * 0x9e3779b97f4a7c15u;
            hash ^= hash >> 32;
            hash = (hash + std::bit_cast<std::uint64_t>(cell.y + 0.0)) * 0xff51afd7ed558ccdu;
            return hash ^ hash >> 32;
        }
    };

    Cell cellOf(const tav::Point2DF& place, int dx, int dy) const
    {
        return {std::floor(place.x() / reach_) + dx, std::floor(place.y() / reach_) + dy};
    }

    double reach_;
    std::unordered_map<Cell, std::vector<std::pair<tav::Point2DF, int>>, CellHash> cells_;
};

}  // namespace calcora::app
