// Scaling by powers of two, which changes no digit of a coordinate.
#pragma once

#include "app/Drawing.h"

namespace calcora::app {

/// Multiplies and divides by 2^exponent. In binary this moves the point only: what is scaled there
/// and back comes back bit for bit.
class ExactScale {
public:
    explicit ExactScale(int exponent = 0) : exponent_(exponent) {}

    int exponent() const { return exponent_; }
    double scaled(double value) const;
    double unscaled(double value) const;
    double unscaledArea(double value) const;
    tav::Point2DF unscaled(const tav::Point2DF& point) const;
    /// The list itself (sharing its block) when the exponent is 0.
    Points scaled(const Points& points) const;
    Points unscaled(const Points& points) const;

private:
    int exponent_;
};

/// Exponents that a user may ask for.
inline constexpr int kSmallestScaleExponent = -64;
inline constexpr int kLargestScaleExponent = 64;

/// Largest size of scaled coordinates: so much room is left for decimals.
inline constexpr double kCoordinateLimit = 8589934592.0;  // 2^33

/// What the automatic choice saw and took.
struct ScaleChoice {
    int exponent = 0;
    int shortSegments = 0;  ///< segments still shorter than kShortSegment after scaling
};

/// Length, in units of the scaled drawing, below which a segment is small against the module's
/// absolute tolerances.
inline constexpr double kShortSegment = 0.05;

/// The smallest exponent from 0 on for which at most one segment in a thousand is shorter than
/// kShortSegment while the largest coordinate stays below 2^33; when there is none, the largest
/// exponent that the coordinates allow. Segments without length, or with a length that is mere
/// rounding of the coordinates, do not count.
ScaleChoice chooseScale(const Drawing& drawing);

/// Number of segments of the drawing that are shorter than kShortSegment when scaled.
int countShortSegments(const Drawing& drawing, const ExactScale& scale);

}  // namespace calcora::app
