// Draws docs/images/offsets.svg, a sheet of figures with their parallels, for the eye to check:
// `cmake --build BUILD --target offset_sheet`.
//
// Of every figure (grey) the raw parallels that IcommonFunc::offsetBulgePolyline makes (thin, red)
// and, over them, what `calcora offset` keeps of those (blue outside or to the left, green inside or
// to the right).

#include <array>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <random>
#include <string>
#include <vector>

#include "app/figures.h"
#include "app/parallels.h"
#include "app/svg_writer.h"
#include "app/user_error.h"

namespace {

using namespace calcora::app;
using tav::Point2DF;

constexpr int kColumns = 6;
constexpr int kRows = 4;
constexpr double kCellWidth = 200;
constexpr double kCellHeight = 225;
constexpr double kMargin = 12;
constexpr double kCaption = 20;

struct Sample {
    const char* caption;
    Figure figure;
    std::vector<double> distances;
};

struct Vertex {
    double x = 0;
    double y = 0;
    double bulge = 0;
};

Figure figure(bool closed, const std::vector<Vertex>& vertices)
{
    Figure result;
    result.closed = closed;
    for (const Vertex& vertex : vertices) {
        result.points.append({vertex.x, vertex.y});
        result.bulges.append(vertex.bulge);
    }
    return result;
}

Figure open(const std::vector<Vertex>& vertices)
{
    return figure(false, vertices);
}

Figure closed(const std::vector<Vertex>& vertices)
{
    return figure(true, vertices);
}

/// Bulge of an arc of so many degrees.
double arc(double degrees)
{
    return std::tan(degrees * std::numbers::pi / 720);
}

Vertex polar(double degrees, double radius, double bulge = 0)
{
    const double angle = degrees * std::numbers::pi / 180;
    return {radius * std::cos(angle), radius * std::sin(angle), bulge};
}

Figure roundedRectangle()
{
    const double q = arc(90);
    return closed(
        {{2, 0}, {14, 0, q}, {16, 2}, {16, 8, q}, {14, 10}, {2, 10, q}, {0, 8}, {0, 2, q}});
}

Figure star()
{
    std::vector<Vertex> vertices;
    for (int i = 0; i < 10; ++i) vertices.push_back(polar(90 + i * 36, i % 2 == 0 ? 10 : 4));
    return closed(vertices);
}

Figure cloud()
{
    std::vector<Vertex> vertices;
    for (int i = 0; i < 9; ++i) vertices.push_back(polar(i * 40, 8, arc(i % 2 == 0 ? 180 : 140)));
    return closed(vertices);
}

Figure gear()
{
    std::vector<Vertex> vertices;
    for (int i = 0; i < 12; ++i) {
        vertices.push_back(polar(i * 30 - 5, 10, arc(10)));
        vertices.push_back(polar(i * 30 + 5, 10));
        vertices.push_back(polar(i * 30 + 8, 7, arc(14)));
        vertices.push_back(polar(i * 30 + 22, 7));
    }
    return closed(vertices);
}

Figure spiral()
{
    std::vector<Vertex> vertices;
    for (int i = 0; i < 7; ++i) {
        const double side = i % 2 == 0 ? 1 : -1;
        vertices.push_back({side * (2 + i) - 0.5, 0, 1});
    }
    vertices.back().bulge = 0;
    return open(vertices);
}

/// A footprint with slots, measured to the centimetre or so.
Figure slottedPlate()
{
    std::vector<Vertex> vertices = {{0, 10}, {0, 0}};
    for (int i = 0; i < 4; ++i) {
        const double x = 3 + 4 * i;
        for (const Vertex& v : {Vertex{x, 0}, {x, 4}, {x + 1, 4}, {x + 1, 0}})
            vertices.push_back(v);
    }
    vertices.push_back({19, 0});
    vertices.push_back({19, 10});
    std::mt19937 random(1);
    for (Vertex& vertex : vertices) {
        vertex.x += static_cast<double>(random() % 1001) * 2e-5 - 0.01;
        vertex.y += static_cast<double>(random() % 1001) * 2e-5 - 0.01;
    }
    return closed(vertices);
}

Figure shore()
{
    std::vector<Vertex> vertices;
    for (int i = 0; i < 180; ++i) {
        const double t = i * std::numbers::pi / 90;
        vertices.push_back(polar(
            i * 2, 9 + 2.6 * std::sin(3 * t) + 1.4 * std::sin(5 * t + 1) + 0.7 * std::sin(11 * t)));
    }
    return closed(vertices);
}

Figure surveyParcel()
{
    Figure parcel =
        closed({{0, 0}, {12, 1, arc(60)}, {17, 8}, {11, 12, arc(-80)}, {3, 11}, {2, 6}});
    for (Point2DF& point : parcel.points) point = point + Point2DF(500000.123, 4000000.456);
    return parcel;
}

std::vector<Sample> samples()
{
    const double q = arc(90);
    return {
        {"rectangle", closed({{0, 0}, {16, 0}, {16, 8}, {0, 8}}), {-3.5, -2, -1, 1, 2}},
        {"circle of two arcs", closed({{-5, 0, 1}, {5, 0, 1}}), {-4, -2.5, -1, 1, 2}},
        {"disc of three arcs, clockwise",
         closed({polar(0, 5, -arc(120)), polar(240, 5, -arc(120)), polar(120, 5, -arc(120))}),
         {-4, -2, 2}},
        {"stadium", closed({{0, 0}, {10, 0, 1}, {10, 6}, {0, 6, 1}}), {-2.5, -1.2, 1.2}},
        {"L", closed({{0, 0}, {14, 0}, {14, 5}, {5, 5}, {5, 12}, {0, 12}}), {-2.2, -1.2, 1.2, 2.4}},
        {"S",
         closed({{0, 0},
                 {12, 0},
                 {12, 9},
                 {4, 9},
                 {4, 11},
                 {12, 11},
                 {12, 15},
                 {0, 15},
                 {0, 6},
                 {8, 6},
                 {8, 4},
                 {0, 4}}),
         {-1.2, 0.7, 1.4}},
        {"S of two arcs, open", open({{0, 0, 1}, {7, 0, -1}, {14, 0}}), {-3, -1.5, 1.5, 3}},
        {"road axis, tangent arcs",
         open({{-8, 0}, {0, 0, q}, {5, 5}, {5, 9, -q}, {8, 12}, {16, 12}}),
         {-4, -2, 2, 4}},
        {"rounded, arcs vanish", roundedRectangle(), {-4.5, -3, -2, -1, 1, 2}},
        {"half disc", closed({{-8, 0}, {8, 0, 1}}), {-3.8, -3, -1.5, 1}},
        {"dents", closed({{-8, 0, -q}, {0, -8, -q}, {8, 0, -q}, {0, 8, -q}}), {-1, 1, 3, 6}},
        {"neck parts",
         closed({{0, 0},
                 {8, 0},
                 {8, 3},
                 {14, 3},
                 {14, 0},
                 {22, 0},
                 {22, 8},
                 {14, 8},
                 {14, 5},
                 {8, 5},
                 {8, 8},
                 {0, 8}}),
         {-0.8, -1.5, -2.5, 1.5}},
        {"bay closes",
         closed({{0, 0},
                 {12, 0},
                 {12, 5.2},
                 {10, 5.2},
                 {10, 2},
                 {2, 2},
                 {2, 10},
                 {10, 10},
                 {10, 6.8},
                 {12, 6.8},
                 {12, 12},
                 {0, 12}}),
         {0.5, 1.2, 2.4}},
        {"pointed jaws",
         closed({{0, 0}, {12, 0}, {10, 5}, {2, 2}, {2, 10}, {10, 7}, {12, 12}, {0, 12}}),
         {-0.7, 0.8, 1.2, 1.8}},
        {"waist of points",
         closed({{0, 0}, {18, 0}, {10.2, 6}, {18, 12}, {0, 12}, {7.8, 6}}),
         {-0.7, -1.1, -2}},
        {"star", star(), {-2, -1, 1, 2}},
        {"cloud", cloud(), {-3, -1, 1, 2}},
        {"gear", gear(), {-2, -0.6, 0.6, 1.5}},
        {"slots, off by 1 cm", slottedPlate(), {-1.2, -0.4, 0.4, 1.2}},
        {"zigzag, open", open({{0, 0}, {4, 9}, {6, 1}, {9, 8}, {10, 2}, {16, 4}}), {-1.2, 1.2}},
        {"spiral", spiral(), {-0.6, 0.6, 1.6}},
        {"hook past its end",
         open({{0, 0}, {14, 0, 1}, {14, 8}, {5, 8}, {5, 3.5}}),
         {-1.5, 1.5, 2.5}},
        {"shore of 180 straights", shore(), {-3, -1.5, 1.5, 3}},
        {"parcel at 500000, 4000000", surveyParcel(), {-2.4, -1.2, 1.2}},
    };
}

/// Moves figures from where they are to a cell of the sheet.
class Cell {
public:
    Cell(int number, const Box& content)
        : middle_((content.minX + content.maxX) / 2, (content.minY + content.maxY) / 2)
    {
        scale_ = std::min((kCellWidth - 2 * kMargin) / content.width(),
                          (kCellHeight - 2 * kMargin - kCaption) / content.height());
        corner_ = {number % kColumns * kCellWidth, (kRows - 1 - number / kColumns) * kCellHeight};
    }
    Figure placed(Figure figure) const
    {
        const Point2DF centre =
            corner_ + Point2DF(kCellWidth / 2, kCaption + (kCellHeight - kCaption) / 2);
        for (Point2DF& point : figure.points) point = centre + scale_ * (point - middle_);
        return figure;
    }
    Point2DF captionPlace() const { return corner_ + Point2DF(kMargin, kMargin); }

private:
    Point2DF middle_;
    Point2DF corner_;
    double scale_ = 1;
};

struct Drawn {
    Figure given;
    std::vector<Figure> raw;
    std::array<std::vector<Figure>, 2> parallels;  ///< of negative distances, of positive ones
    Point2DF captionPlace;
};

Drawn drawn(const Host& host, const Sample& sample, int number)
{
    const auto common = host.create<IcommonFunc>();
    Interrupt interrupt;
    const Parallels parallels(host, interrupt, ExactScale());
    const Figure& given = sample.figure;
    Points points = given.points;
    if (given.closed) points.append(Point2DF(given.points.first()));
    const bool outsideIsRight =
        given.closed && !common->hasPositiveBulgeArea(given.points, given.bulges);

    Drawn result{given, {}, {}, {}};
    Box content = figureBox(given.points, given.bulges, given.closed);
    for (const double distance : sample.distances) {
        Figure raw;
        if (common->offsetBulgePolyline(points, given.bulges, outsideIsRight ? -distance : distance,
                                        raw.points, raw.bulges))
            result.raw.push_back(raw);
        for (const Figure& parallel : parallels.of(given, distance)) {
            content.add(figureBox(parallel.points, parallel.bulges, parallel.closed));
            result.parallels[distance > 0 ? 1 : 0].push_back(parallel);
        }
    }
    const Cell cell(number, content);
    result.given = cell.placed(given);
    for (Figure& raw : result.raw) raw = cell.placed(raw);
    for (std::vector<Figure>& side : result.parallels)
        for (Figure& parallel : side) parallel = cell.placed(parallel);
    result.captionPlace = cell.captionPlace();
    return result;
}

void drawSheet(const std::string& path)
{
    const Host host("");
    const std::vector<Sample> all = samples();
    std::vector<Drawn> cells;
    for (std::size_t i = 0; i < all.size(); ++i)
        cells.push_back(drawn(host, all[i], static_cast<int>(i)));

    OutputFile out(path);
    SvgPicture picture(out, {0, 0, kColumns * kCellWidth, kRows * kCellHeight},
                       "Figures and their parallels");
    const auto group = [&](const std::string& name, const SvgStyle& style, const auto& figuresOf) {
        picture.beginGroup(name, style);
        for (const Drawn& cell : cells)
            for (const Figure& each : figuresOf(cell))
                picture.figure(each.points, each.bulges, each.closed);
        picture.endGroup();
    };
    group("raw", {.stroke = "#ef9a9a", .width = 0.6}, [](const Drawn& cell) { return cell.raw; });
    group("given", {.stroke = "#616161", .width = 1.6},
          [](const Drawn& cell) { return std::vector<Figure>{cell.given}; });
    group("inside or right", {.stroke = "#2e7d32", .width = 1.1},
          [](const Drawn& cell) { return cell.parallels[0]; });
    group("outside or left", {.stroke = "#1565c0", .width = 1.1},
          [](const Drawn& cell) { return cell.parallels[1]; });
    picture.beginGroup("captions", {.fill = "#212121"});
    for (std::size_t i = 0; i < all.size(); ++i)
        picture.label(cells[i].captionPlace, 0, all[i].caption);
    picture.endGroup();
    picture.finish();
    out.commit();
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: make_offset_sheet OUT.svg\n", stderr);
        return 2;
    }
    try {
        drawSheet(argv[1]);
    } catch (const UserError& error) {
        std::fprintf(stderr, "make_offset_sheet: %s\n", error.what());
        return 1;
    }
    return 0;
}
