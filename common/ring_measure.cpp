#include "common/detail/ring_measure.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

#include "common/detail/arc_extremes.h"
#include "common/detail/ring_pieces.h"

namespace calcora::detail {

namespace {

/// Share of an edge within which an extreme of its arc and one of its ends are the same place:
/// polygonArea().
constexpr double kSamePlace = 1e-6;

/// Difference of positions below which the later of two neighbours goes: signedArea().
constexpr double kSamePosition = 1e-6;

/// Bulge below which chord and arc enclose nothing.
constexpr double kStraightForArea = 1e-12;

/// Squared distance from which a ring's ends count as apart.
constexpr double kOpenRingSquared = 1e-12;

double bulgeOf(const double* bulges, int count, int i)
{
    return i < count ? bulges[i] : 0.0;
}

}  // namespace

const RingMeasure::WholeArc& RingMeasure::wholeArc(double size)
{
    constexpr int kHashShift = 64 - std::bit_width(kKept - 1);
    if (known_.empty()) known_.resize(keeps_ ? kKept : 1);
    const std::uint64_t hash = std::bit_cast<std::uint64_t>(size) * 0x9E3779B97F4A7C15u;
    WholeArc& arc = known_[keeps_ ? static_cast<std::size_t>(hash >> kHashShift) : 0];
    if (arc.size != size) arc = {size, BesideChord(std::tan(std::atan(size) * 1.0))};
    return arc;
}

/// The bulge of a share of an arc, and the area beside the chord of that piece, with the bulge's sign.
double RingMeasure::besideOf(double chordSquared, double bulge, double share)
{
    // The whole arc's values serve both of its sides: tangents are odd.
    const double size = std::fabs(bulge);
    double area = 0.0;
    if (share == 1.0) {
        area = wholeArc(size).beside.area(chordSquared);
    } else {
        const double piece = std::tan(std::atan(size) * share);
        if (std::fabs(piece) >= kStraightForArea) area = areaBesideChord(chordSquared, piece);
        if (piece < 0) area = -area;
    }
    return bulge < 0 ? -area : area;
}

/// Brings the cuts of one arc into the order along it.
void RingMeasure::sortCuts()
{
    const auto before = [](const Cut& a, const Cut& b) { return a.place < b.place; };
    for (std::size_t i = 1; i < cutCount_; ++i)
        for (std::size_t k = i; k > 0 && before(cuts_[k], cuts_[k - 1]); --k)
            std::swap(cuts_[k], cuts_[k - 1]);
}

double RingMeasure::polygonArea(const Point2DF* ring, int count, const double* bulges,
                                int bulgeCount)
{
    const Point2DF origin = ring[0];
    double area = 0.0;
    Point2DF from = ring[0] - origin;
    double place = 0;
    const auto addPiece = [&](const Point2DF& to, double end, double bulge) {
        area += (from.x() + to.x()) * 0.5 * (from.y() - to.y());
        if (bulge != 0) {
            const double chordSquared = detail::pointDistSquared(from, to);
            if (chordSquared > 0) area -= besideOf(chordSquared, bulge, end - place);
        }
        from = to;
        place = end;
    };
    for (int i = 0; i < count; ++i) {
        const Point2DF to = ring[i + 1 < count ? i + 1 : 0] - origin;
        const double bulge = bulgeOf(bulges, bulgeCount, i);
        if (!(std::fabs(bulge) >= kStraightInRing) || from == to) {
            addPiece(to, i + 1, 0.0);
            continue;
        }
        cutCount_ = 0;
        forEachPlainArcExtreme(
            from, to, bulge, [&](ArcExtreme, const Point2DF& point, const PlainArcPlaces& places) {
                const double fraction = places.fraction(point);
                if (!(fraction >= kSamePlace && 1 - fraction >= kSamePlace)) return;
                cuts_[cutCount_++] = {i + fraction, point};
            });
        sortCuts();
        for (std::size_t k = 0; k < cutCount_; ++k) addPiece(cuts_[k].point, cuts_[k].place, bulge);
        addPiece(to, i + 1, bulge);
    }
    return area;
}

std::optional<double> RingMeasure::signedArea(const Point2DF* ring, int count, const double* bulges,
                                              int bulgeCount)
{
    const Point2DF origin = ring[0];
    bulgeCount = std::min(bulgeCount, count);
    double area = 0.0;
    Point2DF from;           // of the piece in work, relative to the first vertex
    double last = 0.0;       // position at which it starts
    double previous = 0.0;   // position met last, whether or not it was taken
    Point2DF end = ring[0];  // point taken last
    const auto meet = [&](const Point2DF& point, double position) {
        const bool isSame = position - previous < kSamePosition;
        previous = position;
        if (isSame) return;
        // An extreme just before a vertex has taken its place: the piece after it belongs to the
        // edge that starts there.
        const double bulge = bulgeOf(bulges, bulgeCount, static_cast<int>(last + kSamePosition));
        const Point2DF to = point - origin;
        const double trapezoid = (from.x() + to.x()) / 2 * (from.y() - to.y());
        const bool isArc = std::fabs(bulge) >= kStraightInRing;
        area +=
            isArc ? trapezoid - besideOf(detail::pointDistSquared(from, to), bulge, position - last)
                  : trapezoid;
        from = to;
        last = position;
        end = point;
    };
    for (int i = 0; i < count; ++i) {
        const Point2DF& start = ring[i];
        const Point2DF& next = ring[i + 1 < count ? i + 1 : 0];
        const double bulge = bulgeOf(bulges, bulgeCount, i);
        if (std::fabs(bulge) >= kStraightInRing) {
            cutCount_ = 0;
            forEachPlainArcExtreme(
                start, next, bulge,
                [&](ArcExtreme side, const Point2DF& point, const PlainArcPlaces& places) {
                    if (side == ArcExtreme::kLeft || side == ArcExtreme::kRight) return;
                    cuts_[cutCount_++] = {i + places.fraction(point), point};
                });
            sortCuts();
            for (std::size_t k = 0; k < cutCount_; ++k) {
                if (!(i < cuts_[k].place && cuts_[k].place < i + 1)) return std::nullopt;
                meet(cuts_[k].point, cuts_[k].place);
            }
        }
        meet(next, i + 1);
    }
    if (detail::pointDistSquared(origin, end) > kOpenRingSquared) {
        const Point2DF to = origin - origin;
        area += (from.x() + to.x()) / 2 * (from.y() - to.y());
    }
    return area;
}

}  // namespace calcora::detail
