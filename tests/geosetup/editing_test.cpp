// Path editing against a plain model of points and records.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>

#include "geosetup/CGeoSetUp.h"
#include "tests/support/paths.h"

namespace {

using namespace path_test;

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

class Editing : public PathTest {
protected:
    CGeoSetUp setUp;
};

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
