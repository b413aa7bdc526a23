// Places of points: in regions, beside lines, where lines meet.
#include <tavrel/Ref.h>

#include <numbers>

#include "Sketch.h"
#include "drawings.h"

namespace drawings {

namespace {

const double kQuarter = std::numbers::sqrt2 - 1;  // the bulge of a quarter turn

/// A key to the dots of a drawing: colour and words, from the pixel (left, bottom) down.
void legend(Sketch& sheet, double left, double bottom,
            std::initializer_list<std::pair<const char*, const char*>> rows)
{
    for (const auto& [colour, text] : rows) {
        sheet.view(left, bottom, 1);
        sheet.dot({0, 0}, colour, 6);
        sheet.words({0, 0}, text, 14, -5, Align::Left);
        bottom -= 26;
    }
}

}  // namespace

std::string location()
{
    Sketch sheet(780, 350);
    sheet.view(70, 60, 23);
    const auto common = tav::Ref<IcommonFunc>::create();
    // Outer rings run clockwise, holes counter-clockwise.
    const IcommonFunc::PointLists rings{{{0, 0}, {0, 10}, {18, 10}, {18, 0}},
                                        {{7, 5}, {9.5, 2.5}, {12, 5}, {9.5, 7.5}}};
    const IcommonFunc::ValueLists bulges{{0.4, 0, -0.6, 0},
                                         {kQuarter, kQuarter, kQuarter, kQuarter}};
    sheet.area(rings[0], bulges[0], kPaleGreen);
    sheet.area(rings[1], bulges[1], "#ffffff");
    for (int x = -2; x <= 23; ++x) {
        for (int y = -1; y <= 11; ++y) {
            const Point p(x, y);
            const int place = common->pointInBulgeRegion(rings, bulges, p);
            sheet.dot(p, place < 0 ? kGreen : place > 0 ? kRed : kOrange, place == 0 ? 5 : 3);
        }
    }
    for (int i = 0; i < rings.size(); ++i) sheet.line(rings[i], bulges[i], {kInk, 2}, true);
    sheet.arrow({{8, 10}, {9.5, 10}}, {}, {kInk, 2});
    sheet.arrow({{9.5, 0}, {8, 0}}, {}, {kInk, 2});
    sheet.arrow({rings[1][1], rings[1][2]}, {kQuarter}, {kInk, 2});
    sheet.arrow({rings[1][3], rings[1][0]}, {kQuarter}, {kInk, 2});
    sheet.words({9, 10}, "outer ring, clockwise", 0, 34, Align::Middle, kInk, true);
    sheet.words({9.5, 0}, "hole, counter-clockwise", 0, -44, Align::Middle, kInk, true);
    sheet.line({{9.5, 2.4}, {9.5, -1.4}}, {}, {kInk, 1});
    legend(sheet, 650, 210,
           {{kGreen, "−1  inside"}, {kOrange, "0  boundary"}, {kRed, "1  outside"}});
    return sheet.svg();
}

std::string sides()
{
    Sketch sheet(780, 330);
    sheet.view(40, 35, 20);
    const auto common = tav::Ref<IcommonFunc>::create();
    const Points line{{1, 2}, {9, 2}, {13, 6}, {17, 10}, {21, 2}, {27, 9}};
    const Values bulges{0, kQuarter, -kQuarter, 0, 0, 0};
    for (int x = 0; x <= 29; ++x) {
        for (int y = 0; y <= 13; ++y) {
            const Point p(x, y);
            const int side = common->pointSideOfBulgePolyline(p, line, bulges);
            sheet.dot(p, side > 0 ? kGreen : side < 0 ? kRed : kOrange, side == 0 ? 5 : 3);
        }
    }
    sheet.arrow(line, bulges, {kInk, 2.5});
    legend(sheet, 650, 210,
           {{kGreen, "1  left"}, {kOrange, "0  on the line"}, {kRed, "−1  right"}});
    return sheet.svg();
}

std::string intersections()
{
    Sketch sheet(780, 320);
    sheet.view(60, 45, 30);
    const auto common = tav::Ref<IcommonFunc>::create();
    const Points a{{0, 1}, {8, 1}, {14, 7}, {22, 7}};
    const Values aBulges{0, kQuarter, 0, 0};
    const Points b{{2, -1}, {2, 3.5}, {15, 3.5}, {20, 9}};
    const Values bBulges{0, -0.25, 0, 0};

    sheet.line(b, bBulges, {kOrange, 2});
    sheet.arrow(a, aBulges, {kInk, 2.5});
    for (int i = 0; i < a.size(); ++i) {
        sheet.dot(a[i], kInk);
        sheet.words(a[i], std::to_string(i), 0, i < 2 ? -20 : 12, Align::Middle, kInk, true);
    }
    sheet.words(a.last(), "a", 16, -4, Align::Left, kInk, true);
    sheet.words(b[0], "b", 12, -4, Align::Left, kOrange, true);

    Point points[64];
    double parameters[64];
    int count = 0;
    common->intersectBulgePolylines(a, aBulges, b, bBulges, points, parameters, &count);
    for (int i = 0; i < count; ++i) {
        sheet.dot(points[i], kBlue, 6);
        const bool onArc = parameters[i] > 1 && parameters[i] < 2;
        sheet.words(points[i], number(parameters[i], 3), onArc ? 14 : 10, onArc ? 4 : -20,
                    Align::Left, kBlue, true);
    }
    return sheet.svg();
}

}  // namespace drawings
