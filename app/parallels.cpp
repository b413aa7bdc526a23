#include "app/parallels.h"

#include <algorithm>
#include <cmath>

#include "app/clearance.h"
#include "app/figure_tool.h"
#include "app/loop_extraction.h"
#include "app/overlaps.h"
#include "app/parallel_chains.h"
#include "app/place_grid.h"
#include "app/raw_parallel.h"
#include "app/round_trip.h"

namespace calcora::app {

namespace {

using tav::Point2DF;

/// A point that lies nearer than the distance by this, in scaled units and as a share of the
/// distance, is not nearer: nodes of the extraction lie 1e-5 apart.
constexpr double kDistanceSlack = 2e-5;
constexpr double kDistanceShare = 1e-7;

/// Distances are scaled up to this, as far as the coordinates allow: pieces may be far shorter than
/// the distance, and the extraction does not cut what is short.
constexpr double kWorkingDistance = 1024;

/// Raw segments are cut only where they come nearer by this, in scaled units and as a share of the
/// distance: they reach well beyond where they cross, and few cross that need not.
constexpr double kRoughSlack = 1.0;
constexpr double kRoughShare = 0.1;

/// Ends of pieces this close, in scaled units, meet.
constexpr double kMeetingDistance = 5e-5;

/// Ends of chains meet within this multiple of the slack: where a crossing was not found since the
/// segments are short, either one reaches beyond it by the slack.
constexpr double kChainReach = 4.0;

/// The places where pieces meet; those within kMeetingDistance are one.
class Nodes {
public:
    int at(const Point2DF& place)
    {
        int found = static_cast<int>(places_.size());
        grid_.forEachNear(place, [&](const Point2DF&, int n) { found = std::min(found, n); });
        if (found == count()) {
            grid_.add(place, found);
            places_.push_back(place);
        }
        return found;
    }
    int count() const { return static_cast<int>(places_.size()); }
    const Point2DF& place(int n) const { return places_[static_cast<std::size_t>(n)]; }

private:
    PlaceGrid grid_{kMeetingDistance};
    std::vector<Point2DF> places_;
};

/// A place of a raw segment.
struct Mark {
    double share = 0;
    int node = 0;
};

/// A part of a raw segment that is far enough from the figure.
struct Part {
    int segment = 0;
    Mark from, to;
};

/// Makes one parallel, in scaled coordinates.
class Maker {
public:
    /// The distance is to the left of an open figure, outwards of a closed one.
    Maker(IcommonFunc& common, IDataGeo& dataGeo, Interrupt& interrupt, const Figure& figure,
          double distance)
        : common_(common),
          dataGeo_(dataGeo),
          interrupt_(interrupt),
          closed_(figure.closed),
          outside_(distance > 0),
          distance_(distance)
    {
        // The area is positive for a clockwise figure, which has its outside on the left.
        if (closed_ && !common_.hasPositiveBulgeArea(figure.points, figure.bulges))
            distance_ = -distance_;
        openChain(figure, points_, bulges_);
        removeRepeats(points_, bulges_);
    }

    std::vector<Figure> make()
    {
        const SegmentIndex line(points_, bulges_);
        RawParallel parallel = rawParallel(common_, line, closed_, distance_);
        raw_ = std::move(parallel.segments);
        for (int i = 0; i < static_cast<int>(raw_.size()); ++i)
            parts_.push_back({i, markAt(raw(i), 0), markAt(raw(i), 1)});
        keepClear(line, parallel.tips, std::min(kRoughSlack, kRoughShare * std::fabs(distance_)));
        if (interrupt_.raised()) return {};
        dropOverlaps();
        cutAtCrossings();
        keepClear(line, parallel.tips, std::min(slack(), std::fabs(distance_)));
        std::vector<ParallelPiece> pieces;
        for (const Part& part : parts_) pieces.push_back(pieceOf(part));
        if (interrupt_.raised()) return {};

        std::vector<Figure> figures;
        const double reach = std::max(kChainReach * slack(), kMeetingDistance);
        for (const PieceChain& chain : chainPieces(common_, pieces, nodes_.count(), reach)) {
            const Segment& first = pieces[static_cast<std::size_t>(chain.pieces.front())].path;
            const Segment& last = pieces[static_cast<std::size_t>(chain.pieces.back())].path;
            // The tip of a corner may lie beyond the figure's other side.
            if (closed_ && isInside(common_, line, pointAt(common_, first, 0.5)) == outside_)
                continue;
            if (!chain.closed && !mayEndAt(first.from, line) && !mayEndAt(last.to, line)) continue;
            Figure figure = figureOf(chain);
            if (common_.bulgePolylineLength(figure.points, figure.bulges, figure.closed) >
                kChainReach * reach)
                figures.push_back(std::move(figure));
        }
        return figures;
    }

private:
    double slack() const { return std::fabs(distance_) * kDistanceShare + kDistanceSlack; }
    bool leftIsFree() const { return distance_ > 0; }
    const Segment& raw(int i) const { return raw_[static_cast<std::size_t>(i)]; }

    /// Keeps what of the parts is nowhere nearer to the line, nor inside a tip, by that slack.
    void keepClear(const SegmentIndex& line, const std::vector<CornerTip>& tips, double slack)
    {
        const Clearance clearance(common_, line, tips, std::fabs(distance_) - slack, slack);
        const std::vector<Part> given = std::move(parts_);
        parts_ = {};
        for (const Part& part : given) {
            if (interrupt_.raised()) return;
            addParts(part, clearance.clearStretches(pathOf(part)));
        }
    }

    void dropOverlaps()
    {
        const std::vector<Part> given = std::move(parts_);
        parts_ = {};
        std::vector<Segment> paths;
        for (const Part& part : given) paths.push_back(pathOf(part));
        const auto rests = withoutOverlaps(paths, kMeetingDistance);
        for (std::size_t i = 0; i < given.size(); ++i) addParts(given[i], rests[i]);
    }

    void addParts(const Part& part, const std::vector<Stretch>& stretches)
    {
        for (const Stretch& stretch : stretches)
            addPart({part.segment, markIn(part, stretch.from), markIn(part, stretch.to)});
    }

    /// The mark at a share of a part.
    Mark markIn(const Part& part, double share)
    {
        if (share <= 0) return part.from;
        if (share >= 1) return part.to;
        return markAt(raw(part.segment),
                      part.from.share + share * (part.to.share - part.from.share));
    }

    Mark markAt(const Segment& segment, double share)
    {
        return {share, nodes_.at(pointAt(common_, segment, share))};
    }

    /// What is shorter than a node is wide is none.
    void addPart(const Part& part)
    {
        const Segment& segment = raw(part.segment);
        const double length = common_.bulgeSegmentLength(segment.from, segment.to, segment.bulge) *
                              (part.to.share - part.from.share);
        if (part.from.node != part.to.node || length > 4 * kMeetingDistance) parts_.push_back(part);
    }

    Segment pathOf(const Part& part) const
    {
        const double share = part.to.share - part.from.share;
        const double bulge = raw(part.segment).bulge;
        return {nodes_.place(part.from.node), nodes_.place(part.to.node),
                share < 1 ? std::tan(std::atan(bulge) * share) : bulge};
    }

    /// Cuts the parts where they cross each other: at the vertices of the loops that they form.
    void cutAtCrossings()
    {
        if (parts_.empty()) return;
        std::vector<Segment> paths;
        std::vector<Point2DF> middles;
        for (const Part& part : parts_) {
            paths.push_back(pathOf(part));
            middles.push_back(pointAt(common_, paths.back(), 0.5));
        }
        const std::vector<int> trip = roundTrip(middles);
        std::vector<Segment> indexed;
        for (const int i : trip) indexed.push_back(paths[static_cast<std::size_t>(i)]);
        const SegmentIndex segments(std::move(indexed));
        std::vector<std::vector<Mark>> cuts(parts_.size());
        for (const Point2DF& place : loopVertices(paths)) {
            if (interrupt_.raised()) return;
            const auto isNear = [&](const Box& box) {
                return boxDistance(box, place) <= kMeetingDistance;
            };
            segments.search(place, isNear, [&](int i) {
                const Segment& segment = segments.segment(i);
                if (!passesBy(segment, place)) return;
                const int part = trip[static_cast<std::size_t>(i)];
                cuts[static_cast<std::size_t>(part)].push_back(
                    {shareOf(common_, segment, place), nodes_.at(place)});
            });
        }
        const std::vector<Part> uncut = std::move(parts_);
        parts_ = {};
        for (std::size_t i = 0; i < uncut.size(); ++i) addCut(uncut[i], cuts[i]);
    }

    /// Lines through the paths, as long as they go on, and past all ends: so every crossing of paths
    /// is in a loop. From one path to the next the way may be long, past the ends it is short.
    static LineWork loopWork(const std::vector<Segment>& paths)
    {
        LineWork work;
        std::vector<Point2DF> ends;
        for (const Segment& path : paths) {
            if (ends.empty() || !(ends.back() == path.from)) {
                ends.insert(ends.end(), 2, path.from);
                work.points.append(Points{path.from});
                work.bulges.append(Values());
            }
            ends.back() = path.to;
            work.points.last().append(path.to);
            work.bulges.last().append(path.bulge);
        }
        Points trip;
        for (const int i : roundTrip(ends)) trip.append(ends[static_cast<std::size_t>(i)]);
        trip.append(Point2DF(std::as_const(trip).first()));
        work.points.append(trip);
        work.bulges.append(Values());
        for (int i = 0; i < work.points.size(); ++i)
            work.bulges[i].resize(work.points.at(i).size());
        return work;
    }

    std::vector<Point2DF> loopVertices(const std::vector<Segment>& paths) const
    {
        const LineWork work = loopWork(paths);
        std::vector<Point2DF> places;
        for (const Loop& loop :
             extractLoops(dataGeo_, work, LoopRequest(), interrupt_.flag()).loops)
            places.insert(places.end(), loop.points.cbegin(), loop.points.cend());
        std::sort(places.begin(), places.end(), [](const Point2DF& a, const Point2DF& b) {
            return a.x() != b.x() ? a.x() < b.x() : a.y() < b.y();
        });
        places.erase(std::unique(places.begin(), places.end()), places.end());
        return places;
    }

    /// Whether the place lies on the segment, and not at one of its ends.
    bool passesBy(const Segment& segment, const Point2DF& place) const
    {
        return segment.from.distanceTo(place) > kMeetingDistance &&
               segment.to.distanceTo(place) > kMeetingDistance &&
               common_.pointBulgeSegmentDistSquared(place, segment.from, segment.to,
                                                    segment.bulge) <=
                   kMeetingDistance * kMeetingDistance;
    }

    /// Adds a part cut at marks, whose shares are of the part.
    void addCut(const Part& part, std::vector<Mark>& cuts)
    {
        std::sort(cuts.begin(), cuts.end(),
                  [](const Mark& a, const Mark& b) { return a.share < b.share; });
        Mark from = part.from;
        for (Mark cut : cuts) {
            cut.share = part.from.share + cut.share * (part.to.share - part.from.share);
            if (!(cut.share > from.share && cut.share < part.to.share)) continue;
            addPart({part.segment, from, cut});
            from = cut;
        }
        addPart({part.segment, from, part.to});
    }

    /// Whether a parallel may come to an end there: about the end of the line, or on the line's
    /// other side. Elsewhere another part of the parallel goes on, unless the place is inside the
    /// tip of a corner, where the parallel is no longer at the distance.
    bool mayEndAt(const Point2DF& place, const SegmentIndex& line) const
    {
        const int nearest = nearestSegment(common_, line, place);
        if (nearest < 0) return false;
        const int count = line.count();
        const auto index = [&](int i) { return closed_ ? (i % count + count) % count : i; };
        const int first = closed_ ? nearest - 1 : std::max(nearest - 1, 0);
        const int last = closed_ ? nearest + 1 : std::min(nearest + 1, count - 1);
        Points points{line.segment(index(first)).from};
        Values bulges;
        for (int i = first; i <= last; ++i) {
            points.append(line.segment(index(i)).to);
            bulges.append(line.segment(index(i)).bulge);
        }
        const auto isAbout = [&](const Point2DF& end) {
            return place.distanceTo(end) <= std::fabs(distance_) + kMeetingDistance;
        };
        const bool isAtEnd = !closed_ && (isAbout(points_.first()) || isAbout(points_.last()));
        const int side = common_.pointSideOfBulgePolyline(place, points, bulges);
        return isAtEnd || (leftIsFree() ? side < 0 : side > 0);
    }

    /// The part with what is free on its left.
    ParallelPiece pieceOf(const Part& part) const
    {
        const Segment path = pathOf(part);
        if (leftIsFree()) return {path, part.from.node, part.to.node};
        return {{path.to, path.from, -path.bulge}, part.to.node, part.from.node};
    }

    /// The chain in the direction of the raw parallel; parts of one segment in a row are one.
    Figure figureOf(const PieceChain& chain) const
    {
        std::vector<Part> parts;
        for (const int i : chain.pieces) parts.push_back(parts_[static_cast<std::size_t>(i)]);
        if (!leftIsFree()) std::reverse(parts.begin(), parts.end());
        const auto goesOn = [](const Part& a, const Part& b) {
            return a.segment == b.segment && a.to.share == b.from.share;
        };
        if (chain.closed) {
            // Begin where a segment does.
            const auto start =
                std::adjacent_find(parts.begin(), parts.end(),
                                   [&](const Part& a, const Part& b) { return !goesOn(a, b); });
            if (start != parts.end()) std::rotate(parts.begin(), start + 1, parts.end());
        }
        std::vector<Part> whole;
        for (const Part& part : parts) {
            if (!whole.empty() && goesOn(whole.back(), part))
                whole.back().to = part.to;
            else
                whole.push_back(part);
        }
        Figure figure;
        figure.closed = chain.closed;
        for (const Part& part : whole) {
            figure.points.append(nodes_.place(part.from.node));
            figure.bulges.append(pathOf(part).bulge);
        }
        if (!chain.closed) {
            figure.points.append(nodes_.place(whole.back().to.node));
            figure.bulges.append(0.0);
        }
        return figure;
    }

    IcommonFunc& common_;
    IDataGeo& dataGeo_;
    Interrupt& interrupt_;
    bool closed_;
    bool outside_;
    double distance_;  ///< to the left
    Points points_;    ///< of the figure, with the first repeated when it is closed
    Values bulges_;
    std::vector<Segment> raw_;
    Nodes nodes_;
    std::vector<Part> parts_;
};

ExactScale workingScale(const Points& points, double distance, const ExactScale& least)
{
    double largest = std::fabs(distance);
    for (const Point2DF& point : points)
        largest = std::max({largest, std::fabs(point.x()), std::fabs(point.y())});
    int exponent = least.exponent();
    while (std::ldexp(std::fabs(distance), exponent) < kWorkingDistance &&
           std::ldexp(largest, exponent + 1) < kCoordinateLimit)
        ++exponent;
    return ExactScale(exponent);
}

}  // namespace

Parallels::Parallels(const Host& host, Interrupt& interrupt, const ExactScale& scale)
    : common_(host.create<IcommonFunc>()),
      dataGeo_(host.create<IDataGeo>()),
      interrupt_(interrupt),
      scale_(scale)
{
}

std::vector<Figure> Parallels::of(const Figure& given, double distance) const
{
    Figure figure = closedWhereItMeets(given);
    const ExactScale scale = workingScale(figure.points, distance, scale_);
    figure.points = scale.scaled(figure.points);
    std::vector<Figure> found =
        Maker(*common_, *dataGeo_, interrupt_, figure, scale.scaled(distance)).make();
    for (Figure& parallel : found) {
        parallel.points = scale.unscaled(parallel.points);
        parallel.layer = given.layer;
    }
    return found;
}

}  // namespace calcora::app
