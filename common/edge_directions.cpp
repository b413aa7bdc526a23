// Directions of edges: the dominant one, lines given by them, corners that are none.

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "common/commonFunc.h"
#include "common/detail/edge_directions.h"

namespace {

using namespace calcora::detail;

/// Radians: a line within this of the vertical is exactly vertical for intersectDirectionLines().
constexpr double kVerticalLine = 1e-3;
/// Sine of the angle between two lines that do not meet.
constexpr double kParallelSine = 1e-12;
/// Radians: two lines that are both this near to the vertical do not meet.
constexpr double kBothVertical = 1e-12;
/// Radians: an entry is found by its direction. lookupAngleLine().
constexpr double kLookupTolerance = 1e-6;

/// Lengths gathered by direction. A direction joins the earliest entry within kSameDirection.
class DirectionLengths {
public:
    void add(double direction, double length)
    {
        const int index = earliestNear(direction);
        if (index != kNone) {
            at(index).line.length += length;
            return;
        }
        int& first = firstInBin_[binOf(direction)];
        entries_.push_back({{direction, length}, first});
        first = static_cast<int>(entries_.size()) - 1;
    }

    /// The direction of the greatest length, the smallest of several; 0 without any.
    double longest() const
    {
        const CMyAngleLine* best = nullptr;
        for (const Entry& entry : entries_) {
            const CMyAngleLine& line = entry.line;
            if (!best || line.length > best->length ||
                (line.length == best->length && line.direction < best->direction))
                best = &line;
        }
        return best ? best->direction : 0.0;
    }

private:
    static constexpr int kNone = -1;
    /// Radians. Above kSameDirection, so that near directions lie in neighbouring bins.
    static constexpr double kBinWidth = 2 * kSameDirection;
    static constexpr int kBins = static_cast<int>(kPi / kBinWidth) + 1;

    struct Entry {
        CMyAngleLine line;
        int nextInBin;
    };

    Entry& at(int index) { return entries_[static_cast<std::size_t>(index)]; }

    static std::size_t binOf(double direction)
    {
        const double bin = std::floor((direction + kPi / 2) / kBinWidth);
        return static_cast<std::size_t>(std::clamp(bin, 0.0, kBins - 1.0));
    }

    int earliestNear(double direction)
    {
        int earliest = kNone;
        // A vertical edge may lie at either end of the range.
        for (const double place : {direction, direction - kPi, direction + kPi}) {
            const std::size_t low = binOf(place - kBinWidth);
            const std::size_t high = binOf(place + kBinWidth);
            for (std::size_t bin = low; bin <= high; ++bin) {
                for (int i = firstInBin_[bin]; i != kNone; i = at(i).nextInBin) {
                    if ((earliest == kNone || i < earliest) &&
                        directionDifference(at(i).line.direction, direction) <= kSameDirection)
                        earliest = i;
                }
            }
        }
        return earliest;
    }

    std::vector<Entry> entries_;
    std::vector<int> firstInBin_ = std::vector<int>(kBins, kNone);
};

}  // namespace

double commonFunc::dominantEdgeDirection(const PointLists& rings)
{
    DirectionLengths lengths;
    for (const Points& ring : rings) {
        for (int i = 0; i + 1 < ring.size(); ++i) {
            const double direction = foldedDirection(*this, ring[i], ring[i + 1]);
            const double length = std::sqrt(pointDistSquared(ring[i], ring[i + 1]));
            if (std::isfinite(direction) && std::isfinite(length)) lengths.add(direction, length);
        }
    }
    return lengths.longest();
}

// Unit vectors instead of slopes: near the vertical a slope multiplies rounding by 1e16.
void commonFunc::intersectDirectionLines(Point2DF p1, double angle1, Point2DF p2, double angle2,
                                         Point2DF& out)
{
    const Point2DF u1(std::cos(angle1), std::sin(angle1));
    const Point2DF u2(std::cos(angle2), std::sin(angle2));
    const double sine = cross(u1, u2);
    const double steepness1 = std::fabs(angle1 - kPi / 2);
    const double steepness2 = std::fabs(angle2 - kPi / 2);
    if (!(std::fabs(sine) >= kParallelSine)) return;
    if (steepness1 <= kBothVertical && steepness2 <= kBothVertical) return;
    Point2DF meeting;
    if (steepness1 < kVerticalLine)
        meeting = {p1.x(), (p1.x() - p2.x()) * std::tan(angle2) + p2.y()};
    else if (steepness2 < kVerticalLine)
        meeting = {p2.x(), (p2.x() - p1.x()) * std::tan(angle1) + p1.y()};
    else
        meeting = p1 + (cross(p2 - p1, u2) / sine) * u1;
    if (isFinite(meeting)) out = meeting;
}

bool commonFunc::isParallelDirection(Point2DF a, Point2DF b, Point2DF c)
{
    return directionDifference(foldedDirection(*this, a, b), foldedDirection(*this, b, c)) <
           kSameDirection;
}

void commonFunc::removeCollinearPoints(Points& ring)
{
    Points vertices = withoutRepeats(*this, ring);
    const int n = vertices.size();
    const bool closed =
        n > 1 && samePlace(*this, std::as_const(vertices)[n - 1], std::as_const(vertices)[0]);
    if (n - closed >= 3) {
        if (closed) vertices.removeLast();
        vertices = cornersOf(*this, vertices,
                             [this](const Point2DF& a, const Point2DF& b, const Point2DF& c) {
                                 return isParallelDirection(a, b, c);
                             });
        if (closed) vertices.append(std::as_const(vertices).first());
    }
    ring = std::move(vertices);
}

// Read through const access only: the entry must lie in the storage that the caller shares.
const CMyAngleLine* commonFunc::lookupAngleLine(tav::Vector<CMyAngleLine> lines, double direction)
{
    for (const CMyAngleLine& line : std::as_const(lines))
        if (std::fabs(line.direction - direction) < kLookupTolerance) return &line;
    return nullptr;
}
