// calcora smooth: which lines become which curves, and what the program answers.
#include <cmath>
#include <complex>

#include "app/dxf_reader.h"
#include "tests/app/support.h"

namespace {

using namespace app_tests;
using namespace calcora::app;
using nlohmann::json;
using testing::HasSubstr;

const std::vector<std::string> kKinds = {"spline", "tension", "akima", "bezier", "bspline"};

struct Result {
    json answer;
    Drawing drawing;
};

Result smooth(const std::vector<std::string>& notes, const std::string& words)
{
    const Scratch scratch;
    scratch.write("in.dxf", dxfText(notes));
    const json answer = runJson("smooth in.dxf -o out.dxf --curve " + words, scratch);
    return {answer, readDxf(scratch.path("out.dxf"), {})};
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
                                               "LINE 8=Fence 10=0 20=80 30=4 11=5 21=80 31=4"};

TEST(Smooth, KeepsLayersPointsAndElevations)
{
    std::vector<std::string> notes = kFallingLine;
    notes.push_back(kLevelLine);
    const Scratch scratch;
    scratch.write("in.dxf", dxfText(notes));
    const auto table = [&](const char* words) {
        return run("smooth in.dxf -o out.dxf --curve " + std::string(words), scratch).out;
    };
    EXPECT_THAT(table("spline"), testing::AllOf(HasSubstr("levelled"), HasSubstr("1 repeats")));
    EXPECT_THAT(table("akima"), testing::AllOf(HasSubstr("50 for each"), HasSubstr("kept")));
    for (const std::string& kind : kKinds) {
        SCOPED_TRACE(kind);
        const auto [answer, drawing] = smooth(notes, kind);
        ASSERT_EQ(drawing.figures.size(), 3u);
        EXPECT_EQ(answer["smoothed"], 2);
        EXPECT_EQ(answer["curves"][1]["elevations"], "kept");
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
    const auto chord = [&](int i) {
        const int n = ring.points.size();
        const tav::Point2DF d = ring.points.at((i + 1) % n) - ring.points.at(i % n);
        return std::complex<double>(d.x(), d.y());
    };
    double sharpest = 0;
    for (int i = 0; i < ring.points.size(); ++i)
        sharpest = std::max(sharpest, std::fabs(std::arg(chord(i + 1) / chord(i))));
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
            const auto closed = [&](const std::string& word) {
                const auto result = smooth(notes, kind + " --closed " + word + " --tolerance " +
                                                      (size > 1 ? "0.01" : "0.000000001"));
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
                   kind + " --tolerance 0.001");
        ASSERT_EQ(drawing.figures.size(), 2u);
        for (const tav::Point2DF& point : drawing.figures[0].points)
            EXPECT_NEAR(point.distanceTo({500000, 4000000}), 10, kind == "bspline" ? 0.08 : 0.02);
        // A sampler that looks at the middle alone takes an S for a straight line.
        EXPECT_GT(drawing.figures[1].points.size(), 10);
    }
}

TEST(Smooth, DrawsLineCurveAndPoints)
{
    const Scratch scratch;
    const std::string input = CALCORA_EXAMPLES "/contours.dxf";
    const std::string words = " --curve tension -o out.dxf --svg out.svg --tolerance ";
    EXPECT_EQ(run("smooth " + input + words + "1", scratch).status, 0);
    EXPECT_THAT(readFile(scratch.path("out.svg")),
                testing::AllOf(HasSubstr("class=\"given\""), HasSubstr("curves RIVER"),
                               HasSubstr("<circle")));
    const auto size = readFile(scratch.path("out.dxf")).size();
    EXPECT_EQ(run("smooth " + input + words + "0.01", scratch).status, 0);
    EXPECT_GT(readFile(scratch.path("out.dxf")).size(), 2 * size);
}

TEST(Smooth, RefusesInOneLine)
{
    const Scratch scratch;
    scratch.write("good.dxf", dxfText({kLevelLine}));
    const std::pair<const char*, const char*> cases[] = {
        {"good.dxf -o out.dxf", "--curve"},
        {"good.dxf --curve spline", "--output"},
        {"good.dxf --curve cubic -o out.dxf", "none of spline"},
        {"good.dxf --curve spline --closed maybe -o out.dxf", "none of auto"},
        {"good.dxf --curve spline --tolerance 0 -o out.dxf", "above 0"},
        {"good.dxf --curve spline --tolerance nan -o out.dxf", "above 0"},
    };
    for (const auto& [words, told] : cases)
        expectRefusal(std::string("smooth ") + words, told, scratch);
}

}  // namespace
