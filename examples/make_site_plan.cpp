// Draws examples/site_plan.dxf, the sample drawing: `cmake --build BUILD --target site_plan`.
//
// A made-up neighbourhood of 320 m by 220 m: a roundabout with four roads, one of them in a curve,
// a turning head, parcels with houses, a garden, a track, a shop with its car park, a pond. Drawn
// as people draw: most lines meet, a few do not, one is there twice.

#include <cmath>
#include <cstdio>
#include <numbers>
#include <string>
#include <vector>

namespace {

struct Point {
    double x = 0;
    double y = 0;
};

/// A vertex and the bulge of the segment that follows it.
struct Vertex {
    Point at;
    double bulge = 0;
};

using Chain = std::vector<Vertex>;

Point polar(Point centre, double radius, double degrees)
{
    const double angle = degrees * std::numbers::pi / 180;
    return {centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)};
}

double degreesOf(Point from, Point to)
{
    return std::atan2(to.y - from.y, to.x - from.x) * 180 / std::numbers::pi;
}

/// Bulge of the arc about `centre` from one point to another; `turn` is 1 for counter-clockwise, -1
/// for clockwise.
double bulge(Point centre, Point from, Point to, int turn)
{
    double sweep = turn * (degreesOf(centre, to) - degreesOf(centre, from));
    while (sweep <= 0) sweep += 360;
    return turn * std::tan(sweep * std::numbers::pi / 720);
}

void group(int code, const std::string& value)
{
    std::printf("%d\n%s\n", code, value.c_str());
}

void group(int code, double value)
{
    std::printf("%d\n%.9f\n", code, value);
}

void place(int code, Point point)
{
    group(code, point.x);
    group(code + 10, point.y);
    group(code + 20, 0.0);
}

void begin(const char* kind, const char* layer)
{
    group(0, kind);
    group(8, layer);
}

void line(const char* layer, Point from, Point to)
{
    begin("LINE", layer);
    place(10, from);
    place(11, to);
}

void circle(const char* layer, Point centre, double radius)
{
    begin("CIRCLE", layer);
    place(10, centre);
    group(40, radius);
}

void arc(const char* layer, Point centre, double radius, double fromDegrees, double toDegrees)
{
    begin("ARC", layer);
    place(10, centre);
    group(40, radius);
    group(50, fromDegrees);
    group(51, toDegrees);
}

void chain(const char* layer, const Chain& vertices, bool closed)
{
    begin("POLYLINE", layer);
    group(66, "1");
    place(10, {});
    group(70, closed ? "1" : "0");
    for (const Vertex& vertex : vertices) {
        begin("VERTEX", layer);
        place(10, vertex.at);
        if (vertex.bulge != 0) group(42, vertex.bulge);
    }
    begin("SEQEND", layer);
}

void label(Point at, double height, double degrees, const char* text)
{
    begin("TEXT", "LABELS");
    place(10, at);
    group(40, height);
    group(1, text);
    group(50, degrees);
}

/// A rectangle about its centre, turned.
void building(Point centre, double width, double depth, double degrees)
{
    Chain corners;
    for (const auto& [u, v] : {Point{-1, -1}, {1, -1}, {1, 1}, {-1, 1}}) {
        const Point along = polar(centre, u * width / 2, degrees);
        corners.push_back({polar(along, v * depth / 2, degrees + 90)});
    }
    chain("BUILDINGS", corners, true);
}

/// A house with a wing, seen from its lower left corner.
void houseWithWing(Point corner, double width, double depth, double wing)
{
    const auto [x, y] = corner;
    chain("BUILDINGS",
          {{{x, y}},
           {{x + width, y}},
           {{x + width, y + depth}},
           {{x + width - wing, y + depth}},
           {{x + width - wing, y + depth * 0.6}},
           {{x, y + depth * 0.6}}},
          true);
}

void trees(const std::vector<Point>& places, double radius)
{
    double size = radius;
    for (const Point& at : places) {
        circle("TREES", at, size);
        size = size > radius ? radius * 0.8 : size + radius * 0.15;
    }
}

// ------------------------------------------------------------------------------------------ roads

constexpr double kWidth = 320;
constexpr double kHeight = 220;
constexpr Point kRoundabout{130, 105};
constexpr double kRing = 17;     // outer edge of the roundabout
constexpr double kHalfRoad = 4;  // half the width of a road
constexpr double kFillet = 10;

// The east road turns left about this centre, by 40 degrees.
constexpr Point kCurve{200, 195};
constexpr double kCurveEnd = -50;

// The turning head and its road.
constexpr Point kHead{62, 48};
constexpr double kHeadRadius = 10;
constexpr double kHalfLane = 3;
constexpr double kHeadFillet = 8;
constexpr double kLaneFillet = 6;

/// From the road that comes in over the roundabout's edge to the next road, seen from the block
/// between them: fillet, ring, fillet. `quarter` is the block's direction in quarter turns from the
/// north-east one.
Chain corner(int quarter)
{
    const double reach = kRing + kFillet;
    const double away = kHalfRoad + kFillet;
    const double along = std::sqrt(reach * reach - away * away);
    const auto turned = [&](double u, double v) {
        const double angle = quarter * 90.0;
        return polar(polar(kRoundabout, u, angle), v, angle + 90);
    };
    const Point first = turned(along, away);   // centre of the fillet on the first road
    const Point second = turned(away, along);  // and on the second
    const double share = kRing / reach;
    const Point a = turned(along, kHalfRoad);
    const Point b = turned(along * share, away * share);
    const Point c = turned(away * share, along * share);
    const Point d = turned(kHalfRoad, along);
    return {{a, bulge(first, a, b, -1)},
            {b, bulge(kRoundabout, b, c, 1)},
            {c, bulge(second, c, d, -1)},
            {d}};
}

/// One edge of the curved road from the roundabout's fillet on, `side` beside its axis (positive on
/// the left), to where it leaves the drawing: at the right border, or at the top one.
Chain curvedEdge(double side)
{
    const double radius = kCurve.y - kRoundabout.y - side;
    const Point start{kCurve.x, kRoundabout.y + side};
    const Point end = polar(kCurve, radius, kCurveEnd);
    const double slope = std::tan((kCurveEnd + 90) * std::numbers::pi / 180);
    Point out{kWidth, end.y + (kWidth - end.x) * slope};
    if (out.y > kHeight) out = {end.x + (kHeight - end.y) / slope, kHeight};
    return {{start, bulge(kCurve, start, end, 1)}, {end}, {out}};
}

Chain joined(Chain first, const Chain& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

Chain reversed(const Chain& chain)
{
    Chain result;
    for (std::size_t i = chain.size(); i-- > 0;)
        result.push_back({chain[i].at, i > 0 ? -chain[i - 1].bulge : 0.0});
    return result;
}

/// The edge of the lane with the turning head, from the south road and back to it.
Chain lane()
{
    const double reach = kHeadRadius + kHeadFillet;
    const double away = kHalfLane + kHeadFillet;
    const double along = std::sqrt(reach * reach - away * away);
    const double share = kHeadRadius / reach;
    const double roadEdge = kRoundabout.x - kHalfRoad;
    Chain upper;
    const auto side = [&](int sign) {
        const Point laneFillet{roadEdge - kLaneFillet, kHead.y + sign * (kHalfLane + kLaneFillet)};
        const Point headFillet{kHead.x + along, kHead.y + sign * away};
        const Point a{roadEdge, laneFillet.y};
        const Point b{laneFillet.x, kHead.y + sign * kHalfLane};
        const Point c{headFillet.x, b.y};
        const Point d{kHead.x + along * share, kHead.y + sign * away * share};
        return Chain{
            {a, bulge(laneFillet, a, b, -sign)}, {b}, {c, bulge(headFillet, c, d, -sign)}, {d}};
    };
    upper = side(1);
    const Chain lower = reversed(side(-1));
    upper.back().bulge = bulge(kHead, upper.back().at, lower.front().at, 1);
    return joined(upper, lower);
}

void roads()
{
    const double right = kRoundabout.x + kHalfRoad;
    const double left = kRoundabout.x - kHalfRoad;
    const double up = kRoundabout.y + kHalfRoad;
    const double down = kRoundabout.y - kHalfRoad;

    chain("ROADS", joined(joined(reversed(curvedEdge(kHalfRoad)), corner(0)), {{{right, kHeight}}}),
          false);
    chain("ROADS", joined(joined({{{left, kHeight}}}, corner(1)), {{{0, up}}}), false);
    chain("ROADS", joined(joined(joined({{{0, down}}}, corner(2)), lane()), {{{left, 0}}}), false);
    chain("ROADS", joined(joined({{{right, 0}}}, corner(3)), curvedEdge(-kHalfRoad)), false);
    circle("ROADS", kRoundabout, 8);
    circle("ROADS", kRoundabout, 5);

    label({20, 103.5}, 3, 0, "West Road");
    label({131, 190}, 3, 90, "North Road");
    label({160, 103.5}, 3, 0, "Orchard Road");
    label({86, 47}, 2.2, 0, "Mason's Yard");
}

// ---------------------------------------------------------------------------------------- parcels

/// South-west: a row along West Road, and parcels around the turning head.
void turningHeadBlock()
{
    line("PARCELS", {0, 76}, {126, 76});
    for (const double x : {18.0, 58.0, 78.0, 96.0}) line("PARCELS", {x, 76}, {x, 101});
    line("PARCELS", {38, 73.4}, {38, 101});  // drawn too far
    line("PARCELS", {58, 101}, {58, 76});    // drawn twice

    line("PARCELS", {0, 22}, {126, 22});
    line("PARCELS", {88, 51}, {88, 76});
    line("PARCELS", {107, 51}, {107, 76});
    line("PARCELS", {88, 45}, {88, 22});
    line("PARCELS", {107, 45}, {107, 22.7});  // stops short

    line("PARCELS", polar(kHead, kHeadRadius, 75), {70, 76});
    line("PARCELS", polar(kHead, kHeadRadius, 125), {40, 76});
    line("PARCELS", polar(kHead, kHeadRadius, 165), {0, 62});
    line("PARCELS", polar(kHead, kHeadRadius, 205), {0, 30});
    line("PARCELS", polar(kHead, kHeadRadius, 250), {48, 22});
    line("PARCELS", polar(kHead, kHeadRadius, 292), {72, 22});

    building({9, 90}, 9, 8, 0);
    houseWithWing({22, 84}, 12, 11, 5);
    building({48, 90}, 11, 8, 0);
    houseWithWing({62, 84}, 12, 11, 5);
    building({87, 90}, 9, 9, 0);
    building({111, 84}, 12, 7, -30);
    building({97.5, 64}, 10, 8, 0);
    houseWithWing({110, 57}, 11, 12, 5);
    building({78, 66}, 9, 9, 0);
    building({56, 68}, 11, 7, 0);
    building({26, 66}, 13, 8, -20);
    building({22, 46}, 12, 8, 5);
    building({30, 28.5}, 13, 6, 20);
    building({59.5, 29}, 8, 7, 0);
    building({79, 32}, 8, 9, 0);
    building({98, 33}, 9, 10, 0);
    building({115, 32}, 8, 9, 0);
    trees({{8, 10}, {20, 7}, {31, 12}, {45, 9}, {58, 12}, {71, 8}, {84, 12}, {97, 9}, {112, 11}},
          3);
}

/// North-west: a row along West Road, behind it a garden with a round place.
void gardenBlock()
{
    line("PARCELS", {0, 143}, {126, 143});
    for (const double x : {20.0, 40.0, 60.0, 80.0, 102.0}) line("PARCELS", {x, 109}, {x, 143});
    for (const double x : {10.0, 50.0, 90.0}) building({x, 122}, 11, 9, 0);
    houseWithWing({24, 117}, 12, 12, 5);
    houseWithWing({64, 117}, 12, 12, 5);
    building({114, 130}, 11, 9, 20);
    for (const double x : {4.0, 44.0, 84.0}) {  // drives
        line("PATHS", {x + 2, 109}, {x + 2, 117.5});
        line("PATHS", {x + 5, 109}, {x + 5, 117.5});
    }

    const Point middle{63, 182};
    const double place = 14;
    circle("PATHS", middle, place);
    circle("WATER", middle, 5);
    const double half = 1.5;
    const double reach = std::sqrt(place * place - half * half);
    for (const double side : {-half, half}) {
        line("PATHS", {middle.x + side, middle.y + reach}, {middle.x + side, kHeight});
        line("PATHS", {middle.x + side, middle.y - reach}, {middle.x + side, 143});
        line("PATHS", {middle.x + reach, middle.y + side}, {126, middle.y + side});
        line("PATHS", {middle.x - reach, middle.y + side}, {0, middle.y + side});
    }
    arc("PATHS", middle, 30, 10, 80);
    arc("PATHS", middle, 30, 100, 170);
    arc("PATHS", middle, 30, 190, 260);
    arc("PATHS", middle, 30, 280, 350);
    for (const double degrees : {10.0, 80.0, 100.0, 170.0, 190.0, 260.0, 280.0, 350.0})
        line("PATHS", polar(middle, 22, degrees), polar(middle, 30, degrees));
    for (const double degrees : {10.0, 100.0, 190.0, 280.0})
        arc("PATHS", middle, 22, degrees, degrees + 70);
    trees({{14, 206},
           {28, 212},
           {100, 208},
           {114, 200},
           {112, 160},
           {101, 152},
           {16, 156},
           {30, 150}},
          3.2);
}

/// North-east: parcels along the curve, behind them a track and a school.
void curveBlock()
{
    const double depth = 34;
    Chain back = curvedEdge(kHalfRoad + depth);
    back.insert(back.begin(), Vertex{{134, kRoundabout.y + kHalfRoad + depth}});
    chain("PARCELS", back, false);
    const double road = kCurve.y - kRoundabout.y - kHalfRoad;
    for (const double x : {160.0, 180.0, 200.0}) line("PARCELS", {x, 109}, {x, 143});
    for (const double degrees : {-76.0, -63.0, kCurveEnd})
        line("PARCELS", polar(kCurve, road, degrees), polar(kCurve, road - depth, degrees));
    const Point frontEnd = polar(kCurve, road, kCurveEnd);
    const double heading = kCurveEnd + 90;
    for (const double run : {24.0, 48.0}) {
        const Point front = polar(frontEnd, run, heading);
        line("PARCELS", front, polar(front, depth, heading + 90));
    }
    building({147, 130}, 13, 9, 0);
    houseWithWing({164, 120}, 12, 13, 5);
    building({190, 127}, 11, 9, 0);
    for (const double degrees : {-83.0, -69.5, -56.5})
        building(polar(kCurve, 71, degrees), 10, 9, degrees + 90);
    for (const double run : {12.0, 36.0, 60.0})
        building(polar(polar(frontEnd, run, heading), 17, heading + 90), 12, 9, heading);

    const Point track{184, 184};
    for (const double radius : {16.0, 11.0}) {
        const double half = 22;
        chain("PATHS",
              {{{track.x - half, track.y - radius}},
               {{track.x + half, track.y - radius}, 1},
               {{track.x + half, track.y + radius}},
               {{track.x - half, track.y + radius}, 1}},
              true);
    }
    line("PATHS", {184, 173}, {184, 195});
    circle("PATHS", track, 5);
    chain("BUILDINGS",
          {{{236, 180}},
           {{248, 190}},
           {{244, 195}},
           {{256, 205}},
           {{260, 200}},
           {{272, 210}},
           {{264, 216}, 0.3},
           {{240, 206}, 0.3},
           {{229, 188}}},
          true);
    line("PARCELS", {214, 220}, {214, 207});  // a fence that leads nowhere
    trees({{142, 150}, {142, 162}, {142, 174}, {142, 206}, {154, 212}, {170, 211}}, 3);
}

/// South-east: a shop with its car park, and a pond.
void pondBlock()
{
    line("PARCELS", {200, 0}, {200, 101});
    chain("BUILDINGS",
          {{{144, 12}}, {{190, 12}}, {{190, 34}, 0.414213562}, {{182, 42}}, {{144, 42}}}, true);
    chain("ROADS", {{{140, 48}}, {{194, 48}}, {{194, 86}}, {{140, 86}}}, true);
    for (int stall = 0; stall <= 18; ++stall) {
        const double x = 142.5 + 2.75 * stall;
        line("ROADS", {x, 81}, {x, 86});
        line("ROADS", {x, 48}, {x, 53});
    }
    line("ROADS", {142.5, 81}, {192, 81});
    line("ROADS", {142.5, 53}, {192, 53});
    for (const double x : {152.0, 172.0})
        chain("ROADS", {{{x, 65}}, {{x + 10, 65}, 1}, {{x + 10, 69}}, {{x, 69}, 1}}, true);
    line("ROADS", {163, 86}, {163, 101});
    line("ROADS", {171, 86}, {171, 101});

    chain("WATER",
          {{{238, 40}, 0.42},
           {{268, 30}, 0.55},
           {{290, 58}, 0.5},
           {{262, 74}, -0.25},
           {{244, 66}, 0.6}},
          true);
    circle("WATER", {266, 54}, 6);
    chain(
        "PATHS",
        {{{200, 24}, 0.2}, {{262, 18}, 0.414213562}, {{304, 60}}, {{304, 86}, -0.3}, {{320, 108}}},
        false);
    chain("PATHS", {{{220, 103.3}, 0.25}, {{229, 74}, -0.2}, {{228, 54}}}, false);  // ends nowhere
    trees({{212, 60},
           {212, 84},
           {210, 40},
           {298, 20},
           {310, 40},
           {284, 92},
           {294, 112},
           {250, 94},
           {266, 102},
           {312, 130},
           {214, 9},
           {236, 7},
           {278, 9}},
          3.4);
}

void header()
{
    group(0, "SECTION");
    group(2, "HEADER");
    group(9, "$ACADVER");
    group(1, "AC1009");
    group(9, "$EXTMIN");
    place(10, {0, 0});
    group(9, "$EXTMAX");
    place(10, {kWidth, kHeight});
    group(0, "ENDSEC");
    group(0, "SECTION");
    group(2, "TABLES");
    group(0, "TABLE");
    group(2, "LAYER");
    group(70, "8");
    const std::vector<std::pair<const char*, const char*>> layers = {
        {"BOUNDARY", "7"}, {"ROADS", "8"}, {"PARCELS", "3"}, {"BUILDINGS", "1"},
        {"PATHS", "30"},   {"WATER", "5"}, {"TREES", "92"},  {"LABELS", "7"}};
    for (const auto& [name, colour] : layers) {
        group(0, "LAYER");
        group(2, name);
        group(70, "0");
        group(62, colour);
        group(6, "CONTINUOUS");
    }
    group(0, "ENDTAB");
    group(0, "ENDSEC");
}

}  // namespace

int main()
{
    header();
    group(0, "SECTION");
    group(2, "ENTITIES");
    chain("BOUNDARY", {{{0, 0}}, {{kWidth, 0}}, {{kWidth, kHeight}}, {{0, kHeight}}}, true);
    roads();
    turningHeadBlock();
    gardenBlock();
    curveBlock();
    pondBlock();
    group(0, "ENDSEC");
    group(0, "EOF");
}
