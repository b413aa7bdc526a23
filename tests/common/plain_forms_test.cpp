#include "tests/support/edges.h"

namespace {

using namespace test_support;

/// Overrides nothing, but might: its operations look at everything and call each other.
class Plain : public commonFunc {
public:
    using commonFunc::commonFunc;
};

commonFunc quick(0);
Plain plain(0);

template <class Place>
Points placed(int count, Place place)
{
    Points points;
    for (int i = 0; i < count; ++i) points.append(place(i));
    return points;
}

/// Figures with many equal distances, near ones, far coordinates, and some that are no figures.
std::vector<Points> figures()
{
    std::mt19937 random(21);
    const auto lattice = [&](int) { return Point2DF(double(random() % 7), double(random() % 7)); };
    const auto off = [&](double most) { return uniform(random, -most, most); };
    const Points saw = placed(1500, [](int i) { return Point2DF(i, i % 2); });
    std::vector<Points> all{
        saw,
        turned(saw, 0.4),
        turned(saw, kPi / 4),
        turned(placed(1500, [&](int i) { return Point2DF(i, i % 2 * (1e-3 * i + off(0.1))); }), 2),
        placed(1501, [&](int i) { return Point2DF(i, i % 2 ? 3 : -double(random() % 3)); }),
        placed(1500, [](int i) { return 0.1 * i * direction(i * 0.05); }),
        placed(900, [&](int i) { return kSurvey + Point2DF(i, 60 * std::sin(i * 0.02) + off(1)); }),
        placed(300, [&](int i) { return (95 + off(5)) * direction(i * 0.021); }),
        placed(400, [&](int) { return Point2DF(off(0.5), off(0.005)); }),
        placed(200, [](int i) { return Point2DF(0.3 * i, 0.1 * i); }),
        placed(99, [](int) { return Point2DF(3, 4); }),
    };
    all.push_back(all[3]);
    all.back().append(Point2DF(all[3].at(0)));  // closed
    for (const int n : {3, 16, 17, 18, 33, 34, 64, 65, 66, 150}) all.push_back(placed(n, lattice));
    for (const double odd : {kNan, kInfinity, 1e160, 1e300, -1e80}) {
        Points points = placed(150, lattice);
        points[40].setY(odd);
        all.push_back(points);
        for (int i = 60; i < 100; ++i) points[i] = {odd, odd};
        all.push_back(points);
        for (Point2DF& p : points) p = 1e-90 * p;
        all.push_back(points);
    }
    return all;
}

/// Places at which the figure's vertices and edges are hit, missed by a little, and passed.
Points placesAround(const Points& figure, std::mt19937& random)
{
    Points places{{3, 4}, {1e200, 0}, {kNan, 2}};
    for (int i = 0; i < 60; ++i) {
        const int at = int(random() % unsigned(figure.size()));
        const Point2DF& a = figure[at];
        const Point2DF& b = figure[(at + 1) % figure.size()];
        const Point2DF on = a + uniform(random, 0, 1) * (b - a);
        const double off[] = {0, 9e-5, 1.1e-4, 1e-12, 2, 70};
        places.append((i % 2 ? on : a) + Point2DF(i % 3 ? off[i % 6] : 0, off[i / 6 % 6]));
    }
    return places;
}

bool sameBits(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

bool sameBits(const Points& a, const Points& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](auto& p, auto& q) {
        return sameBits(p.x(), q.x()) && sameBits(p.y(), q.y());
    });
}

TEST(PlainForms, GiveTheSameAnswers)
{
    std::mt19937 random(22);
    int number = 0;
    for (const Points& figure : figures()) {
        SCOPED_TRACE(number++);
        for (const double tolerance : {1e-7, 0.3, 1.0, 5.0}) {
            Points kept, expected;
            quick.simplifyPolyline(figure, kept, tolerance);
            plain.simplifyPolyline(figure, expected, tolerance);
            ASSERT_TRUE(sameBits(kept, expected)) << tolerance;
        }
        Points ring = figure, expectedRing = figure, hull, expectedHull;
        ring.append(figure.first());
        expectedRing.append(figure.first());
        quick.convexHull(ring, hull);
        plain.convexHull(expectedRing, expectedHull);
        ASSERT_TRUE(sameBits(ring, expectedRing) && sameBits(hull, expectedHull));
        ASSERT_TRUE(sameBits(quick.polylineLength(figure), plain.polylineLength(figure)));
        for (const Point2DF& p : placesAround(figure, random)) {
            ASSERT_EQ(quick.pointInPolygon(figure, p), plain.pointInPolygon(figure, p));
            ASSERT_TRUE(sameBits(quick.pointPolylineDistSquared(p, figure),
                                 plain.pointPolylineDistSquared(p, figure)));
        }
    }
}

// Areas around 0, where the sign is that of the sum in its own order.
TEST(PlainForms, OrientationIsThatOfThePlainSum)
{
    std::mt19937 random(23);
    int close = 0;
    for (int i = 0; i < 3000; ++i) {
        Points ring = placed(3 + i % 40, [&](int) {
            return (i % 2) * kSurvey + Point2DF(uniform(random, -1, 1), uniform(random, -1, 1));
        });
        if (i % 3)
            ring.append(
                placed(ring.size() - 1, [&](int k) { return ring.at(ring.size() - 2 - k); }));
        const Point2DF first = ring.at(0);
        double sum = 0, before = 0, last = 0;
        for (int k = 1; k < ring.size(); ++k) {
            const Point2DF p = ring.at(k) - first;
            sum += (p.y() + before) * (p.x() - last) * 0.5;
            last = p.x(), before = p.y();
        }
        sum += before * -last * 0.5;
        close += sum != 0 && std::fabs(sum) < 1e-14;
        ASSERT_EQ(quick.isClockwiseRing(ring), sum >= 0) << i;
    }
    EXPECT_GT(close, 100);
}

}  // namespace
