#include "app/parallels.h"

#include <algorithm>
#include <cmath>

#include "app/figure_tool.h"
#include "app/loop_extraction.h"

namespace calcora::app {

namespace {

using tav::Point2DF;

/// A point that lies nearer than the distance by this, in scaled units and as a share of the
/// distance, is not nearer: nodes of the extraction lie 1e-5 apart.
constexpr double kDistanceSlack = 2e-5;
constexpr double kDistanceShare = 1e-6;

/// Ends of pieces this close, in scaled units, meet.
constexpr double kMeetingDistance = 5e-5;

}  // namespace

/// A segment of the raw parallel between two of its crossings, in its direction.
struct Parallels::Piece {
    Point2DF from, to;
    double bulge = 0;
    int segment = 0;   ///< of the raw parallel
    double place = 0;  ///< of its middle: segment + place on it
};

/// The figure that a parallel belongs to, in scaled coordinates.
struct Parallels::Source {
    const Figure& ring;
    Points points;  ///< with the first repeated when closed
    Values bulges;
    double distance = 0;  ///< positive outside of a closed figure
};

Parallels::Parallels(const Host& host, Interrupt& interrupt, const ExactScale& scale)
    : common_(host.create<IcommonFunc>()),
      dataGeo_(host.create<IDataGeo>()),
      interrupt_(interrupt),
      scale_(scale)
{
}

/// Cuts the raw parallel at its crossings. An open one is closed by a straight line for that, since
/// the extraction returns what bounds a face; what does not lie on the parallel is passed over.
std::vector<Parallels::Piece> Parallels::cut(const Points& points, const Values& bulges) const
{
    LineWork work;
    Points closed = points;
    Values closedBulges = bulges;
    const Point2DF first = points.first();
    closed.append(first);
    closedBulges.append(0.0);
    work.points.append(closed);
    work.bulges.append(closedBulges);
    const LoopResult faces = extractLoops(*dataGeo_, work, LoopRequest(), interrupt_.flag());

    std::vector<Piece> pieces;
    for (const Loop& loop : faces.loops) {
        const int count = loop.points.size();
        for (int i = 0; i < count; ++i) {
            if (interrupt_.raised()) return {};
            Piece piece{loop.points.at(i), loop.points.at((i + 1) % count), loop.bulges.at(i), 0,
                        0};
            const Point2DF middle = common_->arcMidPoint(piece.from, piece.to, piece.bulge);
            Point2DF nearest;
            int segment = -1;
            const double away = common_->nearestOnBulgePolylineEx(middle, points, bulges, nearest,
                                                                  &segment, &piece.place);
            if (segment < 0 || !(away <= kMeetingDistance * kMeetingDistance)) continue;
            piece.segment = segment;
            double start = 0;
            common_->nearestOnBulgePolylineEx(piece.from,
                                              {points.at(segment), points.at(segment + 1)},
                                              {bulges.at(segment), 0.0}, nearest, &segment, &start);
            if (start > piece.place - piece.segment) {
                std::swap(piece.from, piece.to);
                piece.bulge = -piece.bulge;
            }
            pieces.push_back(piece);
        }
    }
    std::sort(pieces.begin(), pieces.end(),
              [](const Piece& a, const Piece& b) { return a.place < b.place; });
    // A piece between two faces comes from both.
    const auto same = [&](const Piece& a, const Piece& b) {
        return a.segment == b.segment && common_->pointDist(a.from, b.from) <= kMeetingDistance &&
               common_->pointDist(a.to, b.to) <= kMeetingDistance;
    };
    pieces.erase(std::unique(pieces.begin(), pieces.end(), same), pieces.end());
    return pieces;
}

bool Parallels::isKept(const Piece& piece, const Source& source) const
{
    const double size = std::fabs(source.distance);
    const double least = std::max(0.0, size * (1 - kDistanceShare) - kDistanceSlack);
    for (const double share : {0.5, 0.05, 0.95, 0.25, 0.75}) {
        Point2DF point = piece.from;
        common_->pointOnBulgeSegmentAtRatio(piece.from, piece.to, piece.bulge, share, point);
        if (!(common_->pointBulgePolylineDistSquared(point, source.points, source.bulges) >=
              least * least))
            return false;
    }
    if (!source.ring.closed) return true;
    const Point2DF middle = common_->arcMidPoint(piece.from, piece.to, piece.bulge);
    const int side = source.distance > 0 ? 1 : -1;
    return common_->pointInBulgePolygon(source.ring.points, source.ring.bulges, middle) == side;
}

std::vector<Figure> Parallels::closedChains(const std::vector<Piece>& pieces) const
{
    LineWork work;
    for (const Piece& piece : pieces) {
        work.points.append(Points{piece.from, piece.to});
        work.bulges.append(Values{piece.bulge, 0.0});
    }
    std::vector<Figure> figures;
    for (const Loop& loop : extractLoops(*dataGeo_, work, LoopRequest(), interrupt_.flag()).loops) {
        Figure figure;
        figure.points = loop.points;
        figure.bulges = loop.bulges;
        figure.closed = true;
        figures.push_back(std::move(figure));
    }
    return figures;
}

/// Pieces are in the order of the raw parallel; what was cut out between them is bridged where its
/// ends meet, which is where the parallel crosses itself.
std::vector<Figure> Parallels::openChains(const std::vector<Piece>& pieces) const
{
    std::vector<Figure> figures;
    int segment = -1;
    for (const Piece& piece : pieces) {
        const bool goesOn = !figures.empty() && common_->pointDist(figures.back().points.last(),
                                                                   piece.from) <= kMeetingDistance;
        if (!goesOn) {
            figures.emplace_back();
            figures.back().points.append(piece.from);
        }
        Figure& figure = figures.back();
        if (goesOn && segment == piece.segment) {
            // Cut by the closing line, or where it crosses something that went: one again.
            const double before = figure.bulges.last();
            figure.bulges.removeLast();
            figure.points.removeLast();
            figure.bulges.append(std::tan(std::atan(before) + std::atan(piece.bulge)));
        } else {
            figure.bulges.append(piece.bulge);
        }
        figure.points.append(piece.to);
        segment = piece.segment;
    }
    for (Figure& figure : figures) figure.bulges.append(0.0);
    return figures;
}

std::vector<Figure> Parallels::of(const Figure& given, double distance) const
{
    Figure figure = closedWhereItMeets(given);
    figure.points = scale_.scaled(figure.points);
    Source source{figure, {}, {}, scale_.scaled(distance)};
    openChain(figure, source.points, source.bulges);
    const bool outsideIsLeft =
        !figure.closed || common_->hasPositiveBulgeArea(figure.points, figure.bulges);
    Points raw;
    Values rawBulges;
    if (!common_->offsetBulgePolyline(source.points, source.bulges,
                                      outsideIsLeft ? source.distance : -source.distance, raw,
                                      rawBulges))
        return {};
    std::vector<Piece> kept;
    for (const Piece& piece : cut(raw, rawBulges)) {
        if (interrupt_.raised()) return {};
        if (isKept(piece, source)) kept.push_back(piece);
    }
    std::vector<Figure> found = figure.closed ? closedChains(kept) : openChains(kept);
    for (Figure& parallel : found) {
        parallel.points = scale_.unscaled(parallel.points);
        parallel.layer = given.layer;
    }
    return found;
}

}  // namespace calcora::app
