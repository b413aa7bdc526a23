// The choice of the slot of an inner node that a rectangle goes into.
//
// The rule: the slot whose volume grows least; among equal growths the one with the smaller volume;
// among equal ones the lower index.
#pragma once

#include "rtree/detail/nodes.h"

namespace calcora::rtree {

/// Coordinates up to this give volumes, and differences of volumes, that are finite.
inline constexpr double kOrdinaryCoordinate = 1e150;

/// Whether a rectangle is valid and of ordinary size. In a tree of such rectangles no growth is
/// negative or not a number.
inline bool isOrdinary(const RTreeRect& r)
{
    return -kOrdinaryCoordinate <= r.minX && r.minX <= r.maxX && r.maxX <= kOrdinaryCoordinate &&
           -kOrdinaryCoordinate <= r.minY && r.minY <= r.maxY && r.maxY <= kOrdinaryCoordinate;
}

/// How much a slot's volume grows when it takes a rectangle in.
inline double growthOf(const Inner& node, int slot, const RTreeRect& rect)
{
    return sphericalVolume(combineRect(rect, node.rects.at(slot))) - node.volume[slot];
}

/// The choice among some of the slots, one bit each, by the rule as it stands. A growth that is not
/// a number loses every comparison: it stays chosen in the first slot and is passed over elsewhere.
inline int pickAmong(const Inner& node, unsigned slots, const RTreeRect& rect)
{
    int chosen = std::countr_zero(slots);
    double least = growthOf(node, chosen, rect);
    for (slots &= slots - 1; slots != 0; slots &= slots - 1) {
        const int i = std::countr_zero(slots);
        const double growth = growthOf(node, i, rect);
        if (growth < least || (growth == least && node.volume[i] < node.volume[chosen])) {
            chosen = i;
            least = growth;
        }
    }
    return chosen;
}

/// The choice in a tree of ordinary rectangles, mostly without taking roots.
///
/// A volume differs by a few roundings only from its squared radius times the constant. So each
/// growth has bounds that need no root, and only slots with a lower bound not above the least upper
/// bound can be chosen; mostly that is a single one.
inline int pickBranch(const Inner& node, const RTreeRect& rect)
{
    // Root, square, product and difference, and the estimate itself, are off by less than 2^-50 of
    // the volume in all. The second number covers what is lost below the smallest normal numbers.
    constexpr double kRoundings = 0x1p-48;
    constexpr double kUnderflow = 1e-300;

    const RTreeRect r = rect;
    double lower[kSlots];
    double upper[kSlots];
    for (int i = 0; i < kSlots; ++i) {
        const double width =
            larger(node.rects.maxX[i], r.maxX) - smaller(node.rects.minX[i], r.minX);
        const double height =
            larger(node.rects.maxY[i], r.maxY) - smaller(node.rects.minY[i], r.minY);
        const double volume = (width * width + height * height) * (kUnitSphereVolume / 4);
        const double error = volume * kRoundings + kUnderflow;
        const double growth = volume - node.volume[i];
        lower[i] = growth - error;
        upper[i] = growth + error;
    }
    const unsigned possible = maskOf<AtMost>(lower, leastOf(upper, kInfinity));
    if ((possible & (possible - 1)) == 0) return std::countr_zero(possible);
    return pickAmong(node, possible, r);
}

}  // namespace calcora::rtree
