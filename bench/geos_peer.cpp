#include <geos/algorithm/LineIntersector.h>
#include <geos/geom/CoordinateArraySequence.h>
#include <geos/geom/Geometry.h>
#include <geos/geom/GeometryFactory.h>
#include <geos/geom/LineString.h>
#include <geos/geom/Polygon.h>
#include <geos/noding/GeometryNoder.h>
#include <geos/noding/IntersectionAdder.h>
#include <geos/noding/MCIndexNoder.h>
#include <geos/noding/NodedSegmentString.h>
#include <geos/noding/OrientedCoordinateArray.h>
#include <geos/noding/snap/SnappingNoder.h>
#include <geos/operation/polygonize/Polygonizer.h>

#include <set>
#include <utility>
#include <vector>

#include "bench/peers.h"

namespace peers {

namespace {

using geos::geom::Coordinate;
using workloads::LineWork;
using Lines = std::vector<std::vector<Coordinate>>;

/// The polyline with every arc as chords within 1e-3.
std::vector<Coordinate> chords(const tav::Vector<tav::Point2DF>& points,
                               const tav::Vector<double>& bulges)
{
    std::vector<Coordinate> result{{points.first().x(), points.first().y()}};
    for (int i = 0; i + 1 < points.size(); ++i) {
        const tav::Point2DF& a = points[i];
        const tav::Point2DF& b = points[i + 1];
        const double half = 2 * std::atan(bulges[i]);
        if (half != 0) {
            const double radius = a.distanceTo(b) / (2 * std::fabs(std::sin(half)));
            const int steps = 1 + static_cast<int>(std::fabs(half) / std::acos(1 - 1e-3 / radius));
            for (int k = 1; k < steps; ++k) {
                const double t = static_cast<double>(k) / steps;
                const double scale = std::sin(t * half) / std::sin(half);
                const double turn = -(1 - t) * half;
                const double dx = b.x() - a.x();
                const double dy = b.y() - a.y();
                result.emplace_back(a.x() + scale * (dx * std::cos(turn) - dy * std::sin(turn)),
                                    a.y() + scale * (dx * std::sin(turn) + dy * std::cos(turn)));
            }
        }
        result.emplace_back(b.x(), b.y());
    }
    return result;
}

Lines linesOf(const LineWork& work)
{
    Lines lines;
    for (int i = 0; i < work.points.size(); ++i)
        lines.push_back(chords(work.points[i], work.bulges[i]));
    return lines;
}

std::unique_ptr<geos::geom::LineString> lineOf(const std::vector<Coordinate>& coordinates)
{
    return geos::geom::GeometryFactory::getDefaultInstance()->createLineString(
        std::make_unique<geos::geom::CoordinateArraySequence>(std::vector(coordinates)));
}

int facesOf(const std::vector<const geos::geom::Geometry*>& lines)
{
    geos::operation::polygonize::Polygonizer polygonizer;
    for (const geos::geom::Geometry* line : lines) polygonizer.add(line);
    return static_cast<int>(polygonizer.getPolygons().size());
}

class NodeOperation : public Peer {
public:
    explicit NodeOperation(const LineWork& work)
    {
        std::vector<std::unique_ptr<geos::geom::LineString>> lines;
        for (const auto& line : linesOf(work)) lines.push_back(lineOf(line));
        lines_ = geos::geom::GeometryFactory::getDefaultInstance()->createMultiLineString(
            std::move(lines));
    }
    int countFaces() override
    {
        const auto noded = geos::noding::GeometryNoder::node(*lines_);
        return facesOf({noded.get()});
    }

private:
    std::unique_ptr<geos::geom::Geometry> lines_;
};

/// One run of a noder that works on segment strings.
template <class Run>
class SegmentStrings : public Peer {
public:
    SegmentStrings(const LineWork& work, Run run) : lines_(linesOf(work)), run_(run) {}

    int countFaces() override
    {
        using geos::noding::SegmentString;
        std::vector<std::unique_ptr<geos::geom::CoordinateSequence>> coordinates;
        std::vector<std::unique_ptr<SegmentString>> owned;
        std::vector<SegmentString*> strings;
        for (const auto& line : lines_) {
            auto sequence =
                std::make_unique<geos::geom::CoordinateArraySequence>(std::vector(line));
            owned.push_back(
                std::make_unique<geos::noding::NodedSegmentString>(sequence.release(), nullptr));
            strings.push_back(owned.back().get());
        }
        std::unique_ptr<std::vector<SegmentString*>> noded(run_(strings));
        std::set<geos::noding::OrientedCoordinateArray> known;
        std::vector<std::unique_ptr<geos::geom::Geometry>> pieces;
        std::vector<const geos::geom::Geometry*> distinct;
        for (SegmentString* piece : *noded) {
            if (known.emplace(*piece->getCoordinates()).second) {
                pieces.push_back(
                    geos::geom::GeometryFactory::getDefaultInstance()->createLineString(
                        piece->getCoordinates()->clone()));
                distinct.push_back(pieces.back().get());
            }
        }
        const int faces = facesOf(distinct);
        known.clear();
        for (SegmentString* piece : *noded) delete piece;
        return faces;
    }

private:
    Lines lines_;
    Run run_;
};

template <class Run>
std::unique_ptr<Peer> segmentStrings(const LineWork& work, Run run)
{
    return std::make_unique<SegmentStrings<Run>>(work, run);
}

}  // namespace

std::unique_ptr<Peer> geosNode(const LineWork& work)
{
    return std::make_unique<NodeOperation>(work);
}

std::unique_ptr<Peer> geosSinglePass(const LineWork& work)
{
    return segmentStrings(work, [](std::vector<geos::noding::SegmentString*>& strings) {
        geos::algorithm::LineIntersector intersector;
        geos::noding::IntersectionAdder adder(intersector);
        geos::noding::MCIndexNoder noder(&adder);
        noder.computeNodes(&strings);
        return noder.getNodedSubstrings();
    });
}

std::unique_ptr<Peer> geosSnapping(const LineWork& work)
{
    return segmentStrings(
        work, [tolerance = work.snapTolerance](std::vector<geos::noding::SegmentString*>& strings) {
            geos::noding::snap::SnappingNoder noder(tolerance);
            noder.computeNodes(&strings);
            return noder.getNodedSubstrings();
        });
}

}  // namespace peers
