// What all operations share: failed creations, bad indices, odd values, operations that rest on
// each other, reference counts, long paths.
#include <gtest/gtest.h>

#include <functional>

#include "geometric/CGeometric.h"
#include "tests/support/paths.h"

namespace {

using namespace path_test;

/// Every output that an operation may write.
struct Outputs {
    Point3DF p = kUntouched, p2 = kUntouched;
    double x = 777, y = 777;
    int k = 777;
    PathRef path;

    bool untouched() const
    {
        return p == kUntouched && p2 == p && x == 777 && y == x && k == x && !path;
    }
};

/// An operation with its result as a number (false is 0).
struct Operation {
    const char* name;
    double failure;
    /// What it creates: P points, A path, M matrix, G geometric; i: it takes an index.
    std::string traits;
    std::function<double(CGeometric&, Outputs&)> run;

    bool has(char trait) const { return traits.find(trait) != std::string::npos; }
};

/// Every operation on one set of arguments, made from the values that `next` hands out.
std::vector<Operation> allOperations(int i, const std::function<double()>& next)
{
    const auto point = [&] {
        const double x = next(), y = next();
        return Point3DF(x, y, next());
    };
    const Point3DF a = point(), b = point(), c = point(), d = point();
    const double r = next(), r2 = next();
    const PathRef s = makePath({a, b, c}, {{0, d}, {1, point()}});
    const PathRef t = makePath({point(), point(), c}, {{1, point()}, {0, point()}});
    const PathRef u = makePath({d, c});
    const tav::List<Point3DF> list{a, b, c, a};
    const auto matrix = geo::MatrixRef::create();
    matrix->initSquare(4, r);
#define OPERATION(slot, failure, traits, call)                                                    \
    Operation                                                                                     \
    {                                                                                             \
        slot, failure, traits, [=]([[maybe_unused]] CGeometric& g, [[maybe_unused]] Outputs& o) { \
            return double(g.call);                                                                \
        }                                                                                         \
    }
    return {
        OPERATION("6", 0, "P", directionAngle3d(a, b, o.x)),
        OPERATION("12", 0, "P", slopeAngle3d(a, b, o.x)),
        OPERATION("14", 0, "i", projectPointToSegmentLine3d(s, i, d, o.p)),
        OPERATION("15", -1, "PMi", projectPointToSegment(s, i, c, o.p)),
        OPERATION("16", 0, "PMi", segmentArcLength(s, i, o.x)),
        OPERATION("19", 0, "P", angleBetweenLines2d(a, b, c, d, o.x)),
        OPERATION("21", 0, "i", pointOffsetFromSegmentLine2d(s, i, d, o.x)),
        OPERATION("18", 0, "i", angleBetweenSegments3d(s, 0, t, i, o.x)),
        OPERATION("23", -1, "i", intersectSegments3d(s, i, t, 1, o.p)),
        OPERATION("24", -1, "i", intersectSegmentArc(s, i, t, 0, o.p, o.p2)),
        OPERATION("24", -1, "i", intersectSegmentArc(s, 0, t, i, o.p, o.p2)),
        OPERATION("24", 0, "MAP", intersectSegmentArc(u, 0, s, 0, o.p, o.p2)),
        OPERATION("25", -1, "Mi", intersectArcs(s, 0, t, i, o.p, o.p2)),
        OPERATION("26", -1, "Mi", segmentArcIntersections(s, i, c, r, o.p, o.p2)),
        OPERATION("27", 0, "M", transformPoint3d(a, matrix, o.p)),
        OPERATION("28", -1, "APi", lineCircleIntersections(s, i, c, r, o.p, o.p2)),
        OPERATION("29", -1, "A", intersectCircles(a, r, b, r2, o.p, o.p2)),
        OPERATION("32", 0, "Mi", segmentArcCircle3d(s, i, o.p, o.x)),
        OPERATION("34", 0, "i", arcSegmentOp34(s, i, o.p)),
        OPERATION("35", 0, "Mi", arcTangentAtPoint(s, i, d, o.x, o.y)),
        OPERATION("36", -1, "PG", pointListLength2d(list)),
        OPERATION("37", -1, "PGM", polylineLength2d(s)),
        OPERATION("40", 0, "PM", pointDistFromPolyline(s, r, o.p)),
        OPERATION("41", 0, "PM", pointDistFromPolyline3d(s, r, o.p)),
        OPERATION("42", 0, "P", pointRatioFromPointList(list, 0.7, o.p)),
        OPERATION("43", 0, "PM", pointRatioFromPolyline(s, 0.3, o.p)),
        OPERATION("44", 0, "PM", pointRatioFromPolyline3d(s, 0.3, o.p)),
        OPERATION("47", 0, "P", midPointOfPointList(list, o.p)),
        OPERATION("45", 0, "P", polygonCentroidOfPointList(list, o.p)),
        OPERATION("52", 0, "A", pathArcOp52(s, r, o.path)),
        OPERATION("arcBulge", 0, "P", arcBulge(a, b, d)),
    };
#undef OPERATION
}

class Behaviour : public PathTest {
protected:
    CGeometric g;
    Messages messages;

    /// Arguments on which every operation comes through.
    std::vector<Operation> plainOperations(int i)
    {
        const double values[] = {0, 0, 0, 4, 0, 1, 8, 3, 2, 2, 2.1, 0.5, 4.5, 1.5};
        std::size_t at = 0;
        return allOperations(i,
                             [&] { return at < std::size(values) ? values[at++] : uniform(0, 4); });
    }
};

TEST_F(Behaviour, FailedCreationsAreReportedAndEndInTheFailureValue)
{
    const std::pair<char, std::string> interfaces[] = {
        {'P', "IPointCollection"}, {'A', "IPath"}, {'M', "IMatrix"}, {'G', "IGeometric"}};
    int failures = 0;
    for (const Operation& operation : plainOperations(0)) {
        Outputs written;
        EXPECT_NE(operation.run(g, written), operation.failure) << operation.name;
        for (const auto& [trait, name] : interfaces) {
            for (int skip = 0; operation.has(trait); ++skip) {  // every creation in turn
                SCOPED_TRACE(operation.name + (" without " + name) + std::to_string(skip));
                messages.assertions.clear();
                Outputs out;
                const FailedCreation failed(name.c_str(), skip);
                const double result = operation.run(g, out);
                EXPECT_TRUE(failed.happened() || skip > 0);
                if (!failed.happened()) break;
                ++failures;
                EXPECT_EQ(result, operation.failure);
                EXPECT_TRUE(out.untouched());
                ASSERT_EQ(messages.assertions.size(), 1u);
                const std::string slot = operation.name;
                const bool fixed = (slot == "28" || slot == "24") && name == "IPath";
                const std::string report = name + " geometric " + (fixed ? "1304" : "");
                EXPECT_EQ(messages.assertions[0].substr(0, report.size()), report);
            }
        }
    }
    EXPECT_GT(failures, 50);
}

TEST_F(Behaviour, IndicesThatNameNoSegmentFail)
{
    for (const int i : {-1, 2, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
        for (const Operation& operation : plainOperations(i)) {
            Outputs out;
            if (!operation.has('i')) continue;
            EXPECT_EQ(operation.run(g, out), operation.failure) << operation.name;
            EXPECT_TRUE(out.untouched()) << operation.name;
        }
}

/// Overrides operations that others rest on, with answers that show.
struct OtherSlots : CGeometric {
    bool segmentLength3d(const PathRef&, int, double& x) override { return x = 42, true; }
    bool pointDistFromPolyline(const PathRef&, double distance, Point3DF& point) override
    {
        return point = {distance, 0, 0}, true;
    }
    short projectPointToSegment(const PathRef&, int, const Point3DF&, Point3DF& foot) override
    {
        return foot = {1, 0, 0}, short{0};
    }
};

TEST_F(Behaviour, AnOverriddenOperationChangesAllThatRestOnIt)
{
    OtherSlots other;
    double x = 0;
    Point3DF p, p2;
    EXPECT_TRUE(other.distance3d({}, {1, 0, 0}, x) && x == 42);
    EXPECT_TRUE(other.midPointOfPointList({{}, {4, 0, 0}}, p) && p.x() == 2);
    const PathRef line = makePath({{}, {10, 0, 0}});
    EXPECT_EQ(other.lineCircleIntersections(line, 0, {5, 3, 0}, 5, p, p2), 2);
    EXPECT_EQ(p2, Point3DF(5, 0, 0)) << "from the foot that the override gives";
    EXPECT_EQ(line->addRef(), 2) << "no reference is kept";
    line->release();
}

}  // namespace
