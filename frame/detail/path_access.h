// How the rooms that work on paths reach them: creation through the host, points, arc records.
#pragma once

#include <optional>
#include <vector>

#include "geo/geometry.h"
#include "tavrel/diagnostics.h"

namespace calcora::paths {

/// A new object offering I; a failed creation is reported with the interface's name, the name of
/// the asking source and its line, and gives an empty reference.
template <class I>
tav::Ref<I> createOrReport(const char* source, int line)
{
    auto created = tav::Ref<I>::create();
    if (!created) tav::tavAssert(I::kInterfaceName, source, line);
    return created;
}

/// The points and arc records of a path; a null path is an empty one.
class PathView {
public:
    explicit PathView(const geo::PathRef& path) : points_(path.query<geo::IPointCollection>()) {}

    int pointCount() const { return points_ ? points_->pointCount() : 0; }
    /// True when segment i runs from point i to point i + 1 of the path.
    bool hasSegment(int i) const { return 0 <= i && i < pointCount() - 1; }
    tav::Point3DF point(int i) const { return points_->pointAt(i); }
    /// Every call copies the list; walks take it once.
    tav::List<tav::Variant> arcRecords() const
    {
        using geo::IPointCollection;
        return points_ ? points_->arcRecords(IPointCollection::kArcRecords)
                       : tav::List<tav::Variant>();
    }
    /// The arc point of the first record that names segment i.
    std::optional<tav::Point3DF> arcPoint(int i) const
    {
        const tav::List<tav::Variant> records = arcRecords();
        for (const tav::Variant& record : records) {
            const tav::Radian arc = record.toRadian();
            if (arc.segmentIndex == i) return arc.arcPoint;
        }
        return std::nullopt;
    }

    geo::IPointCollection* operator->() const { return points_.get(); }
    geo::IPointCollection& operator*() const { return *points_; }
    explicit operator bool() const { return static_cast<bool>(points_); }

private:
    tav::Ref<geo::IPointCollection> points_;
};

/// An arc segment: from a through m to b.
struct ArcPoints {
    tav::Point3DF a;
    tav::Point3DF b;
    tav::Point3DF m;
};

/// Arc segment i of the path; nothing for a bad index and a straight segment.
inline std::optional<ArcPoints> arcSegment(const geo::PathRef& path, int i)
{
    const PathView view(path);
    if (!view.hasSegment(i)) return std::nullopt;
    const auto m = view.arcPoint(i);
    if (!m) return std::nullopt;
    return ArcPoints{view.point(i), view.point(i + 1), *m};
}

/// The arc points of a path by segment, fetched once for a walk over all segments.
class ArcIndex {
public:
    explicit ArcIndex(const PathView& path) : records_(path.arcRecords())
    {
        const int segments = path.pointCount() - 1;
        if (records_.isEmpty() || segments <= 0) return;
        recordOf_.assign(static_cast<std::size_t>(segments), kStraight);
        for (int k = records_.size() - 1; k >= 0; --k) {  // backwards: the first record counts
            const int i = records().at(k).toRadian().segmentIndex;
            if (0 <= i && i < segments) recordOf_[static_cast<std::size_t>(i)] = k;
        }
    }

    /// The arc point of segment i of the path, nothing for a straight one.
    std::optional<tav::Point3DF> arcPoint(int i) const
    {
        if (recordOf_.empty()) return std::nullopt;
        const int record = recordOf_[static_cast<std::size_t>(i)];
        if (record == kStraight) return std::nullopt;
        return records().at(record).toRadian().arcPoint;
    }

private:
    static constexpr int kStraight = -1;

    const tav::List<tav::Variant>& records() const { return records_; }

    tav::List<tav::Variant> records_;
    std::vector<int> recordOf_;  // empty: no arcs
};

}  // namespace calcora::paths
