// What is passed over where nothing can depend on it, against the same work done in full.
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "common/commonFunc.h"
#include "datageo/CAutoDiv.h"
#include "datageo/DataGeo.h"
#include "datageo/autob/CAutoLoop.h"
#include "tavrel/NormalObject.h"

namespace {

using calcora::SegmentKey;
using tav::Point2DF;

/// Classes of their own, of which nobody knows that they override nothing.
struct OtherFunctions : commonFunc {
    using commonFunc::commonFunc;
};
struct OtherData : DataGeo {
    using DataGeo::DataGeo;
};

/// Lines and arcs between places of a small grid, each moved by up to `jitter`.
std::vector<SegmentKey> drawing(unsigned seed, int count, double jitter, double arcShare)
{
    std::mt19937 random(seed);
    const auto between = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    const auto place = [&] {
        return Point2DF(std::floor(between(0, 7)) * 10 + between(-jitter, jitter),
                        std::floor(between(0, 7)) * 10 + between(-jitter, jitter));
    };
    std::vector<SegmentKey> segments;
    for (int i = 0; i < count; ++i) {
        const Point2DF a = place();
        const Point2DF b = place();
        if (a == b) continue;
        segments.push_back({a, b, between(0, 1) < arcShare ? between(-1.5, 1.5) : 0.0});
    }
    return segments;
}

struct Loops {
    std::vector<AutoB::CAutoLoop::Points> points;
    std::vector<AutoB::CAutoLoop::Values> bulges;
    bool operator==(const Loops&) const = default;
};

Loops loopsOf(AutoB::CAutoLoop& builder, int mode)
{
    builder.buildLoops(mode);
    return {builder.loops(), builder.loopBulges()};
}

// Drawings that are cut lie in the plane, those that are not have loops that must be walked.
TEST(Shortcuts, LinkedLoopsAreThoseOfWalks)
{
    struct Case {
        double jitter;
        double arcShare;
        bool isCut;
    };
    int loopsFound = 0;
    for (const Case& c : {Case{0, 0, true}, Case{0, 0.4, true}, Case{4e-6, 0, true},
                          Case{9e-6, 0.3, true}, Case{3, 0.3, true}, Case{0, 0.3, false}})
        for (unsigned seed = 0; seed < 40; ++seed) {
            calcora::SegmentSet set = calcora::mergeEqualSegments(
                drawing(seed, 6 + static_cast<int>(seed), c.jitter, c.arcShare), false);
            if (c.isCut) {
                calcora::CAutoDiv divider;
                divider.addSegments(std::move(set));
                divider.divide(false);
                set = divider.takePieces();
            }
            for (const int mode : {0, 1}) {
                AutoB::CAutoLoop linked;
                linked.addSegments(set, true);
                // Segments that come one by one, and a line of several that bounds nothing.
                AutoB::CAutoLoop walked;
                for (const SegmentKey& segment : set.segments) walked.addSegment(segment, true, 0);
                walked.addPolyline({{1e4, 0}, {1e4, 5}, {1e4, 9}}, {}, true, 0);
                const Loops found = loopsOf(linked, mode);
                EXPECT_EQ(found, loopsOf(walked, mode))
                    << "seed " << seed << " jitter " << c.jitter << " arcs " << c.arcShare;
                loopsFound += static_cast<int>(found.points.size());
            }
        }
    EXPECT_GT(loopsFound, 5000);
}

TEST(Shortcuts, ArcsMeetAsByTheirAngles)
{
    commonFunc own(tav::kObjectCapacity);
    OtherFunctions other(tav::kObjectCapacity);
    struct Result {
        std::vector<Point2DF> points = std::vector<Point2DF>(16);
        std::vector<double> places = std::vector<double>(16);
        int count = 0;
        bool operator==(const Result&) const = default;
    };
    const auto meet = [](commonFunc& functions, const SegmentKey& a, const SegmentKey& b) {
        Result result;
        functions.intersectBulgePolylines({a.a, a.b}, {a.bulge, 0}, {b.a, b.b}, {b.bulge, 0},
                                          result.points.data(), result.places.data(),
                                          &result.count);
        return result;
    };
    int meetings = 0;
    for (const double scale : {1.0, 1e-5, 1e5})
        for (unsigned seed = 0; seed < 20; ++seed) {
            auto segments = drawing(100 + seed, 24, seed % 2 ? 0.0 : 2.0, 0.8);
            for (SegmentKey& s : segments) s = {scale * s.a, scale * s.b, s.bulge};
            for (const SegmentKey& a : segments)
                for (const SegmentKey& b : segments) {
                    const Result found = meet(own, a, b);
                    EXPECT_EQ(found, meet(other, a, b));
                    meetings += found.count;
                }
        }
    EXPECT_GT(meetings, 5000);
}

TEST(Shortcuts, AreasAreThoseOfCutRings)
{
    commonFunc own(tav::kObjectCapacity);
    OtherFunctions other(tav::kObjectCapacity);
    for (unsigned seed = 0; seed < 200; ++seed) {
        commonFunc::Points ring;
        commonFunc::Values bulges;
        for (const SegmentKey& s : drawing(500 + seed, 8, seed % 3 ? 5.0 : 0.0, 0.7)) {
            ring.append(s.a);
            // Among them arcs so steep that both ends lie in one direction from the centre.
            bulges.append((seed % 7 ? seed % 11 ? 1 : 1e17 : 1e-4) * s.bulge);
        }
        EXPECT_EQ(own.bulgePolygonArea(ring, bulges), other.bulgePolygonArea(ring, bulges)) << seed;
    }
}

TEST(Shortcuts, ExtractionIsThatOfAnyClass)
{
    for (unsigned seed = 0; seed < 30; ++seed) {
        IDataGeo::PointLists lines, loops, otherLoops;
        IDataGeo::ValueLists lineBulges, bulges, otherBulges;
        for (const SegmentKey& s : drawing(900 + seed, 30, seed % 2 ? 3.0 : 0.0, 0.6)) {
            lines.append({s.a, s.b});
            lineBulges.append({s.bulge, 0.0});
        }
        DataGeo(0).buildRegions(lines, lineBulges, loops, bulges, false, nullptr, 0);
        OtherData(0).buildRegions(lines, lineBulges, otherLoops, otherBulges, false, nullptr, 0);
        EXPECT_FALSE(loops.isEmpty());
        EXPECT_EQ(loops, otherLoops) << seed;
        EXPECT_EQ(bulges, otherBulges) << seed;
    }
}

}  // namespace
