// A drawing in memory: the figures of its model space, with layers.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "tavrel/Vector.h"
#include "tavrel/points.h"

namespace calcora::app {

using Points = tav::Vector<tav::Point2DF>;
using Values = tav::Vector<double>;
using PointLists = tav::Vector<Points>;
using ValueLists = tav::Vector<Values>;

/// A chain of straight segments and arcs. Bulge i belongs to the segment from point i to point
/// i + 1; the last one to the closing segment, and is 0 when the figure is open.
struct Figure {
    Points points;
    Values bulges;      ///< as many as points
    Values elevations;  ///< as many as points, or none: all 0
    bool closed = false;
    int layer = 0;  ///< index into Drawing::layers

    int segmentCount() const { return closed ? points.size() : points.size() - 1; }
};

/// Number of entities by kind, in alphabetical order.
using KindCounts = std::map<std::string, int>;

struct Drawing {
    std::vector<std::string> layers;
    std::vector<Figure> figures;  ///< in the order of the file, each with two points or more

    KindCounts taken;         ///< entities that became figures
    KindCounts notTaken;      ///< entities left out, by kind or by kind and reason
    int onOtherLayers = 0;    ///< entities left out because their layer was not asked for
    double ellipseReach = 0;  ///< the largest distance between an ellipse and its chords

    int entityCount() const
    {
        int count = 0;
        for (const auto& [kind, number] : taken) count += number;
        return count;
    }
    int notTakenCount() const
    {
        int count = 0;
        for (const auto& [kind, number] : notTaken) count += number;
        return count;
    }
    long long segmentCount() const
    {
        long long count = 0;
        for (const Figure& figure : figures) count += figure.segmentCount();
        return count;
    }
};

}  // namespace calcora::app
