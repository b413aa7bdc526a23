// What is written: numbers, DXF, SVG, files; and the exact scaling.
#include <sys/stat.h>

#include <cmath>
#include <csignal>
#include <random>

#include "app/dxf_reader.h"
#include "app/dxf_writer.h"
#include "app/exact_scale.h"
#include "app/output_file.h"
#include "app/progress.h"
#include "app/svg_writer.h"
#include "app/text.h"
#include "app/user_error.h"
#include "tests/app/support.h"

namespace {

using namespace app_tests;
using namespace calcora::app;
using testing::HasSubstr;

Figure figureOf(const Points& points, const Values& bulges, bool closed = false)
{
    Figure figure;
    figure.points = points;
    figure.bulges = bulges;
    figure.closed = closed;
    return figure;
}

/// Doubles of all sizes that drawings hold, every bit of them in use.
double anyNumber(std::mt19937_64& random)
{
    std::uniform_real_distribution<double> mantissa(-1, 1);
    return std::ldexp(mantissa(random), std::uniform_int_distribution<int>(-40, 45)(random));
}

TEST(DxfWriter, ComesBackBitForBit)
{
    std::mt19937_64 random(7);
    std::vector<Figure> figures;
    for (int i = 0; i < 200; ++i) {
        Figure figure;
        figure.closed = i % 2 == 0;
        figure.layer = i % 3;
        const bool inSpace = i % 5 == 4;
        const double height = i % 7 == 0 ? anyNumber(random) : 0.0;
        for (int k = 0; k < 2 + i % 6; ++k) {
            figure.points.append({anyNumber(random), anyNumber(random)});
            figure.bulges.append(inSpace || k % 2 ? 0.0 : anyNumber(random));
            figure.elevations.append(inSpace ? anyNumber(random) : height);
        }
        if (!figure.closed) figure.bulges.last() = 0.0;
        if (!inSpace && height == 0.0) figure.elevations.clear();
        figures.push_back(figure);
    }
    // With arcs a figure has the elevation of its first point.
    figures.push_back(figureOf({{0, 0}, {1, 0}}, {0.5, 0}));
    figures.back().elevations = {3, 4};
    const Scratch scratch;
    OutputFile out(scratch.path("out.dxf"));
    // Latin letters, ideographs, bytes that are no UTF-8.
    writeDxf(out, {{"Zäune", 1}, {"LOOPS 日\xc3", 5}, {"\xf1\xe6\x97x", 7}}, figures);
    out.commit();

    const Drawing back = readDxf(scratch.path("out.dxf"), {});
    EXPECT_THAT(back.layers,
                testing::ElementsAre("Z\\U+00E4une", "LOOPS \\U+65E5\xc3", "\xf1\xe6\x97x"));
    ASSERT_EQ(back.figures.size(), figures.size());
    figures.back().elevations = {3, 3};
    for (std::size_t i = 0; i < figures.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(back.figures[i].points, figures[i].points);
        EXPECT_EQ(back.figures[i].bulges, figures[i].bulges);
        EXPECT_EQ(back.figures[i].elevations, figures[i].elevations);
        EXPECT_EQ(back.figures[i].closed, figures[i].closed);
        EXPECT_EQ(back.figures[i].layer, figures[i].layer);
    }
}

TEST(DxfWriter, GivesEveryObjectAHandleOfItsOwn)
{
    const Scratch scratch;
    OutputFile out(scratch.path("out.dxf"));
    const Figure disc = figureOf({{0, 0}, {1, 0}}, {1, 1}, true);
    writeDxf(out, {{"LOOPS", 5}}, {disc, disc, disc});
    out.commit();
    std::istringstream lines(readFile(scratch.path("out.dxf")));
    std::string code, value;
    std::vector<long> handles, owners;  // the first is the number of the next one to be made
    while (std::getline(lines, code) && std::getline(lines, value)) {
        if (code == "5" || code == "105") handles.push_back(std::stol(value, nullptr, 16));
        if (code == "330" && value != "0") owners.push_back(std::stol(value, nullptr, 16));
    }
    const std::set<long> distinct(handles.begin(), handles.end());
    EXPECT_EQ(distinct.size(), handles.size());
    for (const long owner : owners) EXPECT_TRUE(distinct.contains(owner)) << owner;
    EXPECT_EQ(*distinct.rbegin(), handles.at(0));
}

std::string svgOf(const Figure& figure, const Box& extent)
{
    const Scratch scratch;
    OutputFile out(scratch.path("out.svg"));
    SvgPicture picture(out, extent, "a <b> & \"c\"");
    picture.beginGroup("loops", {.stroke = "#000000"});
    picture.figure(figure.points, figure.bulges, figure.closed);
    picture.endGroup();
    picture.finish();
    out.commit();
    return readFile(scratch.path("out.svg"));
}

TEST(SvgWriter, DrawsTrueArcsWithYUp)
{
    // A page of 120 by 90 units of 10 pixels, with a margin of 24.
    const Box extent{0, 0, 120, 90};
    const std::tuple<const char*, tav::Point2DF, tav::Point2DF, double, const char*> cases[] = {
        {"straight", {0, 0}, {120, 90}, 0, "M24 924L1224 24"},
        {"counter-clockwise", {10, 0}, {0, 10}, 90, "M124 924A100 100 0 0 0 24 824"},
        {"clockwise", {0, 10}, {10, 0}, -90, "M24 824A100 100 0 0 1 124 924"},
        {"half", {0, 0}, {20, 0}, 180, "M24 924A100 100 0 0 0 224 924"},
        {"three quarters", {10, 0}, {0, 10}, -270, "M124 924A100 100 0 1 1 24 824"},
        {"so flat that nobody sees it", {0, 0}, {1, 0}, 0.02, "M24 924L34 924"},
    };
    for (const auto& [what, from, to, degrees, data] : cases) {
        SCOPED_TRACE(what);
        EXPECT_THAT(svgOf(figureOf({from, to}, {std::tan(degrees * M_PI / 720), 0}), extent),
                    HasSubstr(std::string("d=\"") + data + "\""));
    }
    // Closed: a straight end is left to Z, an arc at the end is drawn.
    const std::string svg = svgOf(figureOf({{0, 0}, {20, 0}}, {1, 1}, true), extent);
    EXPECT_THAT(svg, HasSubstr("\"M24 924A100 100 0 0 0 224 924A100 100 0 0 0 24 924Z\""));
    EXPECT_THAT(svg, HasSubstr("<title>a &lt;b&gt; &amp; &quot;c&quot;</title>"));
}

TEST(SvgWriter, FitsAnyExtentToThePage)
{
    const Figure figure = figureOf({{5e5, 4e6}, {5e5, 4e6}}, {0, 0});
    for (const Box& extent :
         {Box{5e5, 4e6, 5e5, 4e6}, Box{5e5, 4e6, 5e5, 4e6 + 1}, Box{5e5, 4e6, 5e5 + 1e-9, 4e6},
          Box{-1e15, -1e15, 1e15, 1e15}, Box{}}) {
        const std::string svg = svgOf(figure, extent);
        EXPECT_THAT(svg, testing::Not(testing::ContainsRegex("nan|inf|e\\+")));
        double width = 0;
        double height = 0;
        const std::size_t box = svg.find("viewBox=\"0 0 ");
        ASSERT_EQ(std::sscanf(svg.c_str() + box, "viewBox=\"0 0 %lf %lf\"", &width, &height), 2);
        EXPECT_TRUE(width > 100 && width < 1300 && height > 100 && height < 1000);
    }
}

TEST(Text, WritesNumbersForPeopleAndPrograms)
{
    EXPECT_EQ(shortText(94.7172081234), "94.71720812");
    EXPECT_EQ(shortText(-0.0), "0");
    EXPECT_EQ(shortText(2500000), "2500000");
    EXPECT_EQ(fixedText(-0.00001, 3), "0");
    EXPECT_EQ(fixedText(12.5004, 3), "12.5");
    EXPECT_EQ(countText(1234567), "1,234,567");
    EXPECT_EQ(countText(-123), "-123");
    EXPECT_EQ(exactText(100000.0), "100000");
    EXPECT_EQ(exactText(0.1), "0.1");
}

TEST(OutputFile, IsThereWholeOrNotAtAll)
{
    const Scratch scratch;
    const std::string path = scratch.write("old.txt", "old");
    chmod(path.c_str(), 0640);
    {
        OutputFile abandoned(path);
        abandoned.write(std::string(1 << 20, 'x'));
        const Interrupt interrupt;
        raise(SIGINT);
        EXPECT_THROW(abandoned.write(std::string(1 << 20, 'x')), Interrupted);
    }
    EXPECT_EQ(readFile(path), "old");
    EXPECT_EQ(scratch.fileCount(), 1);

    std::filesystem::create_symlink(path, scratch.path("link.txt"));
    OutputFile replaced(scratch.path("link.txt"));
    replaced.write("new");
    EXPECT_EQ(readFile(path), "old");
    replaced.commit();
    EXPECT_EQ(readFile(path), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(scratch.path("link.txt")));
    struct stat status {};
    stat(path.c_str(), &status);
    EXPECT_EQ(status.st_mode & 0777, 0640u);
    EXPECT_EQ(scratch.fileCount(), 2);

    for (const std::string& bad : {scratch.path("no/such/folder.txt"), scratch.path(".")})
        EXPECT_THROW(OutputFile{bad}, UserError) << bad;
    OutputFile full("/dev/full");
    full.write("text");
    EXPECT_THROW(full.commit(), UserError);
}

Drawing drawingOf(const std::vector<double>& lengths, double offset)
{
    Drawing drawing;
    for (const double length : lengths)
        drawing.figures.push_back(figureOf({{offset, 0}, {offset, length}}, {0, 0}));
    return drawing;
}

TEST(ExactScale, ChangesNoDigit)
{
    std::mt19937_64 random(3);
    Points points;
    for (int i = 0; i < 1000; ++i) points.append({anyNumber(random), anyNumber(random)});
    for (const int exponent : {-64, -3, 0, 1, 17, 64}) {
        const ExactScale scale(exponent);
        EXPECT_EQ(scale.unscaled(scale.scaled(points)), points) << exponent;
    }
    EXPECT_EQ(ExactScale(3).unscaledArea(640), 10);
}

TEST(ExactScale, IsChosenByTheShortSegments)
{
    std::vector<double> oneInThousand(1000, 1.0);
    oneInThousand[5] = 0.01;
    std::vector<double> twoInThousand = oneInThousand;
    twoInThousand[6] = 0.02;
    const std::tuple<const char*, std::vector<double>, double, int, int> cases[] = {
        {"nothing", {}, 0, 0, 0},
        {"long enough", {0.05, 3}, 0, 0, 0},
        {"just too short", {0.0499999, 3}, 0, 1, 0},
        {"degrees", {0.001, 2}, 22, 6, 0},
        {"one in a thousand may stay", oneInThousand, 0, 0, 1},
        {"two may not: the longer of them decides", twoInThousand, 0, 2, 1},
        {"no length at all does not count", {0, 0, 1}, 0, 0, 0},
        {"rounding does not count", {1e-9, 1}, 4e6, 0, 0},
        {"the coordinates leave no room", {0.02, 1}, 4e9, 1, 1},
        {"nor here", {0.01}, 8589934592.0, 0, 1},
    };
    for (const auto& [what, lengths, offset, exponent, shortSegments] : cases) {
        SCOPED_TRACE(what);
        const ScaleChoice choice = chooseScale(drawingOf(lengths, offset));
        EXPECT_EQ(choice.exponent, exponent);
        EXPECT_EQ(choice.shortSegments, shortSegments);
    }
}

}  // namespace
