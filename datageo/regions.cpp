// Loop extraction: line work in, closed loops out.
#include <cmath>
#include <utility>

#include "common/detail/key_sort.h"
#include "common/detail/primitives.h"
#include "common/detail/ring_measure.h"
#include "datageo/CAutoDiv.h"
#include "datageo/DataGeo.h"
#include "datageo/autob/CAutoLoop.h"
#include "datageo/autob/FuzzyPointSet.h"
#include "datageo/segments.h"
#include "detail/exact_class.h"
#include "tavrel/NormalObject.h"

using calcora::SegmentKey;

namespace {

/// Drawing units: shorter polylines are left out of the extraction.
constexpr double kShortestPolyline = 1e-7;

/// Drawing units: snapping of figures whose gaps are sought.
constexpr double kDirectedSnapTolerance = 1e-5;

/// Drawing units: a figure whose ends lie farther apart is closed.
constexpr double kClosedFigure = 1e-12;

/// Mode of the loop builder.
constexpr int kRegions = 0;
constexpr int kOutlines = 1;

/// Brings points to the earliest point within a tolerance in both coordinates.
class Snapper {
public:
    explicit Snapper(double tolerance) : isOn_(tolerance > 0), set_(tolerance) {}

    bool isOn() const { return isOn_; }

    tav::Point2DF snapped(const tav::Point2DF& p)
    {
        if (!isOn_ || !calcora::detail::isFinite(p)) return p;
        return set_.points()[static_cast<std::size_t>(set_.findOrAdd(p))];
    }

private:
    bool isOn_;
    AutoB::FuzzyPointSet set_;
};

/// A segment without extent or with a value that is not finite bounds nothing.
bool isUsable(const SegmentKey& segment)
{
    const double lengthSquared = calcora::detail::pointDistSquared(segment.a, segment.b);
    return std::isfinite(lengthSquared) && lengthSquared > 0 && std::isfinite(segment.bulge);
}

void appendSegments(const IDataGeo::Points& points, const IDataGeo::Values& bulges,
                    calcora::detail::BigVector<SegmentKey>& segments)
{
    for (int i = 0; i + 1 < points.size(); ++i) {
        const SegmentKey segment{points[i], points[i + 1], i < bulges.size() ? bulges[i] : 0.0};
        if (isUsable(segment)) segments.push_back(segment);
    }
}

/// The pieces of the segments between their crossings; none when the cancel flag is seen.
calcora::SegmentSet divided(const calcora::detail::BigVector<SegmentKey>& segments, bool directed,
                            bool* cancel)
{
    calcora::CAutoDiv divider;
    divider.setCancelFlag(cancel);
    divider.addSegments(calcora::mergeEqualSegments(segments, false, calcora::CancelCheck(cancel)));
    divider.divide(directed);
    return divider.takePieces();
}

}  // namespace

/// The segments of all polylines that are long enough, their ends snapped.
calcora::detail::BigVector<SegmentKey> DataGeo::segmentsOf(const PointLists& lines,
                                                           const ValueLists& lineBulges,
                                                           double snapTolerance, bool* cancel)
{
    static const Values noBulges;
    Snapper snapper(snapTolerance);
    calcora::CancelCheck check(cancel);
    calcora::detail::BigVector<SegmentKey> segments;
    segments.reserve(static_cast<std::size_t>(lines.size()));
    Points snapped;
    for (int i = 0; i < lines.size(); ++i) {
        const Points& line = lines[i];
        const Values& bulges = i < lineBulges.size() ? lineBulges[i] : noBulges;
        check();
        if (isShort(line, bulges)) continue;
        if (!snapper.isOn()) {
            appendSegments(line, bulges, segments);
            continue;
        }
        snapped.clear();
        for (const Point2DF& p : line) {
            check();
            snapped.append(snapper.snapped(p));
        }
        appendSegments(snapped, bulges, segments);
    }
    return segments;
}

void DataGeo::buildRegions(const PointLists& lines, const ValueLists& lineBulges, PointLists& loops,
                           ValueLists& loopBulges, bool outerBoundaries, bool* cancel,
                           double snapTolerance)
{
    AutoB::CAutoLoop builder;
    builder.setCancelFlag(cancel);
    builder.leaveTagsOut();
    try {
        const auto segments = segmentsOf(lines, lineBulges, snapTolerance, cancel);
        builder.addSegments(divided(segments, false, cancel), true);
        builder.buildLoops(outerBoundaries ? kOutlines : kRegions);
    } catch (const calcora::Cancelled&) {
        // The builder has no loops yet.
    }
    sortLoops(builder.takeLoops(), builder.takeLoopBulges(), loops, loopBulges, cancel);
}

void DataGeo::buildDirectedRegions(const PointLists& lines, const ValueLists& lineBulges,
                                   PointLists& loops, ValueLists& loopBulges, bool* cancel)
{
    AutoB::CAutoLoop builder;
    builder.setCancelFlag(cancel);
    builder.leaveTagsOut();
    try {
        const auto segments = closedSegmentsOf(lines, lineBulges, cancel);
        builder.addSegments(divided(segments, true, cancel), false);
        builder.buildDirectedLoops();
    } catch (const calcora::Cancelled&) {
        // The builder has no loops yet.
    }
    sortLoops(builder.takeLoops(), builder.takeLoopBulges(), loops, loopBulges, cancel);
}

/// The segments of all figures that are long enough, clockwise and closed, their vertices snapped.
calcora::detail::BigVector<SegmentKey> DataGeo::closedSegmentsOf(const PointLists& lines,
                                                                 const ValueLists& lineBulges,
                                                                 bool* cancel)
{
    static const Values noBulges;
    Snapper snapper(kDirectedSnapTolerance);
    commonFunc geometry(tav::kObjectCapacity);
    calcora::CancelCheck check(cancel);
    calcora::detail::BigVector<SegmentKey> segments;
    for (int i = 0; i < lines.size(); ++i) {
        const Points& line = lines[i];
        Values bulges = i < lineBulges.size() ? lineBulges[i] : noBulges;
        if (isShort(line, bulges)) continue;
        Points figure;
        figure.reserve(line.size() + 1);
        for (const Point2DF& p : line) {
            check();
            figure.append(snapper.snapped(p));
        }
        if (signedBulgeArea(figure, bulges) < 0) {
            reversePointList(figure);
            geometry.reverseBulges(bulges);
        }
        const Point2DF first = std::as_const(figure).first();
        if (pointDist(first, std::as_const(figure).last()) > kClosedFigure) {
            figure.append(first);
            bulges.append(0.0);
        }
        appendSegments(figure, bulges, segments);
    }
    return segments;
}

/// Whether the polyline is too short to bound anything, or has not as many bulges as points.
bool DataGeo::isShort(const Points& line, const Values& bulges)
{
    // Lengths are never negative: a first edge that is long enough decides.
    const bool isLong = calcora::detail::isExactly(*this) && line.size() >= 2 &&
                        bulges.size() == line.size() &&
                        segmentLengthWithBulge(line[0], line[1], bulges[0]) >= kShortestPolyline;
    return !isLong && polylineLengthWithBulges(line, bulges, false) < kShortestPolyline;
}

/// Replaces the outputs by the loops, smallest area first, equal areas in the order found. A loop
/// whose area is no number goes last. When the flag is raised, very many loops stay in the order
/// found: sorting them takes longer than the caller wants to wait.
void DataGeo::sortLoops(std::vector<Points> found, std::vector<Values> foundBulges,
                        PointLists& loops, ValueLists& loopBulges, bool* cancel)
{
    constexpr std::size_t kAlwaysSorted = 65536;
    constexpr std::size_t kLoopsBetweenLooks = 1024;
    std::vector<calcora::detail::KeyedIndex> order;
    order.reserve(found.size());
    calcora::detail::RingMeasure measure(true);
    bool isSorted = true;
    for (std::size_t i = 0; i < found.size(); ++i) {
        if (found.size() > kAlwaysSorted && i % kLoopsBetweenLooks == 0)
            isSorted = isSorted && !calcora::isRaised(cancel);
        const double area =
            isSorted ? std::fabs(signedBulgeArea(found[i], foundBulges[i], measure)) : 0.0;
        order.push_back({std::isnan(area) ? HUGE_VAL : area, static_cast<int>(i)});
    }
    if (isSorted) calcora::detail::sortByKey(order);

    PointLists sorted;
    ValueLists sortedBulges;
    sorted.reserve(static_cast<int>(order.size()));
    sortedBulges.reserve(static_cast<int>(order.size()));
    for (const auto& loop : order) {
        sorted.append(std::move(found[static_cast<std::size_t>(loop.index)]));
        sortedBulges.append(std::move(foundBulges[static_cast<std::size_t>(loop.index)]));
    }
    loops = std::move(sorted);
    loopBulges = std::move(sortedBulges);
}
