// Sorting a point list by a parallel list of keys: an operation of IcommonFunc and of IDataGeo.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "tavrel/Vector.h"
#include "tavrel/points.h"

namespace calcora::detail {

/// Sorts the points and their keys ascending by key; equal keys (0.0 and -0.0 are equal) keep their
/// order, not-a-number keys go last in theirs. Keys beyond the point count stay as they are; with
/// fewer keys than points nothing changes.
inline void sortPointsByKey(tav::Vector<tav::Point2DF>& points, tav::Vector<double>& keys)
{
    struct Entry {
        double key;
        tav::Point2DF point;
    };
    const int n = points.size();
    if (n < 2 || keys.size() < n) return;

    std::vector<Entry> entries;
    entries.reserve(static_cast<std::size_t>(n));
    const tav::Point2DF* point = points.constData();
    const double* key = keys.constData();
    for (int i = 0; i < n; ++i) entries.push_back({key[i], point[i]});

    // All not-a-numbers are equivalent to each other and above every number: a strict weak order.
    const auto before = [](const Entry& a, const Entry& b) {
        return a.key < b.key || (std::isnan(b.key) && !std::isnan(a.key));
    };
    if (std::is_sorted(entries.begin(), entries.end(), before)) return;
    std::stable_sort(entries.begin(), entries.end(), before);

    tav::Point2DF* outPoint = points.data();
    double* outKey = keys.data();
    for (const Entry& entry : entries) {
        *outKey++ = entry.key;
        *outPoint++ = entry.point;
    }
}

}  // namespace calcora::detail
