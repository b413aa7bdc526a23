// A closed ring cut where its arcs turn back in x or in y.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "calcora/IcommonFunc.h"
#include "common/detail/arc.h"

namespace calcora::detail {

/// Bulges below are straight where rings are cut and where points are located.
inline constexpr double kStraightInRing = 1e-6;

/// Whether all edges of the ring count as straight, the closing one included.
inline bool isStraightRing(const IcommonFunc::Points& ring, const IcommonFunc::Values& bulges)
{
    const double* bulge = bulges.constData();
    bool isStraight = true;
    for (int i = 0, n = std::min(ring.size(), bulges.size()); i < n; ++i)
        isStraight = isStraight && !(std::fabs(bulge[i]) >= kStraightInRing);
    return isStraight;
}

/// A straight edge, or a piece of an arc that rises or falls throughout in x and in y.
struct RingPiece {
    Point2DF from;
    Point2DF to;
    double bulge = 0.0;  ///< 0 on a straight edge, else the piece's own
    Circle circle;       ///< of the whole arc that the piece was cut from
};

/// The ring, relative to `origin`, closed by an edge back to its first vertex and cut at the
/// extreme points of its arcs' circles; each piece begins, bit for bit, where the one before it
/// ends, and the last ends where the first begins. The ring has at least one vertex.
///
/// Bulges below kStraightInRing, missing bulges and edges without length count as straight. An
/// extreme within a millionth of an arc's end is left out: the vertex stays, so that the first
/// vertex and the end of the closing edge never differ.
std::vector<RingPiece> cutRingAtArcExtremes(IcommonFunc& geometry, const IcommonFunc::Points& ring,
                                            const IcommonFunc::Values& bulges,
                                            const Point2DF& origin);

}  // namespace calcora::detail
