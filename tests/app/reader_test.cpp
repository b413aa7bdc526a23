// Drawings from DXF texts: what is taken, what is left out, what is refused.
#include <clocale>
#include <numbers>

#include "app/dxf_reader.h"
#include "app/figures.h"
#include "app/user_error.h"
#include "tests/app/support.h"

namespace {

using namespace app_tests;
using namespace calcora::app;

Drawing read(const std::vector<std::string>& notes, const ReadOptions& options = {})
{
    return readDxfText(dxfText(notes), "t.dxf", options);
}

/// The one line that the text is refused with; empty when it is taken.
std::string refusal(const std::string& text, const ReadOptions& options = {})
{
    try {
        readDxfText(text, "t.dxf", options);
    } catch (const UserError& error) {
        return error.what();
    }
    return {};
}

TEST(Reader, TurnsArcsIntoBulges)
{
    const double quarter = std::tan(std::numbers::pi / 8);
    using Case = std::tuple<const char*, std::vector<tav::Point2DF>, std::vector<double>, bool>;
    const Case cases[] = {
        {"ARC 10=1 20=2 40=3 50=0 51=90", {{4, 2}, {1, 5}}, {quarter, 0}, false},
        {"ARC 10=0 20=0 40=2 50=270 51=90", {{0, -2}, {0, 2}}, {1, 0}, false},
        {"ARC 10=0 20=0 40=2 50=-1e-20 51=90", {{2, 0}, {0, 2}}, {quarter, 0}, false},
        {"ARC 10=0 20=0 40=2 50=-90 51=450", {{0, -2}, {0, 2}}, {1, 0}, false},
        {"ARC 10=0 20=0 40=2 50=90 51=0", {{0, 2}, {2, 0}}, {1 / quarter, 0}, false},
        {"ARC 10=0 20=0 40=2 50=30 51=390", {{2, 0}, {-2, 0}}, {1, 1}, true},
        // Hardly less than a circle: two halves, so that no chord of 1e-4 must carry the radius.
        {"ARC 10=0 20=0 40=2 50=2.5 51=-2.5",
         {pointOnCircle({0, 0}, 2, 2.5), {-2, 0}, pointOnCircle({0, 0}, 2, -2.5)},
         {std::tan(355 * std::numbers::pi / 1440), std::tan(355 * std::numbers::pi / 1440), 0},
         false},
        {"CIRCLE 10=1 20=1 40=2", {{3, 1}, {-1, 1}}, {1, 1}, true},
        // Seen from below: x and the sense of turning change sign.
        {"ARC 10=1 20=2 40=3 50=0 51=90 230=-1", {{-4, 2}, {-1, 5}}, {-quarter, 0}, false},
        {"LWPOLYLINE 90=2 70=1 10=0 20=0 42=0.5 10=4 20=0 42=-1",
         {{0, 0}, {4, 0}},
         {0.5, -1},
         true},
        {"LWPOLYLINE 90=2 230=-1 10=0 20=0 42=0.5 10=4 20=0", {{0, 0}, {-4, 0}}, {-0.5, 0}, false},
        // The closing segment's bulge means nothing while the chain is open.
        {"LWPOLYLINE 90=2 70=0 10=0 20=0 42=0.5 10=4 20=0 42=-1",
         {{0, 0}, {4, 0}},
         {0.5, 0},
         false},
        // A count that lies.
        {"LWPOLYLINE 90=2000000000 10=0 20=0 10=4 20=0 10=4 20=3",
         {{0, 0}, {4, 0}, {4, 3}},
         {0, 0, 0},
         false},
        // As long one way as the other: a circle after all.
        {"ELLIPSE 10=0 20=0 11=0 21=2 40=1", {{2, 0}, {-2, 0}}, {1, 1}, true},
        {"ELLIPSE 10=0 20=0 11=0 21=2 40=1 41=0 42=6.283185", {{2, 0}, {-2, 0}}, {1, 1}, true},
        {"ELLIPSE 10=0 20=0 11=0 21=2 40=1 41=0 42=1.5707963267948966",
         {{0, 2}, {-2, 0}},
         {quarter, 0},
         false},
        {"ELLIPSE 10=0 20=0 11=0 21=2 40=-1 41=0 42=1.5707963267948966",
         {{2, 0}, {0, 2}},
         {quarter, 0},
         false},
    };
    for (const auto& [note, points, bulges, closed] : cases) {
        SCOPED_TRACE(note);
        const Drawing drawing = read({note});
        ASSERT_EQ(drawing.figures.size(), 1u);
        const Figure& figure = drawing.figures[0];
        ASSERT_EQ(figure.points.size(), std::ssize(points));
        EXPECT_THAT(std::vector(figure.bulges.begin(), figure.bulges.end()),
                    testing::Pointwise(testing::DoubleNear(1e-12), bulges));
        EXPECT_EQ(figure.closed, closed);
        for (std::size_t i = 0; i < points.size(); ++i)
            EXPECT_LT(figure.points.at(static_cast<int>(i)).distanceTo(points[i]), 1e-12);
    }
}

TEST(Reader, KeepsEllipsesWithinTheTolerance)
{
    // A turned ellipse with semi-axes 10 and 4, whole and in part, seen from above and from below.
    const std::string base = "ELLIPSE 10=3 20=-2 ";
    const std::string longAxis = "11=8 21=6 40=0.4", shortAxis = "11=2.4 21=-3.2 40=2.5";
    for (const std::string& ends :
         {longAxis, longAxis + " 41=0.5 42=4", longAxis + " 41=5 42=1",
          longAxis + " 41=0.5 42=4 230=-1", shortAxis, shortAxis + " 41=2.0707963267948966 42=5"})
        for (const double tolerance : {0.0, 0.5, 1e-4}) {
            SCOPED_TRACE(ends + " within " + std::to_string(tolerance));
            ReadOptions options;
            options.ellipseTolerance = tolerance;
            const Drawing drawing = read({base + ends}, options);
            const double allowed = tolerance > 0 ? tolerance : 0.01;
            EXPECT_LE(drawing.ellipseReach, allowed);
            EXPECT_GT(drawing.ellipseReach, allowed / 8);  // no more chords than it takes
            const Figure& figure = drawing.figures.at(0);
            EXPECT_EQ(figure.closed, ends.find("41=") == ends.npos);
            const auto onEllipse = [](double x, double y) {
                const double u = (0.8 * (x - 3) + 0.6 * (y + 2)) / 10;
                const double v = (-0.6 * (x - 3) + 0.8 * (y + 2)) / 4;
                return std::hypot(u, v);
            };
            for (int i = 0; i < figure.segmentCount(); ++i) {
                const auto& a = figure.points.at(i);
                const auto& b = figure.points.at((i + 1) % figure.points.size());
                EXPECT_NEAR(onEllipse(a.x(), a.y()), 1, 1e-12);
                // A point inside by the share s of its radius is at most 10 s away.
                const double inside = onEllipse((a.x() + b.x()) / 2, (a.y() + b.y()) / 2);
                EXPECT_GE(inside, 1 - allowed / 4 - 1e-12);
            }
            if (ends.find("41=0.5") != ends.npos || ends.find("41=2.0") != ends.npos) {
                const double turn = ends.find("230") == ends.npos ? 1 : -1;
                const double c = std::cos(0.5), s = turn * std::sin(0.5);
                const tav::Point2DF start(3 + 8 * c - 2.4 * s, -2 + 6 * c + 3.2 * s);
                EXPECT_LT(figure.points.first().distanceTo(start), 1e-12);
            }
        }
}

TEST(Reader, CountsWhatItTakesAndWhatNot)
{
    const std::string blocks = "0\nSECTION\n2\nBLOCKS\n0\nBLOCK\n2\nDOOR\n" +
                               entity("LINE 8=A 10=0 20=0 11=5 21=0") + "0\nENDBLK\n0\nENDSEC\n";
    const std::string entities = dxfText({
        "LINE 8=Walls 5=2A 99=x 150=y 240=z 10=0 20=0 11=5 21=0",  // codes of no numbers
        "LINE 8=WALLS 10=0 20=0 30=7 11=5 21=0 31=9",
        "LINE 8=Walls 10=1 20=1 11=1 21=1",
        "LINE 8=Walls 67=1 10=0 20=0 11=5 21=0",
        "CIRCLE 8=Trees 10=0 20=0 40=0",
        "ARC 8=Trees 10=0 20=0 40=0 50=0 51=90",
        "ELLIPSE 8=Trees 10=0 20=0 11=1 21=0 40=0",
        "VERTEX 8=Trees 10=0 20=0",
        "POLYLINE 8=Trees 66=1",
        "SEQEND",
        "ARC 8=Trees 10=0 20=0 40=1 50=0 51=90 210=1 220=0 230=0",
        "POLYLINE 8=Trees 66=1 70=9",
        "VERTEX 10=0 20=0 30=1 42=0.5",
        "VERTEX 10=4 20=0 30=2",
        "VERTEX 10=4 20=4 30=3 70=16",
        "SEQEND",
        "POLYLINE 66=1 30=12.5",
        "VERTEX 10=0 20=0 42=0.5",
        "VERTEX 10=4 20=0",
        "SEQEND",
        "POLYLINE 8= 66=1 70=8 230=-1",
        "VERTEX 10=1 20=0 30=1",
        "VERTEX 10=4 20=0 30=2",
        "SEQEND",
        "POLYLINE 66=1 70=16 71=2 72=2",
        "VERTEX 10=0 20=0",
        "VERTEX 10=4 20=0",
        "SEQEND",
        "INSERT 8=Doors 2=DOOR 10=0 20=0 66=1",
        "ATTRIB 8=Doors 10=nan 1=x",
        "SEQEND",
        "TEXT 8=Trees 10=1e999 20=0 40=1 1=oak",
        "SPLINE 8=Trees 70=8",
    });
    const Drawing drawing = readDxfText(blocks + "999\nby hand\n" + entities, "t.dxf", {});
    EXPECT_EQ(drawing.taken, (KindCounts{{"LINE", 2}, {"POLYLINE", 3}}));
    EXPECT_EQ(drawing.notTaken, (KindCounts{{"ARC (no radius)", 1},
                                            {"ARC (tilted plane)", 1},
                                            {"CIRCLE (no radius)", 1},
                                            {"ELLIPSE (no extent)", 1},
                                            {"INSERT", 1},
                                            {"LINE (no length)", 1},
                                            {"LINE (paper space)", 1},
                                            {"POLYLINE (mesh)", 1},
                                            {"POLYLINE (no length)", 1},
                                            {"SPLINE", 1},
                                            {"TEXT", 1},
                                            {"VERTEX", 1}}));
    // Layers are told apart without regard to case, and keep the name that came first.
    EXPECT_THAT(drawing.layers, testing::ElementsAre("Walls", "Trees", "0"));
    const auto& figures = drawing.figures;
    EXPECT_TRUE(figures[0].elevations.isEmpty());
    EXPECT_EQ(figures[1].elevations, (Values{7, 9}));
    EXPECT_EQ(figures[1].layer, 0);
    // In space: closed, no arcs, without the frame of its spline. In the plane: with them.
    EXPECT_TRUE(figures[2].closed);
    EXPECT_EQ(figures[2].bulges, (Values{0, 0}));
    EXPECT_EQ(figures[2].elevations, (Values{1, 2}));
    EXPECT_EQ(figures[3].bulges, (Values{0.5, 0}));
    EXPECT_EQ(figures[3].elevations, (Values{12.5, 12.5}));
    // In space there is no plane to be seen from below. A layer without a name is 0.
    EXPECT_EQ(figures[4].points.first(), tav::Point2DF(1, 0));
    EXPECT_EQ(figures[4].layer, 2);

    ReadOptions onlyTrees;
    onlyTrees.layers = {"trees"};
    const Drawing trees = readDxfText(entities, "t.dxf", onlyTrees);
    EXPECT_EQ(trees.taken, (KindCounts{{"POLYLINE", 1}}));
    EXPECT_EQ(trees.onOtherLayers, 8);
}

TEST(Reader, RefusesBadInputInOneLine)
{
    const std::string good = dxfText({lineNote(0, 0, 1, 0)});
    const std::string head = "0\nSECTION\n2\nENTITIES\n";
    const auto line = [](const std::string& x) {
        return dxfText({"LINE 10=" + x + " 20=0 11=1 21=1"});
    };
    const std::pair<std::string, std::string> cases[] = {
        {"", "t.dxf: the file is empty"},
        {"hello\nworld\n", "t.dxf: not a DXF file"},
        {std::string("\0\0\0\0", 4), "t.dxf: not a DXF file"},
        {"7\nSECTION\n", "t.dxf: not a DXF file"},
        {"AutoCAD Binary DXF\r\n\x1a", "t.dxf: a binary DXF file"},
        {"AC1027\0\0", "t.dxf: a DWG file"},
        {"0\nEOF\n", "t.dxf: the drawing has no entities section"},
        {good.substr(0, good.size() - 6), "t.dxf: the file is cut off after line 18"},
        {good.substr(0, 40), "t.dxf:11: the file ends in the middle of a group"},
        {head + "0\nLINE\n10\n", "t.dxf:7: the file ends in the middle of a group"},
        {head + "0\nLINE\nten\n1\n", "t.dxf:7: a group code was expected, not \"ten\""},
        {head + "10\n1\n0\nENDSEC\n0\nEOF\n", "t.dxf:6: an entity was expected"},
        {head + "0\nEOF\n", "t.dxf:6: the entities section does not end"},
        {"0\nSECTION\n2\nTABLES\n0\nEOF\n", "t.dxf:6: a section that does not end"},
        {"0\nSECTION\n2\nTABLES\n0\nSECTION\n", "t.dxf:6: a section that does not end"},
        {line("nan"), "t.dxf:8: LINE with a number that is none"},
        {line("inf"), "t.dxf:8: LINE"},
        {line("1e308"), "t.dxf:8: LINE"},
        {line("1e999"), "t.dxf:8: LINE"},
        {line("1,5"), "t.dxf:8: LINE"},
        {line("12abc"), "t.dxf:8: LINE"},
        {line("+-1"), "t.dxf:8: LINE"},
        {line(""), "t.dxf:8: LINE"},
        {line("+"), "t.dxf:8: LINE"},
        {line("0x10"), "t.dxf:8: LINE"},
        {dxfText({"LINE 10=0 20=0 11=1"}), "t.dxf:6: LINE without group 21"},
        {dxfText({"ARC 10=0 20=0 40=1 50=0"}), "t.dxf:6: ARC without group 51"},
        {dxfText({"LWPOLYLINE 90=2 10=0 20=0 10=1"}), "t.dxf:6: LWPOLYLINE with a vertex"},
        {dxfText({"LWPOLYLINE 90=1 10=0 20=0 42=-inf"}), "t.dxf:14: LWPOLYLINE"},
        {dxfText({"POLYLINE 70=yes"}), "t.dxf:8: POLYLINE with flags that are no integer"},
    };
    for (const auto& [text, begin] : cases) {
        SCOPED_TRACE(text.substr(0, 200));
        const std::string told = refusal(text);
        EXPECT_THAT(told, testing::StartsWith(begin));
        EXPECT_EQ(told.find('\n'), told.npos);
    }
    // What looks odd and is right all the same.
    EXPECT_EQ(refusal(line("+1.5E+2")), "");
    EXPECT_EQ(refusal(line("-1e-999")), "");
    EXPECT_EQ(refusal(line("1E-999")), "");
    EXPECT_EQ(refusal("\xef\xbb\xbf" + good + "\n\n"), "");
    std::string crlf;
    for (const char c : good) crlf += c == '\n' ? std::string("\r\n") : std::string(1, c);
    EXPECT_EQ(refusal(crlf), "");
}

TEST(Reader, ReadsPointsWhateverTheLocale)
{
    const char* const names[] = {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8"};
    for (const char* name : names)
        if (std::setlocale(LC_NUMERIC, name)) break;
    const Drawing drawing = read({"LINE 10=0.1 20=1234.5678901234567 11=1 21=1"});
    std::setlocale(LC_NUMERIC, "C");
    EXPECT_EQ(drawing.figures.at(0).points.first(), tav::Point2DF(0.1, 1234.5678901234567));
}

TEST(Figures, BoxesReachAsFarAsTheArcs)
{
    for (const double bulge : {0.0, 0.1, -0.1, 0.5, 1.0, -1.0, 2.5, -2.5, 40.0})
        for (const double degrees : {0.0, 33.0, 90.0, 200.0, 300.0}) {
            SCOPED_TRACE(std::to_string(bulge) + " at " + std::to_string(degrees));
            const tav::Point2DF from(3, -7), to = pointOnCircle(from, 2, degrees);
            Box expected;
            for (double t = 0; t <= 1; t += 0x1p-12) {
                // The chord from `from`, by the inscribed angle.
                const double half = 2 * std::atan(bulge);
                const double length = 2 * (bulge == 0 ? t : std::sin(t * half) / std::sin(half));
                expected.add(
                    pointOnCircle(from, length, degrees - (1 - t) * half * 180 / std::numbers::pi));
            }
            const Box box = segmentBox(from, to, bulge);
            const double slack = 2 * (1 + bulge * bulge) * 1e-6 + 1e-9;
            EXPECT_NEAR(box.minX, expected.minX, slack);
            EXPECT_NEAR(box.minY, expected.minY, slack);
            EXPECT_NEAR(box.maxX, expected.maxX, slack);
            EXPECT_NEAR(box.maxY, expected.maxY, slack);
        }
}

}  // namespace
