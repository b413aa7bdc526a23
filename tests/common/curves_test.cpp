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
    const Values heights{3, 1, 4, 1, 5, 1, 4, 1, 3};  // the same from both ends of a ring
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

TEST(Curves, StayWithinTheirToleranceAndMoveAndTurnWithTheirPoints)
{
    const Points given = wanderingLine(8);
    // Bends one way: elsewhere a piece that bends both ways is judged by its middle all the same.
    const Points hill{{0, 0}, {1, 9}, {3, 13}, {9, 17}, {12, 16}, {20, 9}, {21, 6}, {22, -4}};
    Points ring = given, line;
    ring.append(ring[0]);
    for (const double s : {0.0, 1.0, 1.5, 4.0, 4.25, 9.0, 20.0, 21.0}) line.append({3 * s, 4 * s});
    for (const std::string_view kind : kKinds) {
        SCOPED_TRACE(kind);
        const Points fine = draw(kind, hill, 1e-4);
        int most = fine.size();
        for (const double tolerance : {0.01, 0.1, 1.0}) {
            const Points out = draw(kind, hill, tolerance);
            EXPECT_LE(out.size(), most);
            most = out.size();
            for (const Point2DF& p : fine) ASSERT_LT(distanceToLine(p, out), 1.02 * tolerance);
            expectNear(draw(kind, moved(given, 5e5, 4e6), tolerance),
                       moved(draw(kind, given, tolerance), 5e5, 4e6), 1e-8);
            expectNear(draw(kind, reversed(ring), tolerance), reversed(draw(kind, ring, tolerance)),
                       1e-9);
        }
        for (const Point2DF& p : draw(kind, line, 0.01)) EXPECT_NEAR(4 * p.x(), 3 * p.y(), 1e-12);
    }
}

TEST(Curves, AreBoundedWhateverTheyAreGiven)
{
    const Points given = wanderingLine(4);
    for (const std::string_view kind : kKinds) {
        SCOPED_TRACE(kind);
        const Points finest = draw(kind, given, 0);
        EXPECT_GT(finest.size(), 10'000);
        EXPECT_LT(finest.size(), 2'000'000);
        const double least = 1e-10 * given.last().x();  // the larger side
        for (const double tolerance : {-1e-300, 0.8 * least, kNan})
            EXPECT_EQ(draw(kind, given, tolerance), finest);
        EXPECT_LT(draw(kind, given, 1.2 * least).size(), finest.size());
        const bool squares = kind == "spline" || kind == "closed spline";
        EXPECT_EQ(draw(kind, given, -0.1), squares ? draw(kind, given, 0.1) : finest);
        EXPECT_LE(draw(kind, given, kInfinity).size(), 4 * 4 + 1);
        // Far out the finest tolerance is a rounding of the coordinates, here a thousandth.
        const int farOut = draw(kind, moved(given, 1e12, 0), 0).size();
        EXPECT_LT(farOut, draw(kind, given, 0.5e-3).size());
        EXPECT_GT(farOut, draw(kind, given, 2e-3).size());
        for (const double bad : {kNan, kInfinity, -1.1e150}) {
            Points spoilt = given;
            spoilt[1].setY(bad);
            EXPECT_EQ(draw(kind, spoilt, 0.1).size(), kind.starts_with("span") ? 2 : 0);
        }
        for (const Point2DF& p :
             draw(kind, {{1e150, 0}, {-1e150, 1}, {1, 1e150}, {-1e150, -1e150}}, 0))
            ASSERT_TRUE(std::isfinite(p.x()) && std::isfinite(p.y()));
    }
}

}  // namespace
