// What is written: numbers, DXF, SVG, files; and the exact scaling.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
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

using namespace calcora::app;
using app_tests::readFile;
using app_tests::Scratch;
using testing::HasSubstr;

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
    const Scratch scratch;
    OutputFile out(scratch.path("out.dxf"));
    writeDxf(out, {{"Zäune", 1}, {"LOOPS", 5}, {"0", 7}}, figures);
    out.commit();

    const Drawing back = readDxf(scratch.path("out.dxf"), {});
    EXPECT_THAT(back.layers, testing::ElementsAre("Z\\U+00E4une", "LOOPS", "0"));
    ASSERT_EQ(back.figures.size(), figures.size());
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
    Figure figure;
    figure.points = {{0, 0}, {1, 0}};
    figure.bulges = {1, 1};
    figure.closed = true;
    writeDxf(out, {{"LOOPS", 5}}, {figure, figure, figure});
    out.commit();
    std::istringstream lines(readFile(scratch.path("out.dxf")));
    std::string code;
    std::string value;
    std::vector<std::string> handles;
    std::vector<std::string> owners;
    std::string seed;
    while (std::getline(lines, code) && std::getline(lines, value)) {
        if (code == "5" && seed.empty())
            seed = value;
        else if (code == "5" || code == "105")
            handles.push_back(value);
        if (code == "330" && value != "0") owners.push_back(value);
    }
    const std::set<std::string> distinct(handles.begin(), handles.end());
    EXPECT_EQ(distinct.size(), handles.size());
    for (const std::string& owner : owners) EXPECT_TRUE(distinct.contains(owner)) << owner;
    for (const std::string& handle : handles)
        EXPECT_LT(std::stol(handle, nullptr, 16), std::stol(seed, nullptr, 16));
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
    struct Case {
        const char* what;
        tav::Point2DF from, to;
        double bulge;
        const char* data;
    };
    const Case cases[] = {
        {"straight", {0, 0}, {120, 90}, 0, "M24 924L1224 24"},
        {"quarter, counter-clockwise",
         {10, 0},
         {0, 10},
         std::tan(std::atan(1.0) / 2),
         "M124 924A100 100 0 0 0 24 824"},
        {"quarter, clockwise",
         {0, 10},
         {10, 0},
         -std::tan(std::atan(1.0) / 2),
         "M24 824A100 100 0 0 1 124 924"},
        {"half", {0, 0}, {20, 0}, 1, "M24 924A100 100 0 0 0 224 924"},
        {"three quarters",
         {10, 0},
         {0, 10},
         -std::tan(std::atan(1.0) * 1.5),
         "M124 924A100 100 0 1 1 24 824"},
        {"so flat that nobody sees it", {0, 0}, {1, 0}, 1e-4, "M24 924L34 924"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Figure figure;
        figure.points = {c.from, c.to};
        figure.bulges = {c.bulge, 0};
        EXPECT_THAT(svgOf(figure, extent), HasSubstr(std::string("d=\"") + c.data + "\""));
    }
    // Closed: a straight end is left to Z, an arc at the end is drawn.
    Figure disc;
    disc.points = {{0, 0}, {20, 0}};
    disc.bulges = {1, 1};
    disc.closed = true;
    const std::string svg = svgOf(disc, extent);
    EXPECT_THAT(svg, HasSubstr("\"M24 924A100 100 0 0 0 224 924A100 100 0 0 0 24 924Z\""));
    EXPECT_THAT(svg, HasSubstr("<title>a &lt;b&gt; &amp; &quot;c&quot;</title>"));
}

TEST(SvgWriter, FitsAnyExtentToThePage)
{
    Figure figure;
    figure.points = {{5e5, 4e6}, {5e5, 4e6}};
    figure.bulges = {0, 0};
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
    for (const double length : lengths) {
        Figure figure;
        figure.points = {{offset, 0}, {offset, length}};
        figure.bulges = {0, 0};
        drawing.figures.push_back(figure);
    }
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
    struct Case {
        const char* what;
        std::vector<double> lengths;
        double offset;
        int exponent;
        int shortSegments;
    };
    std::vector<double> oneInThousand(1000, 1.0);
    oneInThousand[5] = 0.01;
    std::vector<double> twoInThousand = oneInThousand;
    twoInThousand[6] = 0.02;
    const std::vector<Case> cases = {
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
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const ScaleChoice choice = chooseScale(drawingOf(c.lengths, c.offset));
        EXPECT_EQ(choice.exponent, c.exponent);
        EXPECT_EQ(choice.shortSegments, c.shortSegments);
    }
}

}  // namespace
