// Draws examples/contours.dxf, the sample for curves: `cmake --build BUILD --target contours`.
//
// A made-up valley of 400 m by 280 m as if digitised by hand from a map: contour lines every 5 m
// with their elevations, a lake, a river that loses height on its way. The points lie far apart,
// rounded to decimetres, so that the lines need smoothing.

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr double kWidth = 400;
constexpr double kHeight = 280;

struct Point {
    double x = 0;
    double y = 0;
};

double hump(Point p, Point top, double height, double rx, double ry)
{
    const double u = (p.x - top.x) / rx;
    const double v = (p.y - top.y) / ry;
    return height * std::exp(-u * u - v * v);
}

/// Ground level: a slope to the south-east with two hills, a shoulder and a hollow.
double ground(Point p)
{
    return 118 - 0.055 * p.x + 0.045 * p.y + hump(p, {105, 185}, 42, 62, 48) +
           hump(p, {285, 195}, 33, 70, 40) + hump(p, {215, 60}, 14, 90, 30) -
           hump(p, {75, 60}, 17, 52, 36);
}

Point gradient(Point p)
{
    constexpr double kStep = 1e-3;
    return {(ground({p.x + kStep, p.y}) - ground({p.x - kStep, p.y})) / (2 * kStep),
            (ground({p.x, p.y + kStep}) - ground({p.x, p.y - kStep})) / (2 * kStep)};
}

/// The point of that level on the steepest line through p.
Point onLevel(Point p, double level)
{
    for (int i = 0; i < 20; ++i) {
        const Point g = gradient(p);
        const double share = (level - ground(p)) / (g.x * g.x + g.y * g.y);
        p = {p.x + share * g.x, p.y + share * g.y};
    }
    return p;
}

bool isInside(Point p)
{
    return p.x >= 0 && p.x <= kWidth && p.y >= 0 && p.y <= kHeight;
}

double rounded(double value)
{
    return std::round(value * 10) / 10;
}

void group(int code, const std::string& value)
{
    std::printf("%d\n%s\n", code, value.c_str());
}

void place(Point p, double z)
{
    std::printf("10\n%.1f\n20\n%.1f\n30\n%.1f\n", rounded(p.x), rounded(p.y), rounded(z));
}

struct Trace {
    std::vector<Point> points;
    bool closed = false;
};

/// Follows a level, higher ground on the left, to the border or back to the start. The steps vary,
/// as a hand's do.
Trace follow(Point start, double level)
{
    constexpr double kShortStep = 0.5;
    constexpr int kMostSteps = 4000;
    Trace trace{{start}, false};
    Point p = start;
    double run = 0;
    double travelled = 0;
    for (int i = 0; i < kMostSteps; ++i) {
        const Point g = gradient(p);
        const double size = std::hypot(g.x, g.y);
        const Point next =
            onLevel({p.x + kShortStep * g.y / size, p.y - kShortStep * g.x / size}, level);
        const bool isAtEnd = !isInside(next);
        p = next;
        run += kShortStep;
        travelled += kShortStep;
        const double nearStart = std::hypot(p.x - start.x, p.y - start.y);
        if (travelled > 20 && nearStart < 8) {
            trace.closed = true;
            break;
        }
        const double wanted = 17 + 7 * std::sin(1.9 * static_cast<double>(trace.points.size()));
        if (run < wanted && !isAtEnd) continue;
        trace.points.push_back(p);
        run = 0;
        if (isAtEnd) break;
    }
    return trace;
}

void contour(const char* layer, const Trace& trace, double level)
{
    if (trace.points.size() < 3) return;
    group(0, "POLYLINE");
    group(8, layer);
    group(66, "1");
    place({}, level);
    group(70, trace.closed ? "1" : "0");
    for (const Point& p : trace.points) {
        group(0, "VERTEX");
        group(8, layer);
        place(p, level);
    }
    group(0, "SEQEND");
    group(8, layer);
}

/// All lines of a level: those that enter over the border, then those around the tops.
void contours(double level)
{
    const bool isIndex = std::fmod(level, 25) == 0;
    const char* layer = isIndex ? "CONTOURS-INDEX" : "CONTOURS";
    const std::vector<Point> corners = {{0, 0}, {kWidth, 0}, {kWidth, kHeight}, {0, kHeight}};
    for (int side = 0; side < 4; ++side) {
        const Point a = corners[static_cast<std::size_t>(side)];
        const Point b = corners[static_cast<std::size_t>((side + 1) % 4)];
        constexpr int kSteps = 400;
        const auto at = [&](int i) {
            const double t = static_cast<double>(i) / kSteps;
            return Point{a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)};
        };
        // The border runs counter-clockwise. Higher ground lies on the left where it falls along the border.
        for (int i = 0; i < kSteps; ++i)
            if (ground(at(i)) >= level && ground(at(i + 1)) < level)
                contour(layer, follow(at(i), level), level);
    }
    for (const Point& top : {Point{105, 185}, {285, 195}}) {
        Point p = top;
        while (isInside(p) && ground(p) > level) p.x += 0.5;
        const Trace trace = isInside(p) ? follow(onLevel(p, level), level) : Trace{};
        if (trace.closed) contour(layer, trace, level);
    }
}

/// Down the valley between the hills, meandering; heights fall with the ground, never rise.
void river()
{
    group(0, "POLYLINE");
    group(8, "RIVER");
    group(66, "1");
    place({}, 0);
    group(70, "8");
    double z = 1e9;
    int i = 0;
    for (double y = kHeight; y > 125; y -= 11 + 4 * std::sin(2.3 * i), ++i) {
        const Point p{193 + 0.06 * (kHeight - y) + 9 * std::sin(y / 17), y};
        z = std::fmin(z - 0.2, ground(p));
        group(0, "VERTEX");
        group(8, "RIVER");
        place(p, z);
        group(70, "32");
    }
    for (double x = 226; x < 405; x += 16 + 5 * std::sin(1.7 * i), ++i) {
        const Point p{x, 104 - 0.12 * (x - 226) + 8 * std::sin(x / 14)};
        z = std::fmin(z - 0.2, ground(p));
        group(0, "VERTEX");
        group(8, "RIVER");
        place(p, z);
        group(70, "32");
    }
    group(0, "SEQEND");
    group(8, "RIVER");
}

}  // namespace

int main()
{
    group(0, "SECTION");
    group(2, "ENTITIES");
    river();
    Point shore{75, 60};
    const double water = 103;
    while (ground(shore) < water) shore.x += 0.5;
    contour("LAKE", follow(onLevel(shore, water), water), water);
    for (double level = 90; level <= 175; level += 5) contours(level);
    group(0, "ENDSEC");
    group(0, "EOF");
}
