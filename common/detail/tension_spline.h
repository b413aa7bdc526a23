// The spline under tension that the curves under tension and the Bezier spans are built on.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "common/detail/vec3.h"

namespace calcora::detail {

/// One span of a spline under tension, relative to its first node.
class TensionSpan {
public:
    /// `bendStart` and `bendEnd` are the solved coefficients at the ends, `stiffness` the tension
    /// times the chord.
    TensionSpan(const Point3DF& chord, const Point3DF& bendStart, const Point3DF& bendEnd,
                double stiffness);

    /// The curve's offset from the span's first node at the fraction w of the chord, 0 to 1.
    Point3DF offset(double w) const;
    /// The offset of the span's second node.
    const Point3DF& chord() const { return chord_; }

private:
    double bend(double w) const;

    Point3DF chord_, bendStart_, bendEnd_;
    double stiffness_;
    double sinhStiffness_;
};

/// Unit tangents at the ends of the curve.
struct EndTangents {
    Point3DF start;
    Point3DF end;
};

/// A parametric spline under tension through nodes in space, over the chord length.
class TensionSpline {
public:
    /// The tension is 4.5 (n - 1) over the length of the line through the nodes. Without `ends` the
    /// curve leaves and arrives along the first and the last chord. There are at least two nodes;
    /// nothing comes out when a chord has no length, or when the solution leaves the range of doubles
    /// (chords more than about 1e150 apart in length).
    static std::optional<TensionSpline> fit(std::vector<Point3DF> nodes,
                                            const std::optional<EndTangents>& ends = {});

    const Point3DF& node(std::size_t i) const { return nodes_[i]; }
    /// The span from node i to node i + 1.
    TensionSpan span(std::size_t i) const;

private:
    bool measure();
    void solve(const std::optional<EndTangents>& ends);

    std::vector<Point3DF> nodes_;
    std::vector<double> chords_;
    std::vector<Point3DF> bends_;
    double tension_ = 0.0;
};

}  // namespace calcora::detail
