// The spline under tension as the tests of the curves built on it see it.
#pragma once

#include <numeric>
#include <utility>
#include <vector>

#include "tests/support/curves.h"

namespace curves {

/// A spline under tension from its definition: on every span each axis is a + b u + c cosh(su) +
/// d sinh(su); it meets the nodes, has one slope and one bend on both sides of each, and given
/// slopes at its ends.
class HyperbolicSpline {
public:
    HyperbolicSpline(const std::vector<Space>& nodes, const Space& startSlope,
                     const Space& endSlope)
    {
        const std::size_t spans = nodes.size() - 1;
        for (std::size_t i = 0; i < spans; ++i) h_.push_back(length(nodes[i + 1] - nodes[i]));
        const double total = std::accumulate(h_.begin(), h_.end(), 0.0);
        tension_ = 4.5 * static_cast<double>(spans) / total;
        std::vector<Space> rows;  // four unknowns for each span, then the right side of each axis
        const auto demand = [&](std::size_t span, int order, double u, const Space& right) {
            rows.emplace_back(4 * spans + 3);
            for (std::size_t c = 0; c < 4; ++c) rows.back()[4 * span + c] = basis(c, order, u);
            rows.back()[std::slice(4 * spans, 3, 1)] = right;
        };
        demand(0, 1, 0, startSlope);
        demand(spans - 1, 1, h_.back(), endSlope);
        for (std::size_t i = 0; i < spans; ++i) {
            demand(i, 0, 0, nodes[i]);
            demand(i, 0, h_[i], nodes[i + 1]);
            for (int order = 1; i > 0 && order <= 2; ++order) {
                demand(i - 1, order, h_[i - 1], Space(3));
                for (std::size_t c = 0; c < 4; ++c) rows.back()[4 * i + c] = -basis(c, order, 0);
            }
        }
        for (std::size_t c = 0; c < rows.size(); ++c) {
            for (std::size_t r = c + 1; r < rows.size(); ++r)
                if (std::fabs(rows[r][c]) > std::fabs(rows[c][c])) std::swap(rows[r], rows[c]);
            rows[c] /= double{rows[c][c]};
            for (std::size_t r = 0; r < rows.size(); ++r)
                if (r != c && rows[r][c] != 0) rows[r] -= double{rows[r][c]} * rows[c];
        }
        for (const Space& row : rows) coefficients_.push_back(row[std::slice(4 * spans, 3, 1)]);
    }

    /// At the fraction w of span i.
    Space at(std::size_t i, double w) const
    {
        Space p(3);
        for (std::size_t c = 0; c < 4; ++c) p += basis(c, 0, w * h_[i]) * coefficients_[4 * i + c];
        return p;
    }

private:
    double basis(std::size_t c, int order, double u) const
    {
        if (c < 2) return order == 0 ? std::pow(u, c) : order == 1 && c == 1;
        const double su = tension_ * u;
        return std::pow(tension_, order) *
               ((c == 2) == (order % 2 == 0) ? std::cosh(su) : std::sinh(su));
    }

    std::vector<Space> coefficients_;
    std::vector<double> h_;
    double tension_ = 0;
};

}  // namespace curves
