// Draws examples/road_axis.dxf, a sample for stations: `cmake --build BUILD --target road_axis`.
//
// A made-up road in survey coordinates: its axis leaves a junction eastwards, climbs through two
// bends of opposite sense and ends in a loop of three quarters of a circle; a side road branches
// off. Edges 3.5 m beside the axis, on a layer of their own.

#include <cmath>
#include <cstdio>
#include <numbers>
#include <vector>

namespace {

constexpr double kHalfRoad = 3.5;

struct Vertex {
    double x = 0;
    double y = 0;
    double bulge = 0;
};

/// A straight, or an arc when the radius is not 0.
struct Element {
    double length = 0;
    double radius = 0;  ///< positive where the road turns left
};

/// The road `side` to the left of an axis that starts at (x, y) in that direction (radians).
std::vector<Vertex> chain(double x, double y, double direction, const std::vector<Element>& road,
                          double side)
{
    std::vector<Vertex> vertices;
    const auto add = [&](double bulge) {
        vertices.push_back({x - side * std::sin(direction), y + side * std::cos(direction), bulge});
    };
    for (const Element& element : road) {
        const double turn = element.radius == 0 ? 0.0 : element.length / element.radius;
        add(std::tan(turn / 4));
        const double chord = turn == 0 ? element.length : 2 * element.radius * std::sin(turn / 2);
        x += chord * std::cos(direction + turn / 2);
        y += chord * std::sin(direction + turn / 2);
        direction += turn;
    }
    add(0);
    return vertices;
}

void polyline(const char* layer, const std::vector<Vertex>& vertices)
{
    std::printf("0\nPOLYLINE\n8\n%s\n66\n1\n10\n0.0\n20\n0.0\n30\n0.0\n70\n0\n", layer);
    for (const Vertex& v : vertices) {
        std::printf("0\nVERTEX\n8\n%s\n10\n%.9f\n20\n%.9f\n30\n0.0\n", layer, v.x, v.y);
        if (v.bulge != 0) std::printf("42\n%.12f\n", v.bulge);
    }
    std::printf("0\nSEQEND\n8\n%s\n", layer);
}

void road(double x, double y, double direction, const std::vector<Element>& elements)
{
    polyline("AXIS", chain(x, y, direction, elements, 0));
    for (const double side : {kHalfRoad, -kHalfRoad})
        polyline("EDGES", chain(x, y, direction, elements, side));
}

}  // namespace

int main()
{
    const double pi = std::numbers::pi;
    std::printf(
        "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1009\n0\nENDSEC\n0\nSECTION\n2\nENTITIES\n");
    road(500100, 4000100, 0,
         {{60}, {80 * pi / 3, 80}, {45}, {50 * pi / 2, -50}, {40}, {24 * 1.5 * pi, 24}, {8}});
    road(500125, 4000100 + kHalfRoad, pi / 2, {{12}, {20 * pi / 3, 20}, {30}});
    std::printf("0\nENDSEC\n0\nEOF\n");
}
