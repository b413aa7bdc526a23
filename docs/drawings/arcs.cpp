// Arcs by bulge, their sagitta and chords, stations along an axis.
#include <tavrel/Ref.h>

#include <cmath>
#include <numbers>

#include "Sketch.h"
#include "drawings.h"

namespace drawings {

std::string bulges()
{
    Sketch sheet(780, 250);
    const auto common = tav::Ref<IcommonFunc>::create();
    const double quarter = std::numbers::sqrt2 - 1;
    double left = 75;
    for (const double bulge : {-1.0, -quarter, 0.0, quarter, 1.0, 1 / quarter}) {
        sheet.view(left, 125, 44);
        const Point start(-1, 0);
        const Point end(1, 0);
        sheet.line({start, end}, {}, {kFaint, 1.5, true});
        sheet.arrow({start, end}, {bulge}, {kBlue, 2.5});
        sheet.dot(start, kInk);
        sheet.dot(end, kInk);
        sheet.words(start, "p1", -2, bulge < 0 ? -18 : 10);
        sheet.words(end, "p2", 2, bulge < 0 ? -18 : 10);
        const double sweep = 4 * std::atan(std::abs(bulge)) * 180 / std::numbers::pi;
        sheet.words({0, 0}, number(bulge, bulge == std::floor(bulge) ? 0 : 3), 0, 95, Align::Middle,
                    kInk, true);
        sheet.words({0, 0},
                    bulge == 0 ? "straight"
                               : number(sweep, 0) + "° to the " + (bulge > 0 ? "left" : "right"),
                    0, 76);
        left += 126;
    }
    return sheet.svg();
}

std::string sagitta()
{
    Sketch sheet(780, 300);
    const auto common = tav::Ref<IcommonFunc>::create();
    const double bulge = -0.5;
    const Point start(0, 0);
    const Point end(4, 0);
    const Point middle = common->arcMidPoint(start, end, bulge);
    Point centre;
    double radius = 0;
    common->bulgeArcCenter(start, end, bulge, centre, &radius);

    sheet.view(50, 145, 75);
    sheet.line({start, centre, end}, {}, {kFaint, 1.5, true});
    const double small = 0.2;  // share of the radius at which the sweep is shown
    sheet.arrow({centre + small * (start - centre), centre + small * (end - centre)}, {bulge},
                {kOrange, 1.5});
    sheet.words(centre, "sweep = 4 atan |bulge|", 0, -22, Align::Middle, kOrange);
    sheet.line({start, end}, {}, {kInk, 2});
    sheet.line({start, end}, {bulge}, {kBlue, 2.5});
    sheet.measure(middle, {middle.x(), 0}, {kRed, 1.5});
    sheet.words({2, 0}, "sagitta = |bulge| × chord / 2", 0, 88, Align::Middle, kRed);
    sheet.words({1, 0}, "chord", 0, 6);
    sheet.words(0.5 * (end + centre), "radius", 10, -14, Align::Left);
    for (const Point& p : {start, end, centre}) sheet.dot(p, kInk);

    // The same arc as chords.
    double bottom = 222;
    for (const double tolerance : {0.3, 0.1, 0.02}) {
        sheet.view(480, bottom, 55);
        Points chords;
        common->bulgeArcToChords(start, end, bulge, tolerance, chords);
        sheet.line({start, end}, {bulge}, {kFaint, 4});
        sheet.line(chords, {}, {kBlue, 1.5});
        for (const Point& p : chords) sheet.dot(p, kBlue, 3);
        sheet.words({2, 0},
                    "tolerance " + number(tolerance, 2) + ": " + std::to_string(chords.size() - 1) +
                        " chords",
                    0, -18);
        bottom -= 92;
    }
    return sheet.svg();
}

std::string stations()
{
    Sketch sheet(780, 350);
    sheet.view(40, 40, 4.6);
    const auto common = tav::Ref<IcommonFunc>::create();
    const double quarter = std::numbers::sqrt2 - 1;
    const Points axis{{0, 0}, {50, 0}, {82, 32}, {110, 60}, {152, 60}};
    const Values bulges{0, quarter, -quarter, 0, 0};
    sheet.line(axis, bulges, {kBlue, 2.5});

    const double length = common->bulgePolylineLength(axis, bulges, false);
    for (int i = 0; 20 * i <= length; ++i) {
        const double station = 20 * i;
        // The direction there from two points close to each other.
        const double base = std::max(station, 0.01);
        Point before;
        Point after;
        common->pointAtStation(axis, bulges, base - 0.01, before);
        common->pointAtStation(axis, bulges, base + 0.01, after);
        Point at;
        common->pointAtStation(axis, bulges, station, at);
        const double across = common->lineAngle(before, after) + std::numbers::pi / 2;
        Point left;
        Point right;
        Point label;
        common->polarPoint(at, across, 2, left);
        common->polarPoint(at, across, -2, right);
        common->polarPoint(at, across, 4.5, label);
        sheet.line({left, right}, {}, {kInk, 1.5});
        const bool isUpright = std::abs(std::cos(across)) > 0.9;  // words stand beside it then
        sheet.words(label, number(station, 0), isUpright ? 8 : 0, -4,
                    isUpright ? Align::Right : Align::Middle);
    }
    for (const Point& p : axis) sheet.dot(p, kInk);

    const Point tree(108, 26);
    Point foot;
    int segment = 0;
    double place = 0;
    common->nearestOnBulgePolylineEx(tree, axis, bulges, foot, &segment, &place);
    Values vertices;
    common->bulgePolylineStations(axis, bulges, vertices);
    const double station =
        vertices[segment] + (place - segment) * common->bulgeSegmentLength(axis[segment],
                                                                           axis[segment + 1],
                                                                           bulges[segment]);
    sheet.line({tree, foot}, {}, {kGreen, 1.5, true});
    sheet.dot(tree, kGreen, 6);
    sheet.dot(foot, kGreen, 4);
    const bool isLeft = common->pointSideOfBulgePolyline(tree, axis, bulges) > 0;
    sheet.words(tree, "station " + number(station, 2), 12, 2, Align::Left, kGreen, true);
    sheet.words(tree,
                number(common->pointDist(tree, foot), 2) + " to the " + (isLeft ? "left" : "right"),
                12, -16, Align::Left, kGreen);
    sheet.words(axis.last(), "length " + number(length, 2), 0, -24, Align::Right);
    return sheet.svg();
}

}  // namespace drawings
