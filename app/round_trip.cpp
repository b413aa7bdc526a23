#include "app/round_trip.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "app/figures.h"

namespace calcora::app {

namespace {

using tav::Point2DF;

/// The curve runs through squares of this many halvings of the box.
constexpr int kHalvings = 16;

/// The number of a square along Hilbert's curve: of its quarter at every halving, where the curve in
/// the first and the last quarter is a mirror image of the whole.
std::uint32_t numberOf(std::uint32_t x, std::uint32_t y)
{
    std::uint32_t number = 0;
    for (int k = kHalvings - 1; k >= 0; --k) {
        const std::uint32_t right = x >> k & 1;
        const std::uint32_t up = y >> k & 1;
        number = number << 2 | (right * 3 ^ up);
        if (up) continue;
        if (right) {
            x = ~x;
            y = ~y;
        }
        std::swap(x, y);
    }
    return number;
}

}  // namespace

std::vector<int> roundTrip(const std::vector<Point2DF>& places)
{
    Box box;
    for (const Point2DF& place : places) box.add(place);
    const double side = std::max(box.width(), box.height());
    const double squares = side > 0 ? ((1 << kHalvings) - 1) / side : 0;
    const auto square = [&](double value) { return static_cast<std::uint32_t>(value * squares); };

    std::vector<std::pair<std::uint32_t, int>> order;
    for (const Point2DF& place : places)
        order.emplace_back(numberOf(square(place.x() - box.minX), square(place.y() - box.minY)),
                           static_cast<int>(order.size()));
    std::sort(order.begin(), order.end());
    std::vector<int> trip;
    for (const auto& [number, place] : order) trip.push_back(place);
    return trip;
}

}  // namespace calcora::app
