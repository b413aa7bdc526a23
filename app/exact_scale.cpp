#include "app/exact_scale.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace calcora::app {

namespace {

/// Segments shorter than this share of the largest coordinate are rounding, not detail.
constexpr double kRoundingShare = 0x1p-40;

/// One segment in so many may stay short.
constexpr std::size_t kSegmentsPerShortOne = 1000;

double largestCoordinate(const Drawing& drawing)
{
    double largest = 0;
    for (const Figure& figure : drawing.figures)
        for (const tav::Point2DF& point : figure.points)
            largest = std::max({largest, std::fabs(point.x()), std::fabs(point.y())});
    return largest;
}

/// The lengths (chords) of all segments that are longer than rounding.
std::vector<double> segmentLengths(const Drawing& drawing, double largest)
{
    std::vector<double> lengths;
    for (const Figure& figure : drawing.figures) {
        const Points& points = figure.points;
        for (int i = 0; i < figure.segmentCount(); ++i) {
            const double length = points.at(i).distanceTo(points.at((i + 1) % points.size()));
            if (length > largest * kRoundingShare) lengths.push_back(length);
        }
    }
    return lengths;
}

Points mapped(const Points& points, int exponent)
{
    if (exponent == 0) return points;
    Points result;
    result.reserve(points.size());
    for (const tav::Point2DF& point : points)
        result.append({std::ldexp(point.x(), exponent), std::ldexp(point.y(), exponent)});
    return result;
}

}  // namespace

double ExactScale::scaled(double value) const
{
    return std::ldexp(value, exponent_);
}

double ExactScale::unscaled(double value) const
{
    return std::ldexp(value, -exponent_);
}

double ExactScale::unscaledArea(double value) const
{
    return std::ldexp(value, -2 * exponent_);
}

tav::Point2DF ExactScale::unscaled(const tav::Point2DF& point) const
{
    return {unscaled(point.x()), unscaled(point.y())};
}

Points ExactScale::scaled(const Points& points) const
{
    return mapped(points, exponent_);
}

Points ExactScale::unscaled(const Points& points) const
{
    return mapped(points, -exponent_);
}

ScaleChoice chooseScale(const Drawing& drawing)
{
    const double largest = largestCoordinate(drawing);
    std::vector<double> lengths = segmentLengths(drawing, largest);
    if (lengths.empty()) return {};

    // The segment that decides: so many shorter ones may stay.
    const std::size_t allowed = lengths.size() / kSegmentsPerShortOne;
    const auto decisive = lengths.begin() + static_cast<std::ptrdiff_t>(allowed);
    std::nth_element(lengths.begin(), decisive, lengths.end());

    ScaleChoice choice;
    while (std::ldexp(*decisive, choice.exponent) < kShortSegment &&
           std::ldexp(largest, choice.exponent + 1) < kCoordinateLimit)
        ++choice.exponent;
    choice.shortSegments = countShortSegments(drawing, ExactScale(choice.exponent));
    return choice;
}

int countShortSegments(const Drawing& drawing, const ExactScale& scale)
{
    const auto lengths = segmentLengths(drawing, largestCoordinate(drawing));
    return static_cast<int>(std::count_if(lengths.begin(), lengths.end(), [&](double length) {
        return scale.scaled(length) < kShortSegment;
    }));
}

}  // namespace calcora::app
