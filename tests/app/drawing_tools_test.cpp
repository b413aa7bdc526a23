// The tools that take a drawing figure by figure, as the commands give their answers.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <sstream>

#include "app/dxf_reader.h"
#include "tests/app/support.h"

namespace {

using namespace calcora::app;
using namespace app_tests;
using nlohmann::json;

constexpr double kPi = std::numbers::pi;

/// A half disc of radius 3 over a square of side 6 at (x, y), counter-clockwise or clockwise.
std::string domeNote(double x, double y, bool clockwise)
{
    const double xs[] = {0, 6, 6, 0};
    const double ys[] = {0, 0, 6, 6};
    std::string note = "LWPOLYLINE 8=Dome 90=4 70=1";
    for (int k = 0; k < 4; ++k) {
        const int i = clockwise ? 3 - k : k;
        note += " 10=" + std::to_string(x + xs[i]) + " 20=" + std::to_string(y + ys[i]);
        if (i == (clockwise ? 3 : 2)) note += clockwise ? " 42=-1" : " 42=1";
    }
    return note;
}

TEST(Measure, MeasuresAreasWithArcsAtAnyPlaceEitherWay)
{
    const double half = kPi * 9 / 2;
    const double area = 36 + half;
    const double height = (36 * 3 + half * (6 + 4 / kPi)) / area;
    for (const double far : {0.0, 1.0})
        for (const bool clockwise : {false, true}) {
            const Scratch scratch;
            const double x = far * 500000.3;
            const double y = far * 4000000.7;
            const std::string input = scratch.write(
                "in.dxf", dxfText({domeNote(x, y, clockwise), "LINE 8=Road 10=0 20=0 11=3 21=4",
                                   "CIRCLE 8=Dome 10=0 20=0 40=2"}));
            const json answer = runJson("measure " + input + " --layer Dome");
            const json& layer = answer["layers"][0];
            EXPECT_NEAR(layer["area"], area + 4 * kPi, 1e-8);
            const json& dome = layer["figures"][0];
            EXPECT_NEAR(dome["area"], area, 1e-8);
            EXPECT_NEAR(dome["length"], 18 + 3 * kPi, 1e-8);
            EXPECT_NEAR(dome["centroid"][0], x + 3, 1e-8);
            EXPECT_NEAR(dome["centroid"][1], y + height, 1e-8);
            EXPECT_NEAR(dome["extents"][3], y + 9, 1e-8);
            EXPECT_EQ(dome["orientation"], clockwise ? "clockwise" : "counter-clockwise");
            EXPECT_GT(dome["inner_point"][0], x);
            EXPECT_LT(dome["inner_point"][0], x + 6);
            EXPECT_EQ(answer["on_other_layers"], 1);
        }
}

TEST(Measure, TellsMajorArcsAndFiguresWithoutArea)
{
    const Scratch scratch;
    // A three-quarter disc of radius 1 about (0, 0), a line there and back, an open line.
    const std::string input = scratch.write(
        "in.dxf",
        dxfText({"LWPOLYLINE 8=A 90=3 70=1 10=1 20=0 42=2.414213562373095 10=0 20=-1 "
                 "10=0 20=0",
                 "LWPOLYLINE 8=A 90=2 70=1 10=0 20=0 10=5 20=0", "LINE 8=A 10=0 20=0 11=3 21=4",
                 // Ends where it begins: closed. There and back: a line.
                 "LWPOLYLINE 8=A 70=0 38=2 10=0 20=0 10=6 20=0 10=0 20=6 10=0 20=0",
                 "LWPOLYLINE 8=A 70=0 10=0 20=0 10=6 20=0 10=0 20=0"}));
    const std::string picture = scratch.path("out.svg");
    const json answer = runJson("measure " + input + " --svg " + picture);
    const json& figures = answer["layers"][0]["figures"];
    EXPECT_NEAR(figures[0]["area"], 0.75 * kPi, 1e-12);
    const double reach = 4.0 / (9 * kPi);  // of the quarter that is missing, thrice as far
    EXPECT_NEAR(figures[0]["centroid"][0], -reach, 1e-12);
    EXPECT_NEAR(figures[0]["centroid"][1], reach, 1e-12);
    EXPECT_EQ(figures[1]["orientation"], "none");
    EXPECT_TRUE(figures[1]["inner_point"].is_null());
    EXPECT_EQ(figures[2]["length"], 5);
    EXPECT_EQ(figures[2]["closed"], false);
    EXPECT_EQ(figures[3]["closed"], true);
    EXPECT_EQ(figures[3]["vertices"], 3);
    EXPECT_EQ(figures[3]["area"], 18);
    EXPECT_EQ(figures[4]["closed"], false);
    // The number of the second figure with an area stands in it.
    EXPECT_THAT(app_tests::readFile(picture), testing::ContainsRegex(">4</text>"));
    EXPECT_THAT(run("measure " + input).out,
                testing::ContainsRegex(" 4 .* 18 +counter-clockwise +2, 2 "));
}

/// A closed outline through places given as "x y" in pairs, turned by an angle and moved.
std::string outlineNote(const std::vector<double>& numbers, double angle, double x, double y)
{
    std::ostringstream note;
    note.precision(17);
    note << "LWPOLYLINE 8=House 90=" << numbers.size() / 2 << " 70=1";
    for (std::size_t i = 0; i + 1 < numbers.size(); i += 2)
        note << " 10=" << x + numbers[i] * std::cos(angle) - numbers[i + 1] * std::sin(angle)
             << " 20=" << y + numbers[i] * std::sin(angle) + numbers[i + 1] * std::cos(angle);
    return note.str();
}

TEST(Square, MakesEveryCornerRightAndTellsTheFarthestMove)
{
    const Scratch scratch;
    const std::string input = scratch.write(
        "in.dxf",
        dxfText({outlineNote({0, 0, 12, 0.05, 11.97, 5, 6, 5.04, 6.03, 9, 0.02, 9}, 0.4, 5e5, 4e6),
                 "CIRCLE 8=House 10=0 20=0 40=2", "LINE 8=Fence 10=0 20=0 11=3 21=1",
                 outlineNote({0, 0, 9, 0.05, 9, 5, 0, 5}, 0, 0, 0) + " 38=7",
                 // A roof: of its elevations nothing is left.
                 "POLYLINE 66=1 70=9", "VERTEX 10=0 20=0 30=3", "VERTEX 10=9 20=0.05 30=3",
                 "VERTEX 10=9 20=5 30=4", "VERTEX 10=0 20=5 30=4", "SEQEND"}));
    const json answer = runJson("square -o " + scratch.path("out.dxf") + " " + input);
    EXPECT_EQ(answer["kept"], 2);
    EXPECT_EQ(answer["outlines"][0]["corners"], 6);

    const Drawing out = readDxf(scratch.path("out.dxf"), {});
    ASSERT_EQ(out.figures.size(), 5u);
    EXPECT_EQ(out.figures[3].elevations, (Values{7, 7, 7, 7}));
    EXPECT_TRUE(out.figures[4].elevations.isEmpty());
    EXPECT_THAT(run("square " + input).out, testing::ContainsRegex("squared +3\n"));
    const Points before = readDxf(input, {}).figures[0].points;
    const Points& corners = out.figures[0].points;
    double farthest = 0;
    for (int i = 0; i < 6; ++i) {
        const tav::Point2DF a = corners.at((i + 1) % 6) - corners.at(i);
        const tav::Point2DF b = corners.at((i + 2) % 6) - corners.at((i + 1) % 6);
        const double dot = a.x() * b.x() + a.y() * b.y();
        EXPECT_NEAR(dot / (std::hypot(a.x(), a.y()) * std::hypot(b.x(), b.y())), 0, 1e-9);
        double nearest = 1e9;
        for (const tav::Point2DF& point : before)
            nearest = std::min(
                nearest, std::hypot(point.x() - corners.at(i).x(), point.y() - corners.at(i).y()));
        farthest = std::max(farthest, nearest);
    }
    EXPECT_DOUBLE_EQ(answer["farthest_move"], farthest);
    EXPECT_LT(farthest, 0.2);
}

TEST(Simplify, ThinsStraightRunsKeepsArcsAndStaysWithinTheTolerance)
{
    const Scratch scratch;
    // A wave of 40 vertices before and after a half circle, with elevations on neither; a square
    // with a vertex in the middle of each side, the first among them; a sliver.
    std::ostringstream wave;
    wave.precision(17);
    wave << "LWPOLYLINE 8=A 90=80 70=0";
    for (int i = 0; i < 80; ++i) {
        wave << " 10=" << i << " 20=" << std::sin(i * 0.1);
        if (i == 39) wave << " 42=1";
    }
    const std::string input = scratch.write(
        "in.dxf",
        dxfText({wave.str(),
                 outlineNote({5, 0, 10, 0, 10, 5, 10, 10, 5, 10, 0, 10, 0, 5, 0, 0}, 0, 0, 0),
                 outlineNote({0, 0, 9, 0.01, 5, 0.02}, 0, 0, 0), "POLYLINE 66=1 70=8",
                 "VERTEX 10=0 20=0 30=3", "VERTEX 10=4 20=0.05 30=5", "VERTEX 10=9 20=0 30=4",
                 "SEQEND", domeNote(0, 0, false), "CIRCLE 10=0 20=0 40=0.01"}));
    const std::string words = "simplify --tolerance 0.1 " + input + " -o ";
    const json answer = runJson(words + scratch.path("out.dxf"));
    EXPECT_LE(answer["deviation"], 0.1);
    EXPECT_GT(answer["deviation"], 0.02);

    const Drawing out = readDxf(scratch.path("out.dxf"), {});
    const Points given = readDxf(input, {}).figures[0].points;
    const Points& thinned = out.figures[0].points;
    EXPECT_LT(thinned.size(), 20);
    for (const tav::Point2DF& point : given) {
        double nearest = 1e9;
        for (int i = 1; i < thinned.size(); ++i) {
            const tav::Point2DF a = thinned.at(i - 1);
            const tav::Point2DF d = thinned.at(i) - a;
            const tav::Point2DF p = point - a;
            const double t = (p.x() * d.x() + p.y() * d.y()) / (d.x() * d.x() + d.y() * d.y());
            const double s = std::min(1.0, std::max(0.0, t));
            nearest = std::min(nearest, std::hypot(p.x() - s * d.x(), p.y() - s * d.y()));
        }
        EXPECT_LE(nearest, 0.1) << point.x();
    }
    int arcs = 0;
    for (int i = 0; i < thinned.size(); ++i)
        if (out.figures[0].bulges.at(i) != 0) {
            ++arcs;
            EXPECT_EQ(thinned.at(i).x(), 39);
            EXPECT_EQ(thinned.at(i + 1).x(), 40);
        }
    EXPECT_EQ(arcs, 1);
    EXPECT_EQ(out.figures[1].points.size(), 4);
    EXPECT_EQ(out.figures[2].points.size(), 3);
    EXPECT_EQ(out.figures[3].elevations, (Values{3, 4}));
    EXPECT_EQ(out.figures[4].points.size(), 4);
    EXPECT_EQ(out.figures[5].bulges, (Values{1, 1}));
}

TEST(Offset, CutsParallelsApartWhereTheyMeet)
{
    const std::vector<double> dumbbell = {0,  0,  10, 0,  10, 4, 20, 4, 20, 0,  30, 0,
                                          30, 10, 20, 10, 20, 6, 10, 6, 10, 10, 0,  10};
    const std::vector<double> bay = {0, 0, 10, 0, 10, 4.5, 8,  4.5, 8,  2,  2, 2,
                                     2, 8, 8,  8, 8,  5.5, 10, 5.5, 10, 10, 0, 10};
    // Corners that point at each other: the tips of their parallels cross.
    const std::vector<double> waist = {0, 0, 18, 0, 10.2, 6, 18, 12, 0, 12, 7.8, 6};
    const double lobe = 25.5732148;  // similar to the triangle over a base, its incircle 1.1 less
    const std::vector<double> clockwise = {0, 10, 10, 10, 10, 0, 0, 0};
    struct Case {
        std::vector<double> outline;
        double distance;
        std::vector<double> areas;
    };
    const std::vector<Case> cases = {{dumbbell, -1.5, {49, 49}},  {bay, 1, {16, 144}},
                                     {waist, -1.1, {lobe, lobe}}, {clockwise, 1, {144}},
                                     {clockwise, -2, {36}},       {clockwise, -5.5, {}}};
    // Turned and far out, and with coordinates of a thousandth the size.
    for (const auto& [outline, distance, areas] : cases)
        for (const double size : {1.0, 1e-3}) {
            const Scratch scratch;
            std::vector<double> numbers = outline;
            for (double& number : numbers) number *= size;
            const double far = size == 1 ? 1.0 : 0.0;
            const std::string note = outlineNote(numbers, 0.3, 5e5 * far, 4e6 * far);
            const std::string input = scratch.write("in.dxf", dxfText({note}));
            const std::string out = scratch.path("out.dxf");
            const json answer = runJson("offset --distance=" + std::to_string(distance * size) +
                                        " " + input + " -o " + out);
            EXPECT_EQ(answer["parallels"].size(), areas.size());
            EXPECT_EQ(answer["vanished"], areas.empty() ? 1 : 0);
            if (areas.empty()) continue;
            const json layers = runJson("measure " + out)["layers"];
            std::vector<double> found;
            for (const json& figure : layers[0]["figures"]) found.push_back(figure["area"]);
            std::sort(found.begin(), found.end());
            ASSERT_EQ(found.size(), areas.size());
            for (std::size_t i = 0; i < areas.size(); ++i)
                EXPECT_NEAR(found[i] / (size * size), areas[i], 1e-3) << distance << " " << size;
        }
}

TEST(DrawingTools, TellMistakesInOneLineAndLeaveNoFile)
{
    const Scratch scratch;
    scratch.write("in.dxf", dxfText({"LINE 8=A 10=0 20=0 11=3 21=1"}));
    const std::pair<const char*, const char*> cases[] = {
        {"simplify in.dxf", "--tolerance"},
        {"simplify in.dxf --tolerance 0", "no length above 0"},
        {"simplify in.dxf --tolerance x", "no length above 0"},
        {"offset in.dxf --distance 0", "no distance other than 0"},
        {"square none.dxf", "no such file"},
        {"measure in.dxf --layer B", "no layer"},
        {"square in.dxf --svg /none/x.svg", "x.svg: cannot be written"},
    };
    for (const auto& [words, told] : cases)
        expectRefusal(words + std::string(" -o out.dxf"), told, scratch);
}

}  // namespace
