// An axis: a chain of straight segments and arcs with a running length.
#pragma once

#include <string>
#include <vector>

#include "app/Drawing.h"
#include "app/exact_scale.h"
#include "app/host.h"

namespace calcora::app {

/// A place on an axis.
struct Station {
    double along = 0;       ///< running length from the axis's first point
    tav::Point2DF place{};  ///< a vertex bit for bit where the station is one
    double direction = 0;  ///< of the axis, radians in [0, 2 pi), counter-clockwise from the x axis
    double radius = 0;     ///< of the arc there, positive where it turns left; 0: straight
};

/// An axis in plan, measured by the module. Segments without length are passed over. Building it
/// costs time in proportion to its segments, a station the logarithm of that.
class Axis {
public:
    /// The host must have its geometry plugin. Throws UserError for a figure that the module
    /// cannot measure.
    Axis(const Host& host, const Figure& figure);

    double length() const { return vertices_.empty() ? 0.0 : vertices_.back(); }
    int arcCount() const { return arcs_; }
    int segmentCount() const { return static_cast<int>(vertices_.size()) - 1; }

    /// Running lengths of the vertices from 0 to length(); empty for an axis without length.
    const std::vector<double>& vertices() const { return vertices_; }

    /// How far apart two stations may lie and still be one: what rounding makes of running lengths.
    double tolerance() const;

    /// The station at a running length. What lies outside 0 to length() is brought to the end
    /// nearby; at a corner the direction is that of the segment that begins there.
    Station at(double along);

    /// The point `offset` to the left of the axis (negative: to the right).
    tav::Point2DF beside(const Station& station, double offset) const;

private:
    /// A segment or part of an arc, in the drawing.
    struct Piece {
        tav::Point2DF from;
        tav::Point2DF to;
        double bulge = 0;
        double start = 0;  ///< running length at `from`
        double length = 0;
    };
    /// A piece as a path, told from its first point and scaled, so that neither far coordinates nor
    /// small units meet the module's absolute tolerances.
    struct LocalPath {
        geo::PathRef path;
        ExactScale scale;
        tav::Point2DF origin;

        tav::Point2DF drawn(const tav::Point3DF& point) const;
    };

    void addSegment(const tav::Point2DF& from, const tav::Point2DF& to, double bulge);
    LocalPath localPath(const Piece& piece) const;
    void measureDirection(const Piece& piece, const tav::Point3DF& local, Station& station) const;

    tav::Ref<IGeometric> geometric_;
    std::vector<Piece> pieces_;
    std::vector<double> vertices_;
    int arcs_ = 0;
    std::size_t current_ = 0;  ///< the piece that currentPath_ is of
    LocalPath currentPath_;
};

/// Which stations are wanted.
struct StationRequest {
    double every = 0;        ///< multiples of this and the end; 0: not
    std::vector<double> at;  ///< these; without them and `every`: the vertices
};

/// Most stations that are made at once.
inline constexpr long long kMostStations = 1'000'000;

/// The running lengths that are wanted of an axis, those beyond its end left out and added to
/// `beyond`. Throws UserError when there would be more than kMostStations.
std::vector<double> wantedStations(const Axis& axis, const StationRequest& request,
                                   std::vector<double>& beyond);

}  // namespace calcora::app
