// Circles, arcs through three points, reports of failed creations; path editing against a plain
// model of points and records.
#include <gtest/gtest.h>
#include <algorithm>
#include <climits>

#include <functional>

#include "geosetup/CGeoSetUp.h"
#include "tests/support/paths.h"

namespace {

using namespace path_test;

class SetUp : public PathTest {
protected:
    CGeoSetUp setUp;
};

class Construction : public SetUp {
protected:
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

struct Model {
    std::vector<Point3DF> points;
    std::vector<tav::Radian> records;

    void shiftRecords(int from, int by)
    {
        for (tav::Radian& record : records)
            if (record.segmentIndex >= from) record.segmentIndex += by;
    }
    void insert(int index, const Point3DF& p) { points.insert(points.begin() + index, p); }
    bool holds(int index, const Point3DF& p) const
    {
        const auto k = static_cast<std::size_t>(index);
        return k < points.size() && apart(points[k], p) < 1e-9;
    }
};

using Editing = SetUp;

TEST_F(Editing, RandomSequences)
{
    for (int round = 0; round < 200; ++round) {
        Model model;
        PathRef path = makePath({});
        for (int step = 0; step < 40; ++step) {
            const Model before = model;
            const PathRef old = path;
            const int n = static_cast<int>(model.points.size()), i = below(n + 2) - 1;
            const auto any = [&](int k) {  // every second one a vertex
                return below(2) && 0 <= k && k < n ? model.points[static_cast<std::size_t>(k)]
                                                   : Point3DF(below(6), below(6), 0);
            };
            const Point3DF p = any(i), q = any(i + 1), m(9, below(9), 1);
            const bool inside = 0 <= i && i <= n;
            bool expected = true, result = true;
            const int what = below(8);
            if (what < 3) {
                result = setUp.insertPathPoint(path, i, p);
                expected = inside && !model.holds(i, p) && !model.holds(i + 1, p);
                if (expected) model.shiftRecords(i, 1), model.insert(i, p);
            } else if (what < 4) {
                result = setUp.removePathPoint(path, i);
                expected = inside;
                if (inside)
                    std::erase_if(model.records, [i](auto& r) { return r.segmentIndex == i; });
                if (inside) model.shiftRecords(i + 1, -1);
                if (inside && i < n) model.points.erase(model.points.begin() + i);
            } else if (what < 7) {
                result = setUp.setSegmentArc(path, i, p, q, m);
                bool isArc = false;
                for (const auto& record : model.records) isArc |= record.segmentIndex == i;
                const bool start = model.holds(i, p), end = model.holds(i + 1, q);
                expected = inside && i < n && apart(p, q) > 0 && !(start && end && isArc);
                if (expected) {
                    model.shiftRecords(i, !start + !end);
                    model.records.insert(model.records.begin(), {i, m});
                    if (!end) model.insert(i + 1, q);
                    if (!start) model.insert(i + 1, p);
                }
            } else if (n > 0) {
                setUp.reversePath(path);
                std::reverse(model.points.begin(), model.points.end());
                model.points.push_back(before.points[0]);
                for (tav::Radian& record : model.records)
                    record.segmentIndex = n - record.segmentIndex;
            }
            ASSERT_EQ(result, expected) << what << " at " << i << " of " << n;
            ASSERT_EQ(pointsOf(path), model.points) << what << " at " << i << " of " << n;
            ASSERT_EQ(recordsOf(path), model.records) << what << " at " << i << " of " << n;
            ASSERT_EQ(pointsOf(old), before.points) << "old references see the old points";
            ASSERT_EQ(recordsOf(old), before.records);
            ASSERT_EQ(path == old, !expected || (what == 7 && n == 0));
        }
        const auto pieces = tav::Ref<geo::IPathReceiver>::create();
        setUp.splitPathIntoSegments(path, pieces);
        ASSERT_EQ(pieces->pieceCount(),
                  std::max<int>(0, static_cast<int>(model.points.size()) - 1));
        for (int i = 0; i < pieces->pieceCount(); ++i) {
            const auto k = static_cast<std::size_t>(i);
            EXPECT_EQ(pointsOf(pieces->pieceAt(i)),
                      (std::vector{model.points[k], model.points[k + 1]}));
            EXPECT_TRUE(recordsOf(pieces->pieceAt(i)).empty());
        }
        EXPECT_EQ(path->addRef(), 2) << "no reference is kept";
        path->release();
    }
}

TEST_F(Editing, CoincidenceAndOddArguments)
{
    PathRef path = makePath({{0, 0, 0}, {10, 0, 0}, {20, 0, 0}}, {{INT_MAX, {1, 1, 1}}});
    const PathRef before = path;
    EXPECT_FALSE(setUp.insertPathPoint(path, 1, {10 + 9e-7, 9e-7, -9e-7}));
    EXPECT_FALSE(setUp.setSegmentArc(path, 0, {1, 1, 1}, {1, 1 + 9e-7, 1}, {}));
    EXPECT_FALSE(setUp.setSegmentArc(path, 3, {1, 1, 1}, {2, 2, 2}, {}));
    PathRef none;
    EXPECT_FALSE(setUp.insertPathPoint(none, 0, {}) || setUp.removePathPoint(none, 0) ||
                 setUp.setSegmentArc(none, 0, {}, {1, 0, 0}, {}));
    setUp.reversePath(none);
    setUp.splitPathIntoSegments(none, {});
    setUp.splitPathIntoSegments(path, {});
    EXPECT_EQ(path, before);
    EXPECT_TRUE(setUp.insertPathPoint(path, 1, {0, 0, 0})) << "a copy of the point before passes";
    EXPECT_EQ(recordsOf(path)[0].segmentIndex, INT_MAX) << "kept within the numbers there are";
    EXPECT_TRUE(setUp.setSegmentArc(path, 3, {21, 0, 0}, {22, 0, 0}, {})) << "behind the last";
    EXPECT_EQ(pointsOf(path).size(), 6u);
}

}  // namespace
