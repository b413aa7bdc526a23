#pragma once

#include <vector>

#include "calcora/IDataGeo.h"
#include "datageo/segments.h"
#include "tavrel/PlainObject.h"

namespace calcora::detail {
class RingMeasure;
}

/// Operations on line work: IDataGeo implemented. It holds no state, so objects are cheap and two
/// threads with an object each never meet.
class DataGeo : public tav::PlainObject<DataGeo, IDataGeo> {
public:
    static constexpr const char* kClassName = "DataGeo";

    /// The capacity is of no consequence; the host hands one to this class.
    explicit DataGeo(unsigned capacity);

    void buildRegions(const PointLists& lines, const ValueLists& lineBulges, PointLists& loops,
                      ValueLists& loopBulges, bool outerBoundaries, bool* cancel,
                      double snapTolerance) override;
    void buildDirectedRegions(const PointLists& lines, const ValueLists& lineBulges,
                              PointLists& loops, ValueLists& loopBulges, bool* cancel) override;
    int pointInBulgePolygon(Points& points, Values& bulges, Point2DF point) override;
    int pointInPolygon(const Points& polygon, double x, double y) override;
    int intersectSegmentPolylineToLists(const Point2DF& start, const Point2DF& end,
                                        const Points& polyline, double lo, double hi,
                                        Points& outPoints, Values& outParams) override;
    int intersectPolylinesToListsEx(const Points& a, const Points& b, Points& outPoints,
                                    Values& outParams) override;
    double pointDistSquared(const Point2DF& a, const Point2DF& b) override;
    void reverseDoubleList(Values& values) override;
    void reversePointList(Points& points) override;
    double polylineLengthWithBulges(const Points& points, const Values& bulges,
                                    bool closed) override;
    double segmentLengthWithBulge(const Point2DF& p1, const Point2DF& p2, double bulge) override;
    void arcCenterFromBulge(const Point2DF& p1, const Point2DF& p2, double bulge, Point2DF& centre,
                            double* radius) override;
    double arcLengthFromCenter(const Point2DF& centre, double radius, const Point2DF& from,
                               const Point2DF& to, bool clockwise) override;
    void insertArcExtremes(Points points, Values bulges, bool closed, bool xExtremes,
                           bool yExtremes, Points& outPoints, Values& outBulges) override;
    double bulgeChordArea(const Point2DF& p1, const Point2DF& p2, double bulge) override;
    void polarPoint(const Point2DF& base, double angle, double distance, Point2DF& out) override;
    double pointDist(const Point2DF& a, const Point2DF& b) override;
    double lineAngle(const Point2DF& from, const Point2DF& to) override;
    double polygonAreaAbs(const Points& polygon) override;
    bool polylineArcExtremes(const Points& points, const Values& bulges, bool closed,
                             bool xExtremes, bool yExtremes, Points& outPoints,
                             Values& outPositions) override;
    void segmentArcExtremes(int index, const Point2DF& p1, const Point2DF& p2, double bulge,
                            bool xExtremes, bool yExtremes, Points& outPoints,
                            Values& outPositions) override;
    double arcPositionFraction(const Point2DF& point, const Point2DF& centre, const Point2DF& start,
                               const Point2DF& end, bool clockwise) override;
    void sortPointsByKey(Points& points, Values& keys) override;

private:
    double signedBulgeArea(const Points& points, const Values& bulges);
    double signedBulgeArea(const Points& points, const Values& bulges,
                           calcora::detail::RingMeasure& measure);
    bool crossesRay(const Point2DF& from, const Point2DF& to, double bulge, const Point2DF& point);
    bool isShort(const Points& line, const Values& bulges);
    calcora::detail::BigVector<calcora::SegmentKey> segmentsOf(const PointLists& lines,
                                                               const ValueLists& lineBulges,
                                                               double snapTolerance, bool* cancel);
    calcora::detail::BigVector<calcora::SegmentKey> closedSegmentsOf(const PointLists& lines,
                                                                     const ValueLists& lineBulges,
                                                                     bool* cancel);
    void sortLoops(std::vector<Points> found, std::vector<Values> foundBulges, PointLists& loops,
                   ValueLists& loopBulges, bool* cancel);
};
