// The program itself: what it answers, with which status, and which files it leaves.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <cmath>
#include <nlohmann/json.hpp>
#include <numbers>
#include <random>
#include <thread>

#include "app/dxf_reader.h"
#include "app/figures.h"
#include "tests/app/support.h"

namespace {

using namespace calcora::app;
using app_tests::dxfText;
using app_tests::lineNote;
using app_tests::readFile;
using app_tests::Scratch;
using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;

struct Answer {
    int status = -1;
    std::string out;
    std::string err;
};

pid_t start(const std::vector<std::string>& words, const Scratch& scratch)
{
    const pid_t child = fork();
    if (child != 0) return child;
    const auto redirect = [&](const char* name, int descriptor) {
        dup2(open(scratch.path(name).c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), descriptor);
    };
    redirect("stdout", STDOUT_FILENO);
    redirect("stderr", STDERR_FILENO);
    std::vector<char*> arguments = {const_cast<char*>(CALCORA_PROGRAM)};
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    execv(CALCORA_PROGRAM, arguments.data());
    _exit(127);
}

Answer finish(pid_t child, const Scratch& scratch)
{
    int status = 0;
    waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status),
            readFile(scratch.path("stdout")), readFile(scratch.path("stderr"))};
}

Answer run(const std::vector<std::string>& words)
{
    const Scratch scratch;
    return finish(start(words, scratch), scratch);
}

json runJson(std::vector<std::string> words)
{
    words.insert(words.begin(), "loops");
    words.push_back("--json");
    const Answer answer = run(words);
    EXPECT_EQ(answer.status, 0) << answer.err;
    return json::parse(answer.out, nullptr, false);
}

/// A square of 10 with a disc in it and a line across that goes on for 2 beyond the right side.
const std::vector<std::string> kSquareWithDisc = {
    "LWPOLYLINE 8=Plot 90=4 70=1 10=0 20=0 10=10 20=0 10=10 20=10 10=0 20=10",
    "CIRCLE 8=Disc 10=7 20=8 40=1", "LINE 8=Fence 10=0 20=5 11=12 21=5", "TEXT 8=Names 1=x",
    "LINE 8=Fence 10=12 20=5 11=0 21=5"};

TEST(Command, ExplainsItself)
{
    EXPECT_THAT(run({"--version"}).out, StartsWith("calcora "));
    const Answer help = run({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.out, testing::AllOf(HasSubstr("loops"), HasSubstr("classes")));
    EXPECT_THAT(run({"loops", "--help"}).out, HasSubstr("--snap"));
    const json classes = json::parse(run({"classes", "--json"}).out, nullptr, false);
    ASSERT_EQ(classes["classes"].size(), 6u);
    EXPECT_EQ(classes["classes"][3]["interfaces"][0],
              json({{"name", "IDataGeo"}, {"id", -1142176994}}));
}

TEST(Command, FindsAndDescribesLoops)
{
    const Scratch scratch;
    const std::string input = scratch.write("in.dxf", dxfText(kSquareWithDisc));
    const json answer =
        runJson({input, "-o", scratch.path("out.dxf"), "--svg", scratch.path("out.svg")});
    EXPECT_EQ(answer["entities"], json({{"CIRCLE", 1}, {"LINE", 2}, {"LWPOLYLINE", 1}}));
    EXPECT_EQ(answer["skipped"], json({{"TEXT", 1}}));
    EXPECT_EQ(answer["segments"], 8);
    EXPECT_EQ(answer["scale"], 0);
    EXPECT_EQ(answer["interrupted"], false);
    EXPECT_GT(answer["seconds"], 0);

    // Smallest first; the disc lies in the upper half and adds nothing to the total.
    const json& loops = answer["loops"];
    ASSERT_EQ(loops.size(), 3u);
    const double pi = std::numbers::pi;
    EXPECT_NEAR(loops[0]["area"], pi, 1e-12);
    EXPECT_NEAR(loops[0]["length"], 2 * pi, 1e-12);
    EXPECT_EQ(loops[0]["arcs"], 2);
    EXPECT_EQ(loops[0]["nested"], true);
    EXPECT_EQ(loops[1]["area"], 50);
    EXPECT_EQ(loops[1]["vertices"], 4);
    EXPECT_EQ(loops[2]["length"], 30);
    EXPECT_NEAR(answer["area"], 100, 1e-12);
    EXPECT_NEAR(answer["area_sum"], 100 + pi, 1e-12);
    EXPECT_NEAR(answer["smallest_area"], pi, 1e-12);
    EXPECT_EQ(answer["largest_area"], 50);
    EXPECT_LT(
        std::hypot(double(loops[0]["inner_point"][0]) - 7, double(loops[0]["inner_point"][1]) - 8),
        1);

    // The fence, drawn twice, leaves one piece, with its free end.
    ASSERT_EQ(answer["dangles"].size(), 1u);
    const json& fence = answer["dangles"][0];
    EXPECT_EQ(fence["place"], json({12.0, 5.0}));
    EXPECT_EQ(fence["layer"], "Fence");
    EXPECT_EQ(fence["free_end"], true);
    EXPECT_NEAR(fence["length"], 2, 1e-12);

    const Drawing written = readDxf(scratch.path("out.dxf"), {});
    ASSERT_EQ(written.figures.size(), 3u);
    EXPECT_EQ(written.layers, std::vector<std::string>{"LOOPS"});
    EXPECT_EQ(written.figures[0].bulges, (Values{1, 1}));
    EXPECT_TRUE(written.figures[2].closed);
    const std::string svg = readFile(scratch.path("out.svg"));
    EXPECT_THAT(svg, HasSubstr("A90 90 0"));
    EXPECT_THAT(svg, HasSubstr("</svg>"));

    const Answer table = run({"loops", input});
    for (const char* part : {"in.dxf", "LINE 2", "TEXT 1", "segments", "free end at 12, 5", "100"})
        EXPECT_THAT(table.out, HasSubstr(part));
    EXPECT_EQ(table.err, "");
}

TEST(Command, TakesLayersOutlinesAndGaps)
{
    const Scratch scratch;
    const std::string input = scratch.write("in.dxf", dxfText(kSquareWithDisc));
    const json plot = runJson({input, "--layer", "plot", "DISC"});
    EXPECT_EQ(plot["loops"].size(), 2u);
    EXPECT_EQ(plot["on_other_layers"], 3);

    // The wall between the halves bounds no outline, and is no dangle all the same.
    const json outlines = runJson({input, "--outer"});
    EXPECT_EQ(outlines["loops"].size(), 2u);
    EXPECT_NEAR(outlines["area"], 100, 1e-12);
    EXPECT_EQ(outlines["dangles"].size(), 1u);

    // Four bars around a hole of 4 by 4, each turning its own way.
    const std::string bars = scratch.write(
        "bars.dxf", dxfText({"LWPOLYLINE 90=4 70=1 10=0 20=0 10=8 20=0 10=8 20=2 10=0 20=2",
                             "LWPOLYLINE 90=4 70=1 10=0 20=6 10=0 20=8 10=8 20=8 10=8 20=6",
                             "LWPOLYLINE 90=4 70=1 10=0 20=2 10=2 20=2 10=2 20=6 10=0 20=6",
                             "LWPOLYLINE 90=4 70=1 10=6 20=2 10=8 20=2 10=8 20=6 10=6 20=6"}));
    const json gaps = runJson({bars, "--directed"});
    EXPECT_EQ(gaps["kind"], "gaps");
    ASSERT_EQ(gaps["loops"].size(), 1u);
    EXPECT_NEAR(gaps["area"], 16, 1e-9);
    EXPECT_TRUE(gaps["dangles"].is_null());
}

TEST(Command, TellsLoopsInsideAnotherFromItsNeighbours)
{
    // A ring with so many scallops, inwards and outwards, that its edges are asked by place.
    std::string ring = "LWPOLYLINE 70=1";
    std::ostringstream vertices;
    for (int i = 0; i < 400; ++i) {
        const tav::Point2DF at = pointOnCircle({0, 0}, 100, i * 0.9);
        vertices << " 10=" << at.x() << " 20=" << at.y() << " 42=" << (i % 2 ? 0.3 : -0.3);
    }
    std::vector<std::string> notes = {ring + vertices.str()};
    int inside = 0;
    for (double x = -126.5; x < 130; x += 11)
        for (double y = -126.5; y < 130; y += 11) {
            const double away = std::hypot(x, y);
            if (std::fabs(away - 100) < 3) continue;
            inside += away < 100;
            std::ostringstream disc;
            disc << "CIRCLE 10=" << x << " 20=" << y << " 40=0.5";
            notes.push_back(disc.str());
        }
    // A neighbour that shares an edge with the ring, and one that touches it from within.
    const tav::Point2DF a = pointOnCircle({0, 0}, 100, 0.9), b = pointOnCircle({0, 0}, 100, 0);
    notes.push_back(lineNote(a.x(), a.y(), 140, 1));
    notes.push_back(lineNote(140, 1, b.x(), b.y()));
    notes.push_back(lineNote(b.x(), b.y(), 90, 1));
    notes.push_back(lineNote(90, 1, 90, -1));
    notes.push_back(lineNote(90, -1, b.x(), b.y()));
    const Scratch scratch;
    const json answer = runJson({scratch.write("in.dxf", dxfText(notes)), "--scale", "0"});
    int nested = 0;
    for (const json& loop : answer["loops"]) nested += static_cast<bool>(loop["nested"]);
    EXPECT_GT(inside, 100);
    EXPECT_EQ(nested, inside + 1);
    EXPECT_EQ(answer["loops"].size(), notes.size() - 3);
}

TEST(Command, SnapsAndScales)
{
    const Scratch scratch;
    // A square of 1e-2 whose corners miss each other by 1e-4, in degrees.
    std::vector<std::string> notes;
    const double x = 8.25, y = 47.5, s = 0.01, gap = 1e-4;
    notes.push_back(lineNote(x, y, x + s, y));
    notes.push_back(lineNote(x + s, y + gap, x + s, y + s));
    notes.push_back(lineNote(x + s - gap, y + s, x, y + s));
    notes.push_back(lineNote(x, y + s - gap, x, y + gap));
    const std::string input = scratch.write("in.dxf", dxfText(notes));
    const json open = runJson({input});
    EXPECT_EQ(open["scale"], 3);
    EXPECT_EQ(open["loops"].size(), 0u);
    EXPECT_EQ(open["dangles"].size(), 4u);
    const json closed = runJson({input, "--snap", "0.0002", "-o", scratch.path("out.dxf")});
    EXPECT_EQ(closed["loops"].size(), 1u);
    EXPECT_EQ(closed["dangles"].size(), 0u);
    // What was read comes back bit for bit, whatever the scale.
    const Points corners = readDxf(scratch.path("out.dxf"), {}).figures.at(0).points;
    const Points given = {{x, y}, {x + s, y}, {x + s, y + s}, {x, y + s}};
    EXPECT_THAT(std::vector(corners.begin(), corners.end()),
                testing::UnorderedElementsAreArray(given.begin(), given.end()));
    EXPECT_EQ(runJson({input, "--scale", "-2"})["scale"], -2);
    EXPECT_EQ(runJson({input, "--scale=20"})["scale"], 20);
}

TEST(Command, TellsBadInputInOneLineAndLeavesNoFile)
{
    const Scratch scratch;
    const std::string good = scratch.write("good.dxf", dxfText(kSquareWithDisc));
    const std::string text = dxfText(kSquareWithDisc);
    const std::string bad = scratch.write("bad.dxf", dxfText({"LINE 10=nan 20=0 11=1 21=1"}));
    const std::string huge = scratch.write("huge.dxf", dxfText({"CIRCLE 10=0 20=0 40=1e308"}));
    const std::string cut = scratch.write("cut.dxf", text.substr(0, text.size() - 9));
    const std::string none = scratch.path("none.dxf");
    const std::string out = scratch.path("out.dxf");
    const int filesBefore = scratch.fileCount();
    struct Case {
        std::vector<std::string> words;
        std::string told;
    };
    const std::vector<Case> cases = {
        {{}, "subcommand"},
        {{"smothe"}, "smothe"},
        {{"loops"}, "IN.dxf"},
        {{"loops", none}, "no such file"},
        {{"loops", scratch.path("."), "-o", out}, "a folder"},
        {{"loops", bad, "-o", out}, "bad.dxf:8: LINE"},
        {{"loops", huge, "-o", out}, "huge.dxf:"},
        {{"loops", cut, "-o", out, "--json"}, "cut off"},
        {{"loops", good, "--colour"}, "--colour"},
        {{"loops", good, "--snap", "-1"}, "--snap"},
        {{"loops", good, "--snap", "nan"}, "--snap"},
        {{"loops", good, "--scale", "2.5"}, "--scale"},
        {{"loops", good, "--scale", "100"}, "--scale"},
        {{"loops", good, "--outer", "--directed"}, "--outer"},
        {{"loops", good, "--directed", "--snap", "1"}, "--snap"},
        {{"loops", good, "--layer", "plots", "-o", out}, "no layer"},
        {{"loops", good, "-o", out, "--svg", scratch.path("no/folder.svg")}, "folder.svg: cannot"},
        {{"loops", good, "-o", out, "--svg", out}, "both"},
        {{"loops", good, "-o", good}, "replace the input"},
        {{"loops", good, "--svg", "/dev/full"}, "/dev/full: cannot be written"},
        {{"--plugin-dir", scratch.path("."), "loops", good, "-o", out},
         "libquon_calcora.so not found"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.words));
        const Answer answer = run(c.words);
        EXPECT_EQ(answer.status, 2);
        EXPECT_THAT(answer.err, StartsWith("calcora: "));
        EXPECT_THAT(answer.err, HasSubstr(c.told));
        EXPECT_EQ(std::count(answer.err.begin(), answer.err.end(), '\n'), 1);
        EXPECT_EQ(answer.out, "");
        EXPECT_EQ(scratch.fileCount(), filesBefore);
    }
    EXPECT_EQ(readFile(good), text);
}

TEST(Command, StopsOnRequest)
{
    // Long lines all over each other: several seconds of crossings. One by one they are of interest
    // to some commands, as one long line to others.
    const Scratch scratch;
    std::mt19937 random(1);
    std::uniform_real_distribution<double> place(0, 1000);
    std::vector<std::string> notes;
    std::ostringstream tangle;
    tangle << "LWPOLYLINE 8=A 90=3000 70=0";
    for (int i = 0; i < 3000; ++i) {
        notes.push_back(lineNote(place(random), place(random), place(random), place(random)));
        tangle << " 10=" << place(random) << " 20=" << place(random);
    }
    notes.push_back(tangle.str());
    const std::string input = scratch.write("in.dxf", dxfText(notes));
    for (std::vector<std::string> words :
         {std::vector<std::string>{"loops"}, {"offset", "--distance", "0.01"}}) {
        const Scratch outputs;
        const Scratch streams;
        words.insert(words.end(), {input, "-o", outputs.path("out.dxf"), "--json"});
        const pid_t child = start(words, streams);
        // The file in the making appears when reading is done and the work begins.
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (outputs.fileCount() == 0 && std::chrono::steady_clock::now() < deadline)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        kill(child, SIGINT);
        const Answer answer = finish(child, streams);
        EXPECT_EQ(answer.status, 130) << words[0];
        EXPECT_EQ(json::parse(answer.out, nullptr, false)["interrupted"], true) << words[0];
        EXPECT_EQ(outputs.fileCount(), 0) << words[0];
    }
}

/// Of every loop written: closed, and with the area that its vertices and bulges give by themselves.
double areaByChords(const Figure& figure)
{
    double area = 0;
    for (int i = 0; i < figure.points.size(); ++i) {
        const tav::Point2DF& a = figure.points.at(i);
        const tav::Point2DF& b = figure.points.at((i + 1) % figure.points.size());
        const double sweep = 4 * std::atan(figure.bulges.at(i));
        area += (a.x() * b.y() - b.x() * a.y()) / 2;
        if (sweep == 0) continue;
        const double radius = a.distanceTo(b) / 2 / std::fabs(std::sin(sweep / 2));
        area += radius * radius / 2 * (sweep - std::sin(sweep));
    }
    return std::fabs(area);
}

TEST(Command, WorksOnTheSampleDrawing)
{
    const Scratch scratch;
    const json answer =
        runJson({std::string(CALCORA_EXAMPLES) + "/site_plan.dxf", "-o", scratch.path("out.dxf")});
    // Streets, plots and gardens leave nothing of the 320 by 220 site.
    EXPECT_NEAR(answer["area"], 320 * 220, 1e-6);
    EXPECT_EQ(answer["dangles"].size(), 5u);
    EXPECT_EQ(answer["left_out"], 0);
    const Drawing written = readDxf(scratch.path("out.dxf"), {});
    ASSERT_EQ(written.figures.size(), answer["loops"].size());
    for (std::size_t i = 0; i < written.figures.size(); ++i) {
        const json& loop = answer["loops"][i];
        EXPECT_NEAR(areaByChords(written.figures[i]), loop["area"],
                    1e-7 * (1 + double(loop["area"])));
        EXPECT_TRUE(loop["inner_point"].is_array());
    }
}

TEST(Command, WorksOnTheBordersOfTheStates)
{
    const std::string input = std::string(CALCORA_SHARED_DATA) + "/us_states.dxf";
    if (!std::filesystem::exists(input)) GTEST_SKIP() << "no sample data here";
    // An exact polygonizer finds two slivers of 1e-14 more, where a border is drawn twice with one
    // digit changed.
    const json answer = runJson({input});
    EXPECT_EQ(answer["loops"].size(), 106u);
    EXPECT_NEAR(answer["area"], 94.717208, 1e-6);
    EXPECT_EQ(answer["dangles"].size(), 1u);
    EXPECT_NEAR(runJson({input, "--outer"})["area"], 94.717208, 1e-6);
}

}  // namespace
