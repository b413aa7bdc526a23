// Arcs in space by points: the middle of one, and a path whose arcs are chords.
#include <algorithm>
#include <cmath>
#include <optional>

#include "frame/detail/vec3.h"
#include "geometric/CGeometric.h"
#include "geometric/detail/arc.h"
#include "geometric/detail/auxiliary.h"

using namespace calcora::paths;

namespace {

/// Fewest chords of a full circle, and most of any arc. pathArcOp52().
constexpr int kFewestCircleChords = 3;
constexpr int kMostChords = 10000;

/// Most vertices that pathArcOp52() puts on arcs in one path.
constexpr int kMostArcVertices = 1 << 24;

std::optional<Arc> arcOfSegment(const PathView& view, const ArcIndex& arcs, int i)
{
    const auto arcPoint = arcs.arcPoint(i);
    if (!arcPoint) return std::nullopt;
    return arcThrough(view.point(i), *arcPoint, view.point(i + 1));
}

/// Chords of equal sweep that stay within the sagitta: one spans 2 acos(1 - sagitta / r).
int chordCount(const Arc& arc, double sagitta)
{
    const double share = std::min(sagitta / (2 * arc.radius), 1.0);
    const double span = 4 * std::asin(std::sqrt(share));
    const double wanted = std::min(std::ceil(arc.sweep / span), double{kMostChords});
    return std::max(static_cast<int>(wanted), arc.sweep == kTwoPi ? kFewestCircleChords : 1);
}

}  // namespace

bool CGeometric::arcSegmentOp34(const PathRef& path, int i, Point3DF& middle)
{
    const auto segment = arcSegment(path, i);
    const auto arc = segment ? arcThrough(segment->a, segment->m, segment->b) : std::nullopt;
    if (!arc) return false;
    middle = endsMeetInSpace(segment->a, segment->b) ? segment->m : arc->pointAt(arc->sweep / 2);
    return true;
}

bool CGeometric::pathArcOp52(const PathRef& path, double sagitta, PathRef& result)
{
    const PathView view(path);
    if (!(sagitta > 0) || view.pointCount() < 2) return false;
    const int segments = view.pointCount() - 1;
    const ArcIndex arcs(view);
    int onArcs = 0;
    for (int i = 0; i < segments; ++i) {
        if (const auto arc = arcOfSegment(view, arcs, i)) onArcs += chordCount(*arc, sagitta) - 1;
        if (onArcs > kMostArcVertices) return false;
    }

    const PathRef chords = createAuxiliary<geo::IPath>();
    const auto points = chords.query<geo::IPointCollection>();
    if (!points) return false;
    for (int i = 0; i < segments; ++i) {
        points->addPoint(view.point(i));
        const auto arc = arcOfSegment(view, arcs, i);
        const int count = arc ? chordCount(*arc, sagitta) : 1;
        for (int k = 1; k < count; ++k) points->addPoint(arc->pointAt(arc->sweep * k / count));
    }
    points->addPoint(view.point(segments));
    result = chords;
    return true;
}
