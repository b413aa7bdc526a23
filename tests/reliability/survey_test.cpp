// Figures at survey coordinates give what they give at the origin.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <numbers>
#include <string>

#include "tests/reliability/support.h"

namespace {

using fuzz::Outcome;
using tav::Point2DF;

/// The largest deviation by family, in units of 1 + |value|: coordinates and numbers after moving
/// back. One step of a coordinate is 4.7e-10 at (5e5, 4e6) and 3.7e-9 at (-3.2e7, 5.1e6).
double boundOf(const std::string& family)
{
    static const std::map<std::string, double> kBounds = {{"angles and squaring", 1e-6}};
    const auto at = kBounds.find(family);
    return at == kBounds.end() ? 1e-8 : at->second;
}

/// How far b is from a moved by `move`; infinite when they differ in a decision.
double deviation(const Outcome& a, const Outcome& b, const Point2DF& move)
{
    if (a.items.size() != b.items.size()) return INFINITY;
    double worst = 0;
    for (std::size_t i = 0; i < a.items.size(); ++i) {
        const auto [kind, value] = a.items[i];
        if (kind == Outcome::Count && value != b.items[i].value) return INFINITY;
        const double shift = kind == Outcome::X ? move.x() : kind == Outcome::Y ? move.y() : 0;
        if (value == 0 && b.items[i].value == 0) continue;  // where there is no point
        double off = std::fabs(b.items[i].value - shift - value);
        // Directions on either side of the x axis.
        if (kind == Outcome::Number) off = std::min(off, std::fabs(off - 2 * std::numbers::pi));
        if (std::isfinite(value) || std::isfinite(b.items[i].value))
            worst = std::max(worst, off / (1 + std::fabs(value)));
    }
    return worst;
}

TEST(Survey, MovesNoDecisionAndNoDigitBeyondTheLast)
{
    const Point2DF kPlaces[] = {{5e5, 4e6}, {-3.2e7, 5.1e6}};
    std::map<std::string, double> worst;
    reliability::forEachOperation(
        [&](const fuzz::Family& family, const fuzz::Operation& operation) {
            if (operation.flags & fuzz::kAbsolute) return;
            for (unsigned number = 0; number < 200; ++number) {
                const auto bytes = reliability::bytesOf(number, fuzz::Manner::Clear);
                const auto outcomeAt = [&](const Point2DF& place) {
                    fuzz::Source source(bytes.data(), bytes.size());
                    source.frame = {0.3 + 0.7 * number, place};
                    Outcome outcome;
                    fuzz::Call(source).run(operation, outcome);
                    return outcome;
                };
                const Outcome atOrigin = outcomeAt({});
                for (const Point2DF& place : kPlaces) {
                    const double off = deviation(atOrigin, outcomeAt(place), place);
                    EXPECT_LE(off, boundOf(family.name))
                        << operation.name << ", case " << number << " at " << place.x();
                    worst[family.name] = std::max(worst[family.name], off);
                }
            }
        });
    for (const auto& [family, off] : worst)
        RecordProperty(family, std::to_string(off / 1e-9) + "e-9");
}

}  // namespace
