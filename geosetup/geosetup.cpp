// Path editing: every edit builds a new path and leaves the old one to whoever still holds it.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "frame/detail/path_access.h"
#include "geosetup/CGeoSetUp.h"
#include "geosetup/detail/creation.h"

using namespace calcora::paths;

namespace {

/// Drawing units: points that differ by less in every coordinate are the same vertex.
constexpr double kSameVertex = 1e-6;

bool coincide(const tav::Point3DF& a, const tav::Point3DF& b)
{
    return std::fabs(a.x() - b.x()) < kSameVertex && std::fabs(a.y() - b.y()) < kSameVertex &&
           std::fabs(a.z() - b.z()) < kSameVertex;
}

/// Whether p coincides with point `index` of the path, where the path has one.
bool coincidesWith(const PathView& path, int index, const tav::Point3DF& p)
{
    return index < path.pointCount() && coincide(path.point(index), p);
}

/// The record with its segment index moved by `shift`, kept within the numbers there are.
tav::Variant shifted(const tav::Radian& record, long long shift)
{
    using Limits = std::numeric_limits<std::int32_t>;
    const long long index =
        std::clamp<long long>(record.segmentIndex + shift, Limits::min(), Limits::max());
    return tav::Radian{static_cast<std::int32_t>(index), record.arcPoint};
}

/// Adds the records of `from` to `to`, those from segment `first` on moved by `shift`.
void copyRecords(const PathView& from, geo::IPointCollection& to, int first, int shift)
{
    const tav::List<tav::Variant> records = from.arcRecords();
    for (const tav::Variant& record : records) {
        const tav::Radian arc = record.toRadian();
        to.addArcRecord(arc.segmentIndex < first ? record : shifted(arc, shift));
    }
}

}  // namespace

bool CGeoSetUp::insertPathPoint(PathRef& path, int index, const Point3DF& point)
{
    const PathView old(path);
    const int n = old.pointCount();
    if (!old || index < 0 || n < index) return false;
    if (coincidesWith(old, index, point) || coincidesWith(old, index + 1, point)) return false;
    const PathRef edited = createForSetUp<geo::IPath>(kInsertPathReport);
    const PathView fresh(edited);
    if (!fresh) return false;
    for (int i = 0; i < n; ++i) {
        if (i == index) fresh->addPoint(point);
        fresh->addPoint(old.point(i));
    }
    if (index == n) fresh->addPoint(point);
    copyRecords(old, *fresh, index, 1);
    path = edited;
    return true;
}

bool CGeoSetUp::removePathPoint(PathRef& path, int index)
{
    const PathView old(path);
    const int n = old.pointCount();
    if (!old || index < 0 || n < index) return false;
    const PathRef edited = createForSetUp<geo::IPath>(kRemovePathReport);
    const PathView fresh(edited);
    if (!fresh) return false;
    for (int i = 0; i < n; ++i)
        if (i != index) fresh->addPoint(old.point(i));
    const tav::List<tav::Variant> records = old.arcRecords();
    for (const tav::Variant& record : records) {
        const tav::Radian arc = record.toRadian();
        if (arc.segmentIndex != index)
            fresh->addArcRecord(arc.segmentIndex > index ? shifted(arc, -1) : record);
    }
    path = edited;
    return true;
}

bool CGeoSetUp::setSegmentArc(PathRef& path, int index, const Point3DF& start, const Point3DF& end,
                              const Point3DF& arcPoint)
{
    const PathView old(path);
    const int n = old.pointCount();
    if (!old || index < 0 || index >= n || coincide(start, end)) return false;
    const bool startIsVertex = coincidesWith(old, index, start);
    const bool endIsVertex = coincidesWith(old, index + 1, end);
    if (startIsVertex && endIsVertex && old.arcPoint(index)) return false;
    const PathRef edited = createForSetUp<geo::IPath>(kSetArcPathReport);
    const PathView fresh(edited);
    if (!fresh) return false;
    for (int i = 0; i < n; ++i) {
        fresh->addPoint(old.point(i));
        if (i != index) continue;
        fresh->addArcRecord(tav::Radian{index, arcPoint});
        if (!startIsVertex) fresh->addPoint(start);
        if (!endIsVertex) fresh->addPoint(end);
    }
    copyRecords(old, *fresh, index, (startIsVertex ? 0 : 1) + (endIsVertex ? 0 : 1));
    path = edited;
    return true;
}

void CGeoSetUp::splitPathIntoSegments(const PathRef& path, const ReceiverRef& receiver)
{
    if (!receiver) return;
    const PathRef held = path;  // the receiver may let go of the caller's reference
    const PathView view(held);
    const int n = view.pointCount();
    for (int i = 0; i < n - 1; ++i) {
        const PathRef piece = createForSetUp<geo::IPath>(kPieceReport);
        const PathView points(piece);
        if (!points) continue;
        points->addPoint(view.point(i));
        points->addPoint(view.point(i + 1));
        receiver->addPiece(piece);
    }
}

void CGeoSetUp::reversePath(PathRef& path)
{
    const PathView old(path);
    const int n = old.pointCount();
    if (n < 1) return;
    const auto fresh = createForSetUp<geo::IPointCollection>(kReversedReport);
    const PathRef reversed = fresh.query<geo::IPath>();
    if (!reversed) return;
    for (int i = n - 1; i >= 0; --i) fresh->addPoint(old.point(i));
    fresh->addPoint(old->closingPoint());
    const tav::List<tav::Variant> records = old.arcRecords();
    for (const tav::Variant& record : records) {
        const tav::Radian arc = record.toRadian();
        fresh->addArcRecord(
            shifted({0, arc.arcPoint}, static_cast<long long>(n) - arc.segmentIndex));
    }
    path = reversed;
}

bool CGeoSetUp::isAvailable()
{
    return true;
}
