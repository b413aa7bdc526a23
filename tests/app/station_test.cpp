// Stations along axes: against rotation of the start radius, and as the command tells them.
#include <cmath>
#include <numbers>

#include "app/axis.h"
#include "app/dxf_reader.h"
#include "tests/app/support.h"

namespace {

using namespace app_tests;
using namespace calcora::app;
using nlohmann::json;
using tav::Point2DF;
using testing::HasSubstr;

constexpr double kPi = std::numbers::pi;

/// A straight, an arc (sweep positive to the left), a straight; in units of `size`.
struct Bend {
    Point2DF start;
    double direction = 0;
    double sweep = 0;
    double size = 1;
    double radius = 40;
    double before = 30;
    double after = 25;

    double arcLength() const { return std::fabs(sweep) * radius; }
    double length() const { return (before + arcLength() + after) * size; }

    Station at(double along) const
    {
        const double s = along / size;
        const double onArc = std::clamp(s - before, 0.0, arcLength());
        const double turn = onArc / radius * (sweep < 0 ? -1 : 1);
        const double straight = std::min(s, before), rest = std::max(s - before - arcLength(), 0.0);
        // The centre lies a quarter turn beside the arc's start; the start radius is turned about it.
        const double signedRadius = std::copysign(radius, sweep);
        const double heading = direction + turn;
        const double x = straight * std::cos(direction) + rest * std::cos(heading) +
                         signedRadius * (std::sin(heading) - std::sin(direction));
        const double y = straight * std::sin(direction) + rest * std::sin(heading) -
                         signedRadius * (std::cos(heading) - std::cos(direction));
        return {along, {start.x() + x * size, start.y() + y * size}, heading, 0};
    }

    Figure figure() const
    {
        Figure figure;
        for (const double s : {0.0, before, before + arcLength()})
            figure.points.append(at(s * size).place);
        figure.points.append(at(length()).place);
        figure.bulges = {0.0, std::tan(sweep / 4), 0.0, 0.0};
        return figure;
    }
};

TEST(Axis, RunsAsTurningTheStartRadiusTells)
{
    Host host(std::filesystem::path(CALCORA_PLUGIN).parent_path().string());
    host.loadGeometry();
    // Small and large arcs to either side; about the right angle and the half circle, where the
    // module's angles fold; far from the origin; in small units and in huge ones.
    const std::vector<Bend> bends = {
        {{0, 0}, 0, 0.7},
        {{0, 0}, 0, -0.7},
        {{5e5, 4e6}, 2, kPi / 2 + 5e-7},
        {{5e5, 4e6}, 4, -(kPi / 2 - 5e-7)},
        {{5e5, 4e6}, 5, 2.5},
        {{5e5, 4e6}, 1, -kPi},
        {{-10, 20}, 6, 1.5 * kPi},
        {{5e5, 4e6}, 3, -6.2},
        {{5e5, 4e6}, 3, 0.002, 1, 9000},
        {{5e5, 4e6}, 3, 4e-6, 1, 9e6},
        {{0, 0}, 2, -5e-5, 1, 1e6},
        {{8.5, 47.2}, 0.3, 1.2, 1e-6},
        {{8.5, 47.2}, 0.3, -4.0, 1e-6},
        {{0, 0}, 1.3, -2.2, 1e9},
    };
    for (const Bend& bend : bends) {
        SCOPED_TRACE(testing::PrintToString(bend.sweep) + " x " + std::to_string(bend.radius) +
                     " size " + std::to_string(bend.size));
        const Figure figure = bend.figure();
        Axis axis(host, figure);
        const double far = std::hypot(bend.start.x(), bend.start.y());
        const double tolerance = bend.size * 1e-9 + far * 4e-15;
        EXPECT_NEAR(axis.length(), bend.length(), tolerance * 4);
        ASSERT_EQ(axis.vertices().size(), 4u);
        EXPECT_EQ(axis.arcCount(), 1);
        for (int i = 0; i < 4; ++i)
            EXPECT_EQ(axis.at(axis.vertices()[static_cast<std::size_t>(i)]).place,
                      figure.points.at(i));
        for (int i = 0; i <= 40; ++i) {
            const double along = bend.length() * i / 40;
            const Station found = axis.at(along), wanted = bend.at(along);
            EXPECT_LE(found.place.distanceTo(wanted.place), tolerance * 8) << along;
            EXPECT_NEAR(std::remainder(found.direction - wanted.direction, 2 * kPi), 0,
                        tolerance / bend.size * 4)
                << along;
            const double s = along / bend.size - bend.before;
            if (s > 1e-6 && s < bend.arcLength() - 1e-6) {
                EXPECT_NEAR(found.radius / std::copysign(bend.radius * bend.size, bend.sweep), 1,
                            std::max(1e-9, tolerance / bend.size / bend.sweep / bend.sweep));
            }
            // The tick stands across the axis, its left end to the left.
            const Point2DF left = axis.beside(found, bend.size);
            EXPECT_NEAR((left.y() - found.place.y()) / bend.size, std::cos(wanted.direction),
                        tolerance / bend.size * 8);
        }
    }
}

/// A corner of 10 and 5; a half circle of radius 4 clockwise as an entity of its own; a ring of 8;
/// a point drawn as a line; something elsewhere.
const std::vector<std::string> kAxes = {
    "LWPOLYLINE 8=Axis 90=3 70=0 10=0 20=0 10=10 20=0 10=10 20=5",
    "LWPOLYLINE 8=AXIS 90=2 70=0 10=20 20=0 42=-1 10=28 20=0", "LINE 8=axis 10=3 20=3 11=3 21=3",
    "LWPOLYLINE 8=axis 90=4 70=1 10=40 20=0 10=42 20=0 10=42 20=2 10=40 20=2",
    "LINE 8=EDGE 10=0 20=0 11=50 21=9"};

TEST(StationCommand, WritesEveryStation)
{
    const Scratch scratch;
    scratch.write("in.dxf", dxfText(kAxes));
    const std::string words = "station in.dxf --layer axis --svg s.svg --every ";
    const Answer answer = run(words + "5 --tick 0.5 --csv s.csv -o s.dxf", scratch);
    EXPECT_EQ(answer.status, 0) << answer.err;
    for (const char* part : {"axis 1", "12.56637061", "LINE (no length) 1", "closed"})
        EXPECT_THAT(answer.out, HasSubstr(part));

    // At the corner the direction is that of the segment that begins; the ring ends in its start.
    const std::string csv = readFile(scratch.path("s.csv"));
    const std::string_view first =
        "axis,station,x,y,direction,radius\n"
        "1,0,0,0,0,\n1,5,5,0,0,\n1,10,10,0,90,\n1,15,10,5,90,\n2,0,20,0,90,";
    EXPECT_EQ(csv.substr(0, first.size()), first);
    EXPECT_NEAR(std::stod(csv.substr(first.size())), -4, 1e-12);
    EXPECT_THAT(csv, testing::EndsWith("3,0,40,0,0,\n3,5,41,2,180,\n3,8,40,0,270,\n"));
    EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), 12);

    const Drawing drawn = readDxf(scratch.path("s.dxf"), {{"STATIONS"}});
    ASSERT_EQ(drawn.figures.size(), 11u);
    const Points tick = drawn.figures[1].points;  // at (5, 0)
    EXPECT_LE(tick.at(0).distanceTo({5, 0.5}), 1e-12);
    EXPECT_LE(tick.at(1).distanceTo({5, -0.5}), 1e-12);
    EXPECT_EQ(readDxf(scratch.path("s.dxf"), {{"AXES"}}).figures.size(), 3u);
    EXPECT_THAT(readFile(scratch.path("s.svg")),
                testing::AllOf(HasSubstr(">12.566</text>"), HasSubstr("</svg>")));
    EXPECT_EQ(run(words + "0.011", scratch).status, 0);
    const std::string crowded = readFile(scratch.path("s.svg"));
    EXPECT_LT(std::count(crowded.begin(), crowded.end(), '('), 150) << "labels have room";
    EXPECT_THAT(crowded, HasSubstr(">12.566</text>")) << "the end's is there";

    std::vector<std::string> many;
    for (int i = 0; i < 1100; ++i)
        many.push_back(lineNote(9 * (i % 33), i / 33, 9 * (i % 33) + 8, i / 33 + 0.5));
    scratch.write("many.dxf", dxfText(many));
    EXPECT_EQ(run("station many.dxf --layer A --svg s.svg", scratch).status, 0);
    const std::string full = readFile(scratch.path("s.svg"));
    EXPECT_THAT(full, testing::Not(HasSubstr("\"vertices\""))) << "they would cover the axes";
    EXPECT_THAT(full, testing::Not(HasSubstr(">axis 1100</text>"))) << "nobody could read it";
}

TEST(StationCommand, TakesStationsAskedForOrVertices)
{
    const Scratch scratch;
    scratch.write("in.dxf", dxfText(kAxes));
    const auto axesOf = [&](const char* words) {
        return runJson("station in.dxf --layer Axis" + std::string(words), scratch)["axes"];
    };
    const json axes = axesOf(" --at 14 1");
    ASSERT_EQ(axes.size(), 3u);
    EXPECT_EQ(axes[0]["stations"][0]["point"], json({10.0, 4.0}));
    EXPECT_EQ(axes[0]["beyond"].size(), 0u);
    EXPECT_EQ(axes[1]["stations"].size(), 1u);
    EXPECT_NEAR(axes[1]["stations"][0]["point"][0], 24 - 4 * std::cos(0.25), 1e-12);
    EXPECT_NEAR(axes[1]["stations"][0]["point"][1], 4 * std::sin(0.25), 1e-12);
    EXPECT_EQ(axes[1]["beyond"], json({14.0}));
    EXPECT_NEAR(axes[1]["length"], 4 * kPi, 1e-12);

    EXPECT_THAT(run("station in.dxf --layer Axis --at 14 1", scratch).out,
                testing::ContainsRegex("axis 2 .*\n(.*\n)*    beyond the end: 14\n  axis 3"));

    const json ring = axesOf("")[2];
    EXPECT_EQ(ring["stations"].size(), 5u);
    EXPECT_EQ(ring["stations"][3]["station"], 6);
}

TEST(StationCommand, TellsBadInputInOneLineAndLeavesNoFile)
{
    const Scratch scratch;
    scratch.write("in.dxf", dxfText(kAxes));
    scratch.write("dot.dxf", dxfText({kAxes[2]}));
    const std::pair<const char*, const char*> cases[] = {
        {"in.dxf --csv s.csv", "--layer"},
        {"in.dxf --csv s.csv --layer axes", "no layer"},
        {"in.dxf --csv s.csv --layer axis --every 0", "--every"},
        {"in.dxf --csv s.csv --layer axis --every 1e-9", "1,000,000 stations"},
        {"in.dxf --csv s.csv --layer axis --every 2.5e-5", "1,000,000 stations"},
        {"in.dxf --csv s.csv --layer axis --at 3 --every 2", "--every"},
        {"in.dxf --csv s.csv --layer axis --at=-3", "--at"},
        {"in.dxf --csv s.csv --layer axis --at 16 15.001", "15.001 lies beyond the end"},
        {"in.dxf --csv s.csv --layer axis --svg s.csv", "both"},
        {"in.dxf --csv s.csv --layer axis -o ./s.csv", "both"},
        {"in.dxf --layer axis --csv in.dxf", "replace the input"},
        {"dot.dxf --csv s.csv --layer axis", "dot.dxf: nothing on the layer has a length"},
    };
    for (const auto& [words, told] : cases)
        expectRefusal(std::string("station ") + words, told, scratch);
}

}  // namespace
