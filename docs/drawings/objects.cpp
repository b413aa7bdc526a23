// Paths, the R-tree, bearings.
#include <calcora/ICRTree.h>
#include <calcora/IGeometric.h>
#include <calcora/IUnit.h>
#include <tavrel/Ref.h>

#include <cmath>
#include <numbers>
#include <vector>

#include "Sketch.h"
#include "drawings.h"

namespace drawings {

namespace {

Point plan(const tav::Point3DF& p)
{
    return {p.x(), p.y()};
}

}  // namespace

std::string paths()
{
    Sketch sheet(780, 330);
    sheet.view(60, 55, 31);
    const auto geometric = tav::Ref<IGeometric>::create();
    const auto path = tav::Ref<geo::IPath>::create();
    const auto points = path.query<geo::IPointCollection>();
    for (const tav::Point3DF& p : {tav::Point3DF(0, 0, 0), tav::Point3DF(8, 0, 0),
                                   tav::Point3DF(12, 4, 0), tav::Point3DF(19, 4, 0)})
        points->addPoint(p);
    const tav::Point3DF through(8 + 4 * std::numbers::sqrt2 / 2, 4 - 4 * std::numbers::sqrt2 / 2,
                                0);
    points->addArcRecord(tav::Radian{1, through});  // segment 1 is an arc through this point

    tav::Point3DF centre;
    double radius = 0;
    geometric->segmentArcCircle2d(path, 1, centre, radius);
    sheet.circle(plan(centre), radius, {kFaint, 1.5, true});
    sheet.dot(plan(centre), kFaint);
    sheet.words(plan(centre), "segmentArcCircle2d", 0, 12);

    // The path as polyline: chords of the arc that are too fine to see.
    geo::PathRef fine;
    geometric->pathArcOp52(path, 0.0005, fine);
    const auto drawn = fine.query<geo::IPointCollection>();
    Points line;
    for (int i = 0; i < drawn->pointCount(); ++i) line.append(plan(drawn->pointAt(i)));
    sheet.line(line, {}, {kBlue, 2.5});
    for (int i = 0; i < points->pointCount(); ++i) {
        sheet.dot(plan(points->pointAt(i)), kInk);
        sheet.words(plan(points->pointAt(i)), "point " + std::to_string(i), i == 2 ? 30 : 0, -22);
    }
    sheet.dot(plan(through), kOrange, 5);
    sheet.words(plan(through), "arc record: segment 1, arc point", 12, -10, Align::Left, kOrange,
                true);

    const tav::Point3DF q(15.5, 6.4, 0);
    tav::Point3DF nearest;
    int segment = 0;
    double distance = 0;
    geometric->nearestPointOnPolyline(path, q, nearest, segment, distance);
    sheet.line({plan(q), plan(nearest)}, {}, {kGreen, 1.5, true});
    sheet.dot(plan(q), kGreen, 6);
    sheet.words(plan(q), "nearestPointOnPolyline: segment " + std::to_string(segment), 0, 14,
                Align::Middle, kGreen, true);

    tav::Point3DF half;
    geometric->midPointOfPolyline(path, half);
    sheet.dot(plan(half), kRed, 5);
    sheet.words(plan(half), "midPointOfPolyline", -12, 10, Align::Right, kRed, true);
    return sheet.svg();
}

std::string rtree()
{
    Sketch sheet(780, 330);
    sheet.view(30, 25, 28);
    const auto tree = tav::Ref<ICRTree>::create();
    std::vector<RTreeRect> boxes;
    for (int i = 0; i < 60; ++i) {
        const int row = i / 10;
        const double x = 1.85 * (i % 10) + 0.37 * (i * 7 % 5);
        const double y = 1.7 * row + 0.21 * (i * 11 % 4);
        boxes.push_back({x, y, x + 0.7 + 0.13 * (i * 5 % 6), y + 0.6 + 0.12 * (i * 3 % 5)});
    }
    for (RTreeRect& box : boxes) tree->insertRect(&box, &box, 0);
    const RTreeRect window{4.2, 2.4, 12.6, 7.4};
    tav::List<void*> overlapping;
    tav::List<void*> contained;
    const int touched = tree->findOverlapping(&window, &overlapping);
    const int inside = tree->findContained(&window, &contained);

    const auto corners = [](const RTreeRect& r) {
        return Points{{r.minX, r.minY}, {r.maxX, r.minY}, {r.maxX, r.maxY}, {r.minX, r.maxY}};
    };
    sheet.area(corners(window), {}, "#f5f5f5");
    for (const RTreeRect& box : boxes) sheet.line(corners(box), {}, {kFaint, 1.5}, true);
    for (const auto& [hits, fill, colour] :
         {std::tuple{overlapping, kPaleOrange, kOrange}, std::tuple{contained, kPaleGreen, kGreen}})
        for (void* const id : hits) {
            sheet.area(corners(*static_cast<RTreeRect*>(id)), {}, fill);
            sheet.line(corners(*static_cast<RTreeRect*>(id)), {}, {colour, 2}, true);
        }
    sheet.line(corners(window), {}, {kInk, 2, true}, true);

    sheet.view(605, 210, 1);
    sheet.words({0, 0}, std::to_string(boxes.size()) + " rectangles", 0, 0, Align::Left);
    sheet.words({0, -30}, "findOverlapping: " + std::to_string(touched), 0, 0, Align::Left, kOrange,
                true);
    sheet.words({0, -54}, "findContained: " + std::to_string(inside), 0, 0, Align::Left, kGreen,
                true);
    return sheet.svg();
}

std::string bearings()
{
    Sketch sheet(780, 320);
    const auto unit = tav::Ref<IUnit>::create();
    sheet.view(390, 160, 1);
    constexpr double kRadius = 105;
    sheet.line({{-260, 0}, {260, 0}}, {}, {kFaint, 1.5});
    sheet.arrow({{0, -145}, {0, 145}}, {}, {kFaint, 1.5});
    sheet.words({0, 145}, "north, azimuth 0", 10, -6, Align::Left);
    for (const double azimuthDegrees : {40.0, 145.0, 230.0, 320.0}) {
        const double azimuth = unit->degreeToRadian(azimuthDegrees);
        int quadrant = 0;
        double bearing = 0;
        unit->azimuthToBearing(azimuth, &quadrant, &bearing);
        double east = 0;
        double north = 0;
        unit->polarToRect(kRadius, azimuth, &east, &north);
        const Point end(east, north);
        sheet.arrow({{0, 0}, end}, {}, {kBlue, 2.5});

        // The bearing is the angle to the nearer end of the north-south axis.
        const double up = north > 0 ? 1 : -1;
        const double share = 0.4;
        const double turn = (east > 0 ? -1 : 1) * up * std::tan(bearing / 4);
        sheet.line({{0, up * share * kRadius}, {share * east, share * north}}, {turn},
                   {kOrange, 2});
        const Align align = east > 0 ? Align::Left : Align::Right;
        const double shift = east > 0 ? 12 : -12;
        sheet.words(end, "code " + std::to_string(quadrant), shift, up > 0 ? 12 : -2, align, kInk,
                    true);
        sheet.words(end,
                    "azimuth " + number(azimuthDegrees, 0) + "°, bearing " +
                        number(unit->radianToDegree(bearing), 0) + "°",
                    shift, up > 0 ? -6 : -20, align);
    }
    sheet.dot({0, 0}, kInk);
    return sheet.svg();
}

}  // namespace drawings
