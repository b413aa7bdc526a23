// Parallels, loops, curves, and lines made tidy.
#include <calcora/IDataGeo.h>
#include <tavrel/Ref.h>

#include <numbers>

#include "Sketch.h"
#include "drawings.h"

namespace drawings {

namespace {

const double kQuarter = std::numbers::sqrt2 - 1;  // the bulge of a quarter turn

}  // namespace

std::string offsetJoins()
{
    struct Panel {
        const char* titles[2];
        Points line;
        Values bulges;
        double distances[2];
    };
    const Panel kPanels[] = {
        {{"the parallels", "are intersected"},
         {{0, 0}, {2.2, 0}, {3.4, 2.2}, {4.6, 1}},
         {0, 0, 0, 0},
         {0.35, 0.7}},
        {{"where they do not meet,", "an arc about the corner joins them"},
         {{0, 1}, {1.6, 1}, {3.4, 1}, {5, 1}},
         {0, 1, 0, 0},
         {0.3, 0.6}},
        {{"what has no room", "vanishes"},
         {{0, 1.2}, {2, 1.2}, {2.4, 0.2}, {2.8, 1.2}, {4.9, 1.2}},
         {0, 0, 0, 0, 0},
         {0.2, 0.8}},
    };
    Sketch sheet(780, 260);
    const auto common = tav::Ref<IcommonFunc>::create();
    double left = 20;
    for (const Panel& panel : kPanels) {
        sheet.view(left, 70, 46);
        for (const double distance : panel.distances) {
            Points points;
            Values bulges;
            common->offsetBulgePolyline(panel.line, panel.bulges, distance, points, bulges);
            sheet.line(points, bulges, {kBlue, 2});
            for (const Point& p : points) sheet.dot(p, kBlue, 3);
        }
        sheet.arrow(panel.line, panel.bulges, {kInk, 2.5});
        sheet.words({2.5, 0}, panel.titles[0], 0, -35);
        sheet.words({2.5, 0}, panel.titles[1], 0, -53);
        left += 262;
    }
    return sheet.svg();
}

std::string loopWalk()
{
    Sketch sheet(780, 360);
    sheet.view(50, 40, 27);
    const auto common = tav::Ref<IcommonFunc>::create();
    const auto geo = tav::Ref<IDataGeo>::create();
    const IDataGeo::PointLists lines{{{0, 0}, {14, 0}, {14, 10}, {0, 10}, {0, 0}},
                                     {{-1, 3}, {7, 3}, {17, 3}},
                                     {{7, 3}, {7, 10}},
                                     {{3, 10}, {3, 7.6}}};
    const IDataGeo::ValueLists bulges{{0, kQuarter, 0, 0, 0}, {0, 0, 0}, {0, 0}, {0, 0}};
    IDataGeo::PointLists loops;
    IDataGeo::ValueLists loopBulges;
    geo->buildRegions(lines, bulges, loops, loopBulges, false, nullptr, 0);

    const char* const kFills[] = {kPaleOrange, kPaleGreen, kPaleBlue};
    for (int i = 0; i < loops.size(); ++i) sheet.area(loops[i], loopBulges[i], kFills[i % 3]);
    for (int i = 0; i < lines.size(); ++i) sheet.line(lines[i], bulges[i], {kFaint, 2});
    // The line across leaves the figure at both ends.
    sheet.line({{3, 10}, {3, 7.6}}, {}, {kRed, 2.5});
    sheet.line({{-1, 3}, {0, 3}}, {}, {kRed, 2.5});
    sheet.line({{16, 3}, {17, 3}}, {}, {kRed, 2.5});

    const char* const kColours[] = {kOrange, kGreen, kBlue};
    for (int i = 0; i < loops.size(); ++i) {
        // Half-edges, drawn a little inside their loop: the parallel on the left.
        Points ring = loops[i];
        Values ringBulges = loopBulges[i];
        ring.append(ring[0]);
        ringBulges.append(0);
        Points inside;
        Values insideBulges;
        common->offsetBulgePolyline(ring, ringBulges, 0.3, inside, insideBulges);
        for (int k = 0; k + 1 < inside.size(); ++k)
            sheet.arrow({inside[k], inside[k + 1]}, {insideBulges[k]}, {kColours[i % 3], 2});
        const Point label = common->ringMeanPoint(loops[i]);
        const double area = -common->bulgePolygonArea(loops[i], loopBulges[i]);
        sheet.words(label, std::to_string(i + 1) + ": area " + number(area, 1), 0, -5,
                    Align::Middle, kInk, true);
    }
    for (const Points& loop : loops)
        for (const Point& node : loop) sheet.dot(node, kInk, 5);

    sheet.view(535, 290, 1);
    double up = 0;
    for (const char* text :
         {"Lines are cut where they meet.", "Every piece has two half-edges.",
          "A walk takes the sharpest left turn", "at each node until it is back, so it",
          "keeps its region on its left."}) {
        sheet.words({0, up}, text, 0, 0, Align::Left);
        up -= 24;
    }
    sheet.words({0, up}, "Dangling ends bound nothing.", 0, 0, Align::Left, kRed);
    return sheet.svg();
}

std::string tensionAndSpline()
{
    Sketch sheet(780, 290);
    sheet.view(50, 25, 62);
    const auto common = tav::Ref<IcommonFunc>::create();
    const Points points{{0, 0.6},   {3, 0.6},   {3.4, 0.8}, {3.8, 2.2}, {4.2, 2.6},
                        {7.3, 2.6}, {7.7, 2.3}, {7.9, 1},   {8.3, 0.6}, {11.2, 0.8}};
    Points spline;
    Points tension;
    common->splineInterpolate(points, spline, false, 0.002);
    common->tensionCurve(points, tension, false, 0, 0, 0.002);
    sheet.line(points, {}, {kFaint, 1.5, true});
    sheet.line(spline, {}, {kOrange, 2.5});
    sheet.line(tension, {}, {kBlue, 2.5});
    for (const Point& p : points) sheet.dot(p, kInk);
    sheet.view(500, 262, 1);
    sheet.line({{-40, 5}, {-8, 5}}, {}, {kOrange, 2.5});
    sheet.words({0, 0}, "spline: round, overshoots", 0, 0, Align::Left, kOrange, true);
    sheet.line({{-40, -19}, {-8, -19}}, {}, {kBlue, 2.5});
    sheet.words({0, -24}, "tension: keeps to the line", 0, 0, Align::Left, kBlue, true);
    return sheet.svg();
}

std::string tidyLines()
{
    Sketch sheet(780, 250);
    const auto common = tav::Ref<IcommonFunc>::create();

    sheet.view(30, 60, 22);
    const Points shore{{0, 1},     {1, 1.4}, {2, 1.1}, {3, 2.2},   {4, 4.8}, {4.6, 5.9},
                       {5.5, 6.2}, {6.6, 5}, {7.4, 3}, {8.2, 2.6}, {9.1, 3}, {10, 3.1}};
    Points thin;
    common->simplifyPolyline(shore, thin, 0.6);
    sheet.line(shore, {}, {kFaint, 2});
    for (const Point& p : shore) sheet.dot(p, kFaint, 4);
    sheet.line(thin, {}, {kBlue, 2.5});
    for (const Point& p : thin) sheet.dot(p, kBlue, 4);
    sheet.words({5, 0},
                "simplifyPolyline: " + std::to_string(shore.size()) + " vertices, " +
                    std::to_string(thin.size()) + " left",
                0, -40);

    sheet.view(300, 60, 22);
    Points cloud{{1, 2},   {2.5, 5}, {4, 1},   {3.3, 3.2}, {5.2, 4.1}, {6, 2.2},  {7.5, 5.5},
                 {8.6, 3}, {5, 6.4}, {2, 3.4}, {6.6, 4.6}, {4.4, 4.9}, {7.4, 1.2}};
    Points hull;
    const Points given = cloud;
    common->convexHull(cloud, hull);
    sheet.area(hull, {}, kPaleBlue);
    sheet.line(hull, {}, {kBlue, 2.5}, true);
    for (const Point& p : given) sheet.dot(p, kInk, 4);
    sheet.words({4.8, 0}, "convexHull", 0, -40);

    sheet.view(560, 60, 22);
    const IcommonFunc::PointLists footprint{{{0.4, 1.2},
                                             {4.2, 0.6},
                                             {4.6, 2.4},
                                             {7.3, 2.1},
                                             {7.9, 5.6},
                                             {3.9, 6.3},
                                             {3.6, 5},
                                             {0.9, 5.2}}};
    IcommonFunc::PointLists squared;
    common->squareRings(footprint, squared);
    sheet.area(squared[0], {}, kPaleBlue);
    sheet.line(squared[0], {}, {kBlue, 2.5}, true);
    sheet.line(footprint[0], {}, {kInk, 1.5, true}, true);
    sheet.words({4, 0}, "squareRings", 0, -40);
    return sheet.svg();
}

}  // namespace drawings
