#include "common/detail/farthest_vertex.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "common/detail/plain_functions.h"

namespace calcora::detail {

namespace {

/// Share of a figure's extent that no rounding of a distance inside it comes to: a dozen roundings
/// of 2^-53 each in either formula, several times over.
constexpr double kRoundingOfExtent = 2e-14;

/// Drawing units: products of two lengths in a smaller figure may leave the range of a double.
constexpr double kSmallestExtent = 1e-60;

/// Vertices walked together, and ranges so short that they are walked plainly.
constexpr int kBlock = 64;
constexpr int kFewVertices = 16;

/// Times the number of vertices that is walked before stretches are set up; ranges too short for
/// them.
constexpr long long kPatience = 64;
constexpr int kFewForStretches = 256;

/// Vertices in the shortest stretch, and stretches in the next longer one.
constexpr int kShortStretch = 32;
constexpr std::size_t kFanOut = 8;

/// Squared distances from a segment, all times one factor.
struct SegmentMeasure {
    SegmentMeasure(const Point2DF& a, const Point2DF& b, double slack) : start(a), along(b - a)
    {
        factor = lengthSquared(along);
        if (factor > slack * slack) return;
        // As good as a point.
        along = {1.0, 0.0};
        factor = 1.0;
        length = 0.0;
    }

    double at(const Point2DF& p) const
    {
        const Point2DF w = p - start;
        const double across = cross(along, w);
        const double ahead = dot(along, w);
        const double beyond = std::max(std::max(-ahead, ahead - factor * length), 0.0);
        return across * across + beyond * beyond;
    }

    double largest(const Point2DF* vertex, int begin, int end) const
    {
        double result = 0.0;
        int i = begin;
#if defined(__SSE2__)
        const auto* coordinates = reinterpret_cast<const double*>(vertex);
        const __m128d startX = _mm_set1_pd(start.x());
        const __m128d startY = _mm_set1_pd(start.y());
        const __m128d alongX = _mm_set1_pd(along.x());
        const __m128d alongY = _mm_set1_pd(along.y());
        const __m128d whole = _mm_set1_pd(factor * length);
        const __m128d zero = _mm_setzero_pd();
        __m128d two = zero;
        for (; i + 1 < end; i += 2) {
            const __m128d a = _mm_loadu_pd(coordinates + 2 * i);
            const __m128d b = _mm_loadu_pd(coordinates + 2 * i + 2);
            const __m128d x = _mm_sub_pd(_mm_unpacklo_pd(a, b), startX);
            const __m128d y = _mm_sub_pd(_mm_unpackhi_pd(a, b), startY);
            const __m128d across = _mm_sub_pd(_mm_mul_pd(alongX, y), _mm_mul_pd(alongY, x));
            const __m128d ahead = _mm_add_pd(_mm_mul_pd(alongX, x), _mm_mul_pd(alongY, y));
            const __m128d beyond =
                _mm_max_pd(_mm_max_pd(_mm_sub_pd(zero, ahead), _mm_sub_pd(ahead, whole)), zero);
            two =
                _mm_max_pd(two, _mm_add_pd(_mm_mul_pd(across, across), _mm_mul_pd(beyond, beyond)));
        }
        result = _mm_cvtsd_f64(_mm_max_pd(two, _mm_unpackhi_pd(two, two)));
#endif
        for (; i < end; ++i) result = std::max(result, at(vertex[i]));
        return result;
    }

    Point2DF start;
    Point2DF along;
    double factor = 1.0;
    double length = 1.0;  ///< in lengths of `along`
};

/// The least and the largest value of a product with a factor from a range, as computed.
struct Products {
    Products(double factor, double low, double high)
        : least(std::min(factor * low, factor * high)),
          largest(std::max(factor * low, factor * high))
    {
    }
    double least;
    double largest;
};

/// At least the largest computed value of the squared distance from p in the box.
double farthestCorner(const VertexBox& box, const Point2DF& p)
{
    const double dx = std::max(std::fabs(box.low.x() - p.x()), std::fabs(box.high.x() - p.x()));
    const double dy = std::max(std::fabs(box.low.y() - p.y()), std::fabs(box.high.y() - p.y()));
    return dx * dx + dy * dy;
}

/// At least what the formula for the squared distance from the segment, whose ends are apart, comes
/// to, seen from end `near`, for every point in the box. Rounding keeps order, so it is the formula
/// itself at the extreme values of its terms.
double largestSeenFrom(const Point2DF& near, const Point2DF& far, const Point2DF& end,
                       const VertexBox& box)
{
    const Point2DF v = far - near;
    const Point2DF low = box.low - near;
    const Point2DF high = box.high - near;
    const double lengthOfV = lengthSquared(v);
    const Products xAhead(v.x(), low.x(), high.x());
    const Products yAhead(v.y(), low.y(), high.y());
    double largest = 0.0;
    if (!(xAhead.least + yAhead.least > 0)) largest = farthestCorner(box, near);
    if (!(xAhead.largest + yAhead.largest < lengthOfV))
        largest = std::max(largest, farthestCorner(box, end));
    const Products left(v.x(), low.y(), high.y());
    const Products right(v.y(), low.x(), high.x());
    const double area = std::max(left.largest - right.least, right.largest - left.least);
    return std::max({largest, area * area / lengthOfV, area * (area / lengthOfV)});
}

bool improves(int index, double distanceSquared, const FarthestVertex& farthest)
{
    return distanceSquared > farthest.distanceSquared ||
           (distanceSquared == farthest.distanceSquared && index < farthest.index);
}

}  // namespace

FarthestVertexSearch::FarthestVertexSearch(const Point2DF* vertex, int count)
    : vertex_(vertex), count_(count)
{
    if (count < kFewVertices) return;
    const VertexBox box = boxOf(vertex, 0, count - 1);
    const double extent = box.reachFrom(box.low);
    if (box.isSound && box.reachFrom(vertex[0]) < kFarOut && extent > kSmallestExtent)
        slack_ = kRoundingOfExtent * extent;
}

FarthestVertex FarthestVertexSearch::find(VertexRange range)
{
    const int inside = range.last - range.first - 1;
    if (slack_ < 0 || inside < kFewVertices) return walkPlainly(range);
    walked_ += inside;
    if (walked_ < kPatience * count_ || inside < kFewForStretches) return walkBlocks(range);
    if (levels_.empty()) setUpStretches();
    return searchStretches(range);
}

FarthestVertex FarthestVertexSearch::walkPlainly(VertexRange range) const
{
    FarthestVertex farthest;
    const Point2DF& start = vertex_[range.first];
    const Point2DF& end = vertex_[range.last];
    for (int i = range.first + 1; i < range.last; ++i) {
        const double d = PlainFunctions::pointSegmentDistSquared(vertex_[i], start, end);
        if (d > farthest.distanceSquared) farthest = {i, d};
    }
    return farthest;
}

FarthestVertex FarthestVertexSearch::walkBlocks(VertexRange range)
{
    const Point2DF& start = vertex_[range.first];
    const Point2DF& end = vertex_[range.last];
    const SegmentMeasure measure(start, end, slack_);
    const auto endOf = [&](int begin) { return std::min(begin + kBlock, range.last); };
    double largest = 0.0;
    blockLargest_.clear();
    for (int begin = range.first + 1; begin < range.last; begin = endOf(begin)) {
        blockLargest_.push_back(measure.largest(vertex_, begin, endOf(begin)));
        largest = std::max(largest, blockLargest_.back());
    }
    // Twice what the measure and what the distance itself may be wrong by, and rounding of this.
    const double atLeast = std::sqrt(largest / measure.factor) - 4 * slack_;
    const double candidate = atLeast > 0 ? atLeast * atLeast * measure.factor * (1 - 1e-14) : 0.0;

    FarthestVertex farthest;
    const double* blockLargest = blockLargest_.data();
    for (int begin = range.first + 1; begin < range.last; begin = endOf(begin)) {
        if (*blockLargest++ < candidate) continue;
        for (int i = begin; i < endOf(begin); ++i) {
            if (measure.at(vertex_[i]) < candidate) continue;
            const double d = PlainFunctions::pointSegmentDistSquared(vertex_[i], start, end);
            if (d > farthest.distanceSquared) farthest = {i, d};
        }
    }
    return farthest;
}

void FarthestVertexSearch::setUpStretches()
{
    const Point2DF course = vertex_[count_ - 1] - vertex_[0];
    const double courseLength = length(course);
    along_ = courseLength > 0 ? (1 / courseLength) * course : Point2DF(1, 0);
    std::vector<Stretch> level;
    std::vector<Point2DF> turned;
    for (int begin = 0; begin < count_; begin += kShortStretch) {
        const int end = std::min(begin + kShortStretch, count_);
        turned.clear();
        for (int i = begin; i < end; ++i) {
            const Point2DF w = vertex_[i] - vertex_[0];
            turned.emplace_back(dot(along_, w), cross(along_, w));
        }
        level.push_back({boxOf(vertex_, begin, end - 1), boxOf(turned.data(), 0, end - begin - 1)});
    }
    while (level.size() > 1) {
        std::vector<Stretch> longer;
        for (std::size_t i = 0; i < level.size(); ++i) {
            if (i % kFanOut == 0) {
                longer.push_back(level[i]);
                continue;
            }
            longer.back().upright.include(level[i].upright);
            longer.back().turned.include(level[i].turned);
        }
        levels_.push_back(std::move(level));
        level = std::move(longer);
    }
    levels_.push_back(std::move(level));
}

/// At least the largest computed squared distance from the range's segment in the stretch.
double FarthestVertexSearch::boundOf(const Stretch& stretch, VertexRange range) const
{
    const Point2DF& start = vertex_[range.first];
    const Point2DF& end = vertex_[range.last];
    const double upright = std::max(largestSeenFrom(start, end, end, stretch.upright),
                                    largestSeenFrom(end, start, end, stretch.upright));
    double turned = 0.0;  // distances from a segment are largest at a corner
    for (const double ahead : {stretch.turned.low.x(), stretch.turned.high.x()})
        for (const double left : {stretch.turned.low.y(), stretch.turned.high.y()}) {
            const Point2DF corner = vertex_[0] + ahead * along_ + left * leftNormal(along_);
            turned = std::max(turned, PlainFunctions::pointSegmentDistSquared(corner, start, end));
        }
    const double distance = std::sqrt(turned) + 4 * slack_;
    return std::min(upright, distance * distance * (1 + 1e-14));
}

FarthestVertex FarthestVertexSearch::searchStretches(VertexRange range) const
{
    FarthestVertex farthest;
    visit(levels_.size() - 1, 0, range, farthest);
    return farthest;
}

/// Looks into the parts of a stretch, the most promising first, as far as they may hold a vertex
/// that is farther, or as far and earlier.
void FarthestVertexSearch::visit(std::size_t level, std::size_t stretch, VertexRange range,
                                 FarthestVertex& farthest) const
{
    if (level == 0) {
        const int begin = static_cast<int>(stretch) * kShortStretch;
        const int last = std::min(begin + kShortStretch, range.last);
        for (int i = std::max(begin, range.first + 1); i < last; ++i) {
            const double d = PlainFunctions::pointSegmentDistSquared(
                vertex_[i], vertex_[range.first], vertex_[range.last]);
            if (improves(i, d, farthest)) farthest = {i, d};
        }
        return;
    }
    struct Part {
        double bound;
        std::size_t stretch;
        int begin;
    };
    std::array<Part, kFanOut> parts;
    std::size_t count = 0;
    const std::vector<Stretch>& below = levels_[level - 1];
    long long vertices = kShortStretch;
    for (std::size_t i = 1; i < level; ++i) vertices *= static_cast<long long>(kFanOut);
    const std::size_t end = std::min((stretch + 1) * kFanOut, below.size());
    for (std::size_t part = stretch * kFanOut; part < end; ++part) {
        const long long begin = static_cast<long long>(part) * vertices;
        if (begin >= range.last || begin + vertices <= range.first + 1) continue;
        const Part next{boundOf(below[part], range), part, static_cast<int>(begin)};
        std::size_t place = count++;
        for (; place > 0 && parts[place - 1].bound < next.bound; --place)
            parts[place] = parts[place - 1];
        parts[place] = next;
    }
    for (std::size_t i = 0; i < count; ++i)
        if (improves(parts[i].begin, parts[i].bound, farthest))
            visit(level - 1, parts[i].stretch, range, farthest);
}

}  // namespace calcora::detail
