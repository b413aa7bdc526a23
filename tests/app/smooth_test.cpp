// calcora smooth: which lines become which curves, and what the program answers.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <numbers>

#include "app/dxf_reader.h"
#include "tests/app/support.h"

namespace {

using namespace calcora::app;
using app_tests::dxfText;
using app_tests::readFile;
using app_tests::Scratch;
using nlohmann::json;
using testing::HasSubstr;

const std::vector<std::string> kKinds = {"spline", "tension", "akima", "bezier", "bspline"};

struct Answer {
    int status = -1;
    std::string text;  ///< both streams
};

Answer run(const std::vector<std::string>& words)
{
    const Scratch scratch;
    std::string command = CALCORA_PROGRAM;
    for (const std::string& word : words) command += " '" + word + "'";
    const int status = std::system((command + " >" + scratch.path("out") + " 2>&1").c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, readFile(scratch.path("out"))};
}

struct Result {
    json answer;
    Drawing drawing;
};

Result smooth(const std::vector<std::string>& notes, std::vector<std::string> words)
{
    const Scratch scratch;
    words.insert(words.begin(), {"smooth", scratch.write("in.dxf", dxfText(notes)), "--json", "-o",
                                 scratch.path("out.dxf"), "--curve"});
    const Answer answer = run(words);
    EXPECT_EQ(answer.status, 0) << answer.text;
    return {json::parse(answer.text, nullptr, false), readDxf(scratch.path("out.dxf"), {})};
}

/// The smallest distance of a point to the vertices.
double distanceTo(const Figure& figure, const tav::Point2DF& place)
{
    double least = INFINITY;
    for (const tav::Point2DF& point : figure.points)
        least = std::min(least, place.distanceTo(point));
    return least;
}

const std::string kLevelLine =
    "LWPOLYLINE 8=Hill 90=5 70=0 38=125 10=0 20=0 10=10 20=4 10=10 20=4 10=18 20=0 10=30 20=7";
const std::vector<std::string> kFallingLine = {"POLYLINE 8=River 66=1 70=8",
                                               "VERTEX 8=River 10=0 20=50 30=9 70=32",
                                               "VERTEX 8=River 10=10 20=55 30=7 70=32",
                                               "VERTEX 8=River 10=20 20=48 30=4 70=32",
                                               "VERTEX 8=River 10=30 20=50 30=1 70=32",
                                               "SEQEND 8=River",
                                               "LINE 8=Fence 10=0 20=80 11=5 21=80"};

TEST(Smooth, KeepsLayersPointsAndElevations)
{
    std::vector<std::string> notes = kFallingLine;
    notes.push_back(kLevelLine);
    for (const std::string& kind : kKinds) {
        SCOPED_TRACE(kind);
        const auto [answer, drawing] = smooth(notes, {kind});
        ASSERT_EQ(drawing.figures.size(), 3u);
        EXPECT_EQ(answer["smoothed"], 2);
        EXPECT_EQ(answer["curves"][2]["repeats"], 1);
        const Figure& river = drawing.figures[0];
        const Figure& fence = drawing.figures[1];
        const Figure& hill = drawing.figures[2];
        const auto layer = [&](const Figure& f) {
            return drawing.layers[static_cast<std::size_t>(f.layer)];
        };
        EXPECT_EQ(layer(river) + layer(fence) + layer(hill), "RiverFenceHill");
        EXPECT_EQ(fence.points.size(), 2);
        EXPECT_GT(hill.points.size(), 10);
        EXPECT_THAT(hill.elevations, testing::Each(125.0));
        EXPECT_EQ(hill.points.first(), tav::Point2DF(0, 0));
        EXPECT_EQ(hill.points.last(), tav::Point2DF(30, 7));
        EXPECT_EQ(distanceTo(hill, {18, 0}) < 1e-12, kind != "bspline");
        const bool inPlane = kind == "spline" || kind == "akima";
        EXPECT_EQ(answer["curves"][0]["elevations"], inPlane ? "lost" : "carried");
        if (inPlane) continue;
        EXPECT_EQ(river.elevations.first(), 9);
        EXPECT_EQ(river.elevations.last(), 1);
        EXPECT_TRUE(
            std::is_sorted(river.elevations.begin(), river.elevations.end(), std::greater<>()));
    }
}

/// The sharpest turn of a closed figure between two chords, in radians.
double sharpestTurn(const Figure& ring)
{
    const int n = ring.points.size();
    double sharpest = 0;
    for (int i = 0; i < n; ++i) {
        const tav::Point2DF a = ring.points.at((i + 1) % n) - ring.points.at(i);
        const tav::Point2DF b = ring.points.at((i + 2) % n) - ring.points.at((i + 1) % n);
        sharpest = std::max(sharpest, std::fabs(std::atan2(a.x() * b.y() - a.y() * b.x(),
                                                           a.x() * b.x() + a.y() * b.y())));
    }
    return sharpest;
}

TEST(Smooth, ClosesWhatIsClosedOrAskedFor)
{
    // A closed square, one that ends where it begins, an open one; small ones in degrees too, where
    // ends are closer than distances that the operations take for nothing.
    for (const double size : {100.0, 1e-5}) {
        const auto ring = [&](const char* flag, int corners) {
            std::string note = "LWPOLYLINE 8=A 90=" + std::to_string(corners) + " 70=" + flag;
            for (int i = 0; i < corners; ++i)
                note += " 10=" + std::to_string(7 * size + (i % 4 == 1 || i % 4 == 2 ? size : 0)) +
                        " 20=" + std::to_string(i % 4 >= 2 ? size : 0);
            return note;
        };
        const std::vector<std::string> notes = {ring("1", 4), ring("0", 5), ring("0", 4)};
        for (const std::string& kind : kKinds) {
            SCOPED_TRACE(kind + " " + std::to_string(size));
            const std::vector<std::string> fine = {kind, "--tolerance",
                                                   size > 1 ? "0.01" : "0.000000001", "--closed"};
            const auto closed = [&](const char* word) {
                std::vector<std::string> words = fine;
                words.push_back(word);
                const auto result = smooth(notes, words);
                std::string flags;
                for (const Figure& figure : result.drawing.figures) {
                    flags += figure.closed ? 'c' : 'o';
                    EXPECT_TRUE(!figure.closed || sharpestTurn(figure) < 0.25);
                }
                return flags;
            };
            EXPECT_EQ(closed("auto"), "cco");
            EXPECT_EQ(closed("yes"), "ccc");
            EXPECT_EQ(closed("no"), kind == "akima" || kind == "bezier" ? "cco" : "ooo");
        }
    }
}

TEST(Smooth, FollowsArcsAndMirroredLines)
{
    for (const std::string& kind : kKinds) {
        SCOPED_TRACE(kind);
        const auto [answer, drawing] =
            smooth({"CIRCLE 8=A 10=500000 20=4000000 40=10",
                    "LWPOLYLINE 8=A 90=4 70=0 10=0 20=0 10=0 20=10 10=10 20=-10 10=10 20=0"},
                   {kind, "--tolerance", "0.001"});
        ASSERT_EQ(drawing.figures.size(), 2u);
        for (const tav::Point2DF& point : drawing.figures[0].points)
            EXPECT_NEAR(point.distanceTo({500000, 4000000}), 10, kind == "bspline" ? 0.08 : 0.02);
        // A sampler that looks at the middle alone takes an S for a straight line.
        EXPECT_GT(drawing.figures[1].points.size(), 10);
    }
}

TEST(Smooth, ToleranceDecidesTheNumberOfPoints)
{
    for (const std::string kind : {"spline", "tension", "bezier", "bspline"}) {
        SCOPED_TRACE(kind);
        int before = 0;
        for (const std::string tolerance : {"10", "0.1", "0.001", "1e-300"}) {
            const auto [answer, drawing] = smooth({kLevelLine}, {kind, "--tolerance", tolerance});
            const int count = drawing.figures.at(0).points.size();
            EXPECT_GE(count, before);
            EXPECT_LT(count, 200000);
            before = count;
        }
        EXPECT_GT(before, 1000);
    }
}

TEST(Smooth, DrawsLineCurveAndPoints)
{
    const Scratch scratch;
    const std::string svg = scratch.path("out.svg");
    EXPECT_EQ(run({"smooth", std::string(CALCORA_EXAMPLES) + "/contours.dxf", "--curve", "tension",
                   "-o", scratch.path("out.dxf"), "--svg", svg})
                  .status,
              0);
    EXPECT_THAT(readFile(svg), testing::AllOf(HasSubstr("class=\"given\""),
                                              HasSubstr("curves RIVER"), HasSubstr("<circle")));
}

TEST(Smooth, RefusesInOneLine)
{
    const Scratch scratch;
    const std::string good = scratch.write("good.dxf", dxfText({kLevelLine}));
    const std::string out = scratch.path("out.dxf");
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
        {{good, "-o", out}, "--curve"},
        {{good, "--curve", "spline"}, "--output"},
        {{good, "--curve", "cubic", "-o", out}, "none of spline"},
        {{good, "--curve", "spline", "--closed", "maybe", "-o", out}, "none of auto"},
        {{good, "--curve", "spline", "--tolerance", "0", "-o", out}, "above 0"},
        {{good, "--curve", "spline", "--tolerance", "nan", "-o", out}, "above 0"},
        {{good, "--curve", "spline", "-o", good}, "replace the input"},
        {{scratch.path("none.dxf"), "--curve", "spline", "-o", out}, "no such file"},
    };
    for (auto [words, told] : cases) {
        SCOPED_TRACE(told);
        words.insert(words.begin(), "smooth");
        const Answer answer = run(words);
        EXPECT_EQ(answer.status, 2);
        EXPECT_THAT(answer.text, HasSubstr(told));
        EXPECT_EQ(std::count(answer.text.begin(), answer.text.end(), '\n'), 1);
        EXPECT_EQ(scratch.fileCount(), 1);
    }
}

}  // namespace
