// What all curves promise alike.

#include <string_view>

#include "tests/support/curves.h"

namespace {

using namespace curves;

constexpr std::string_view kKinds[] = {"spline",         "closed spline",  "tension",
                                       "closed tension", "valued tension", "span",
                                       "span in space",  "b-spline",       "b-spline in space"};

Points draw(std::string_view kind, const Points& p, double t)
{
    const int n = p.size();
    const Point2DF a = p[0], b = p[1], c = p[n - 2], d = p[n - 1];
    const Values heights{3, 1, 4, 1, 5, 9, 2, 6};
    commonFunc f(0);
    Points out;
    Values z;
    if (kind == "spline") f.splineInterpolate(p, out, false, t);
    if (kind == "closed spline") f.splineInterpolate(p, out, true, t);
    if (kind == "tension") f.tensionCurve(p, out, false, 0, 0, t);
    if (kind == "closed tension") f.tensionCurve(p, out, true, 0, 0, t);
    if (kind == "valued tension") f.tensionCurveZ(p, heights, out, z, false, 0, 0, t);
    if (kind == "span") f.bezierSpanToPolyline(a, b, c, d, out, t);
    if (kind == "span in space") f.bezierSpanToPolyline3d(a, 1, b, 0, c, 0, d, 7, out, z, t);
    if (kind == "b-spline") f.bsplineToPolyline(p, out, 3, t);
    if (kind == "b-spline in space") f.bsplineToPolyline3d(p, heights, out, z, 3, t);
    return out;
}

TEST(Curves, StayWithinTheirToleranceAndMoveWithTheirPoints)
{
    const Points given = wanderingLine(8);
    for (const std::string_view kind : kKinds) {
        SCOPED_TRACE(kind);
        const Points fine = draw(kind, given, 1e-4);
        int most = fine.size();
        for (const double tolerance : {0.01, 0.1, 1.0}) {
            const Points out = draw(kind, given, tolerance);
            EXPECT_LE(out.size(), most);
            most = out.size();
            // Only middles are looked at: a bend to both sides of one may stray a little more.
            for (const Point2DF& p : fine) ASSERT_LT(distanceToLine(p, out), 4 * tolerance);
            expectNear(draw(kind, moved(given, 5e5, 4e6), tolerance), moved(out, 5e5, 4e6), 1e-8);
        }
    }
}

TEST(Curves, AreBoundedWhateverTheyAreGiven)
{
    const Points given = wanderingLine(5);
    for (const std::string_view kind : kKinds) {
        SCOPED_TRACE(kind);
        const Points finest = draw(kind, given, 0);
        EXPECT_GT(finest.size(), 10'000);
        EXPECT_LT(finest.size(), 2'000'000);
        for (const double tolerance : {-0.0, 1e-300, kNan})
            EXPECT_EQ(draw(kind, given, tolerance), finest);
        EXPECT_LE(draw(kind, given, kInfinity).size(), 5 * 4 + 1);
        for (const double bad : {kNan, kInfinity, -1e151}) {
            Points spoilt = given;
            spoilt[1].setY(bad);
            EXPECT_LE(draw(kind, spoilt, 0.1).size(), 2);
        }
        for (const Point2DF& p :
             draw(kind, {{1e150, 0}, {-1e150, 1}, {1, 1e150}, {-1e150, -1e150}}, 0))
            ASSERT_TRUE(std::isfinite(p.x()) && std::isfinite(p.y()));
    }
}

}  // namespace
