// Circles, arcs through three points, reports of failed creations.
#include <gtest/gtest.h>

#include <functional>

#include "geosetup/CGeoSetUp.h"
#include "tests/support/paths.h"

namespace {

using namespace path_test;

class Construction : public PathTest {
protected:
    CGeoSetUp setUp;
    Point3DF start = kUntouched, end = kUntouched, middle = kUntouched;
};

TEST_F(Construction, MiddlesOfArcs)
{
    for (int round = 0; round < 1000; ++round) {
        const double radius = uniform(0.5, 200), sweep = uniform(0.05, 6.2), t = uniform(0.3, 0.7);
        const TurnedArc tilted = tiltedArc(random, anyPoint(100), radius, sweep);
        ASSERT_TRUE(setUp.arcThrough3Points3d(start = tilted.at(0), end = tilted.at(1),
                                              middle = tilted.at(t), start, end, middle))
            << "outputs are the inputs";
        EXPECT_POINT_NEAR(middle, tilted.at(0.5), 1e-5);
        EXPECT_EQ(start, tilted.at(0));
        EXPECT_EQ(end, tilted.at(1));

        const TurnedArc level =
            levelArc(anyPoint(100), radius, uniform(0, 7), round % 2 ? sweep : -sweep);
        ASSERT_TRUE(setUp.arcThrough3Points(start = level.at(0), end = level.at(1),
                                            middle = level.at(t), start, end, middle));
        EXPECT_POINT_NEAR(middle, inPlan(level.at(0.5)), 1e-5);
        EXPECT_EQ(start, inPlan(level.at(round % 2 ? 0 : 1))) << "counter-clockwise";
        EXPECT_EQ(end, inPlan(level.at(round % 2 ? 1 : 0)));
    }
}

TEST_F(Construction, ArcCornerCases)
{
    const std::tuple<Point3DF, Point3DF, Point3DF, bool, bool> cases[] = {
        {{1, 0, 0}, {1, 0, 2}, {0, 0, 1}, false, true},           // equal but for height
        {{0, 0, 0}, {1e-3, 0, 0}, {5e-4, 9e-4, 0}, false, true},  // a small area
        {{0.1, 0.1, 0}, {0.3, 0.3, 0}, {0.7, 0.7, 0}, false, false},
        {{kNan, 0, 0}, {1, 0, 0}, {0, 1, 0}, false, false},
        {{1e300, 0, 0}, {-1e300, 0, 0}, {0, 1e300, 0}, false, false},
    };
    for (const auto& [a, b, c, inPlan, inSpace] : cases) {
        EXPECT_EQ(setUp.arcThrough3Points(a, b, c, start, end, middle), inPlan) << a.x();
        EXPECT_EQ(middle == kUntouched, !inPlan);
        EXPECT_EQ(setUp.arcThrough3Points3d(a, b, c, start, end, middle), inSpace) << a.x();
        EXPECT_EQ(middle == kUntouched, !inSpace);
        middle = kUntouched;
    }
}

TEST_F(Construction, Circles)
{
    Point3DF a(0, 1, 5), b(6, 9, 5), c(1, 2, 3);
    GeoCircle circle;
    EXPECT_TRUE(setUp.circleOnDiameter(a, b, circle));
    EXPECT_TRUE(circle.centre == Point3DF(3, 5, 0) && circle.radius == 5 && a.z() == 0);
    EXPECT_TRUE(setUp.circleOnDiameter(a, a, circle)) << "coincident: left as it was";
    for (const double radius : {0.0, kNan}) EXPECT_FALSE(setUp.makeCircle(c, radius, circle));
    a.setX(kNan);
    EXPECT_FALSE(setUp.circleOnDiameter(a, b, circle));
    EXPECT_TRUE(circle.radius == 5 && c.z() == 3);
    EXPECT_TRUE(setUp.makeCircle(c, 1e-9, circle) && circle.centre == c && c.z() == 0);
}

TEST_F(Construction, FailedCreationsAreReportedWithTheirLines)
{
    const PathRef two = makePath({{0, 0, 0}, {1, 0, 0}});
    PathRef path = two;
    Point3DF p(0, 0, 1), q(1, 0, 1);
    GeoCircle circle;
    const auto pieces = tav::Ref<geo::IPathReceiver>::create();
    const auto arc3d = [&] {
        return setUp.arcThrough3Points3d({}, {1, 0, 0}, {0, 1, 0}, start, end, middle);
    };
    const auto arc = [&] {
        return setUp.arcThrough3Points({}, {1, 0, 0}, {0, 1, 0}, start, end, middle);
    };
    const auto diameter = [&] { return setUp.circleOnDiameter(p, q, circle); };
    const std::tuple<std::string, int, std::function<bool()>, int> cases[] = {
        {"IPath", 0,
         [&] {
             return setUp.insertPathPoint(path, 1, {5, 5, 5});
         },
         77},
        {"IPath", 0, [&] { return setUp.removePathPoint(path, 1); }, 195},
        {"IPath", 0, [&] { return setUp.setSegmentArc(path, 0, p, q, {}); }, 311},
        {"IPath", 0, [&] { return setUp.splitPathIntoSegments(path, pieces), false; }, 481},
        {"IPointCollection", 0, [&] { return setUp.reversePath(path), false; }, 760},
        {"IPath", 0, arc3d, 504},
        {"IGeometric", 0, arc3d, 509},
        {"IMatrix", 0, arc3d, 534},
        {"IMatrix", 1, arc3d, 539},
        {"IGeometric", 0, arc, 574},
        {"IPointCollection", 0, arc, 576},
        {"IPath", 0, arc, 655},
        {"IPath", 1, arc, 660},
        {"IPointCollection", 0, diameter, 739},
        {"IGeometric", 0, diameter, 745},
    };
    for (const auto& [name, skip, run, line] : cases) {
        Messages messages;
        const FailedCreation failed(name.c_str(), skip);
        EXPECT_FALSE(run()) << line;
        const std::string report = name + " geosetup " + std::to_string(line);
        EXPECT_EQ(messages.assertions, std::vector{report});
    }
    EXPECT_TRUE(path == two && pieces->pieceCount() == 0) << "the caller keeps the old path";
    EXPECT_TRUE(middle == kUntouched && start == middle && end == middle && circle.radius == 0);
}

}  // namespace
