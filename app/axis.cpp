#include "app/axis.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "app/text.h"
#include "app/user_error.h"

namespace calcora::app {

namespace {

/// Bulge of an arc of 80 degrees. Longer arcs are cut at their middle: stations fold what exceeds a
/// half circle, and take what is about a right angle for one exactly.
const double kLargestBulge = std::tan(std::numbers::pi / 9);

/// Bulge below which an arc's chord is nearer to it than points about so far a centre.
constexpr double kStraightBulge = 1e-8;

/// Pieces are scaled to chords from 2^kChordExponent to twice that: metres of a road, for which the
/// module's tolerances are made.
constexpr int kChordExponent = 10;

/// Radians: a direction so little below a full turn is due east, but for rounding.
constexpr double kDirectionRounding = 1e-10;

/// Stations that differ by less than this share of the axis's length are one.
constexpr double kStationShare = 1e-12;

/// The point half-way along an arc.
tav::Point2DF arcMiddle(const tav::Point2DF& from, const tav::Point2DF& to, double bulge)
{
    const double dx = to.x() - from.x();
    const double dy = to.y() - from.y();
    return {from.x() + (dx + dy * bulge) / 2, from.y() + (dy - dx * bulge) / 2};
}

tav::Point3DF inSpace(const tav::Point2DF& point)
{
    return {point.x(), point.y(), 0.0};
}

[[noreturn]] void failToMeasure(const tav::Point2DF& from)
{
    throw UserError("the segment that starts at " + placeText(from) + " cannot be measured");
}

}  // namespace

Axis::Axis(const Host& host, const Figure& figure) : geometric_(host.create<IGeometric>())
{
    const int count = figure.points.size();
    for (int i = 0; i < figure.segmentCount(); ++i) {
        const tav::Point2DF& from = figure.points.at(i);
        const tav::Point2DF& to = figure.points.at((i + 1) % count);
        if (!(from.distanceTo(to) > 0)) continue;
        if (vertices_.empty()) vertices_.push_back(0);
        const bool isArc = std::fabs(figure.bulges.at(i)) > kStraightBulge;
        addSegment(from, to, isArc ? figure.bulges.at(i) : 0.0);
        vertices_.push_back(pieces_.back().start + pieces_.back().length);
        arcs_ += isArc;
    }
    if (!pieces_.empty()) currentPath_ = localPath(pieces_.front());
}

void Axis::addSegment(const tav::Point2DF& from, const tav::Point2DF& to, double bulge)
{
    if (std::fabs(bulge) > kLargestBulge) {
        const tav::Point2DF middle = arcMiddle(from, to, bulge);
        const double half = std::tan(std::atan(bulge) / 2);
        addSegment(from, middle, half);
        addSegment(middle, to, half);
        return;
    }
    Piece piece{from, to, bulge, 0, 0};
    if (!pieces_.empty()) piece.start = pieces_.back().start + pieces_.back().length;
    const LocalPath local = localPath(piece);
    piece.length = local.scale.unscaled(geometric_->polylineLength2d(local.path));
    if (!(piece.length > 0 && std::isfinite(piece.start + piece.length))) failToMeasure(from);
    pieces_.push_back(piece);
}

Axis::LocalPath Axis::localPath(const Piece& piece) const
{
    LocalPath local;
    local.origin = piece.from;
    local.scale = ExactScale(kChordExponent - std::ilogb(piece.from.distanceTo(piece.to)));
    const tav::Point2DF end(local.scale.scaled(piece.to.x() - piece.from.x()),
                            local.scale.scaled(piece.to.y() - piece.from.y()));
    const auto points = tav::Ref<geo::IPointCollection>::create();
    if (!points) throw UserError("the geometry plugin offers no paths");
    points->addPoint({0, 0, 0});
    points->addPoint(inSpace(end));
    if (piece.bulge != 0)
        points->addArcRecord(tav::Radian{0, inSpace(arcMiddle({0, 0}, end, piece.bulge))});
    local.path = points.query<geo::IPath>();
    return local;
}

tav::Point2DF Axis::LocalPath::drawn(const tav::Point3DF& point) const
{
    return {origin.x() + scale.unscaled(point.x()), origin.y() + scale.unscaled(point.y())};
}

double Axis::tolerance() const
{
    return kStationShare * length();
}

Station Axis::at(double along)
{
    Station station;
    if (pieces_.empty()) return station;
    station.along = std::clamp(along, 0.0, length());
    // The last piece that begins at the station or before it.
    const auto next =
        std::upper_bound(pieces_.begin(), pieces_.end(), station.along + tolerance(),
                         [](double value, const Piece& piece) { return value < piece.start; });
    const auto index = static_cast<std::size_t>(next - pieces_.begin() - 1);
    const Piece& piece = pieces_[index];
    if (index != current_) {
        currentPath_ = localPath(piece);
        current_ = index;
    }
    const double onPiece = std::clamp(station.along - piece.start, 0.0, piece.length);
    tav::Point3DF local;
    if (!geometric_->pointDistFromPolyline(currentPath_.path, currentPath_.scale.scaled(onPiece),
                                           local))
        failToMeasure(piece.from);
    station.place = currentPath_.drawn(local);
    if (onPiece <= tolerance()) station.place = piece.from;
    if (onPiece >= piece.length - tolerance()) station.place = piece.to;
    measureDirection(piece, local, station);
    return station;
}

void Axis::measureDirection(const Piece& piece, const tav::Point3DF& local, Station& station) const
{
    const geo::PathRef& path = currentPath_.path;
    bool known = false;
    if (piece.bulge == 0) {
        known = geometric_->segmentDirectionAngle2d(path, 0, station.direction);
    } else {
        tav::Point3DF centre;
        known = geometric_->segmentArcCircle2d(path, 0, centre, station.radius);
        // Square to the radius. The module's tangent would be none beside the chord of a flat arc,
        // where no side can be told.
        const double sense = piece.bulge > 0 ? 1 : -1;
        station.direction =
            std::atan2(sense * (local.x() - centre.x()), sense * (centre.y() - local.y()));
        if (station.direction < 0) station.direction += 2 * std::numbers::pi;
        station.radius = sense * currentPath_.scale.unscaled(station.radius);
    }
    if (!known) failToMeasure(piece.from);
    if (station.direction >= 2 * std::numbers::pi - kDirectionRounding) station.direction = 0;
}

tav::Point2DF Axis::beside(const Station& station, double offset) const
{
    tav::Point3DF point;
    geometric_->polarPoint(inSpace(station.place), station.direction + std::numbers::pi / 2, offset,
                           point);
    return {point.x(), point.y()};
}

std::vector<double> wantedStations(const Axis& axis, const StationRequest& request,
                                   std::vector<double>& beyond)
{
    const double end = axis.length() + axis.tolerance();
    std::vector<double> stations;
    if (request.every > 0) {
        const double steps = std::floor(end / request.every);
        if (!(steps < static_cast<double>(kMostStations)))
            throw UserError("--every " + shortText(request.every) + " makes more than " +
                            countText(kMostStations) + " stations on a length of " +
                            shortText(axis.length()));
        for (int i = 0; i <= static_cast<int>(steps); ++i) stations.push_back(i * request.every);
        if (stations.back() < axis.length() - axis.tolerance()) stations.push_back(axis.length());
    } else if (!request.at.empty()) {
        for (const double station : request.at)
            (station <= end ? stations : beyond).push_back(station);
    } else {
        stations = axis.vertices();
    }
    return stations;
}

}  // namespace calcora::app
