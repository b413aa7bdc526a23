// IDataGeo: closed loops from line work.
#pragma once

#include "tavrel/IObject.h"
#include "tavrel/Vector.h"
#include "tavrel/points.h"

/// Operations on line work, above all the building of closed loops: 23 operations (slots 6 to 28).
class IDataGeo : public tav::InterfaceOf<IDataGeo>
{
public:
    static constexpr const char* kInterfaceName = "IDataGeo";

    using Point2DF = tav::Point2DF;
    using Points = tav::Vector<tav::Point2DF>;
    using Values = tav::Vector<double>;
    using PointLists = tav::Vector<Points>;
    using ValueLists = tav::Vector<Values>;

    /// Slot 6.
    virtual void buildRegions(const PointLists& lines, const ValueLists& lineBulges,
                              PointLists& loops, ValueLists& loopBulges, bool outerBoundaries,
                              bool* cancel, double snapTolerance) = 0;

    /// Slot 7.
    virtual void buildDirectedRegions(const PointLists& lines, const ValueLists& lineBulges,
                                      PointLists& loops, ValueLists& loopBulges, bool* cancel) = 0;

    /// Slot 8.
    virtual int pointInBulgePolygon(Points& points, Values& bulges, Point2DF point) = 0;

    /// Slot 9.
    virtual int pointInPolygon(const Points& polygon, double x, double y) = 0;

    /// Slot 10.
    virtual int intersectSegmentPolylineToLists(const Point2DF& start, const Point2DF& end,
                                                const Points& polyline, double lo, double hi,
                                                Points& outPoints, Values& outParams) = 0;

    /// Slot 11.
    virtual int intersectPolylinesToListsEx(const Points& a, const Points& b, Points& outPoints,
                                            Values& outParams) = 0;

    /// Slot 12.
    virtual double pointDistSquared(const Point2DF& a, const Point2DF& b) = 0;

    /// Slot 13.
    virtual void reverseDoubleList(Values& values) = 0;

    /// Slot 14.
    virtual void reversePointList(Points& points) = 0;

    /// Slot 15.
    virtual double polylineLengthWithBulges(const Points& points, const Values& bulges,
                                            bool closed) = 0;

    /// Slot 16.
    virtual double segmentLengthWithBulge(const Point2DF& p1, const Point2DF& p2, double bulge) = 0;

    /// Slot 17.
    virtual void arcCenterFromBulge(const Point2DF& p1, const Point2DF& p2, double bulge,
                                    Point2DF& centre, double* radius) = 0;

    /// Slot 18.
    virtual double arcLengthFromCenter(const Point2DF& centre, double radius, const Point2DF& from,
                                       const Point2DF& to, bool clockwise) = 0;

    /// Slot 19.
    virtual void insertArcExtremes(Points points, Values bulges, bool closed, bool xExtremes,
                                   bool yExtremes, Points& outPoints, Values& outBulges) = 0;

    /// Slot 20.
    virtual double bulgeChordArea(const Point2DF& p1, const Point2DF& p2, double bulge) = 0;

    /// Slot 21.
    virtual void polarPoint(const Point2DF& base, double angle, double distance, Point2DF& out) = 0;

    /// Slot 22.
    virtual double pointDist(const Point2DF& a, const Point2DF& b) = 0;

    /// Slot 23.
    virtual double lineAngle(const Point2DF& from, const Point2DF& to) = 0;

    /// Slot 24.
    virtual double polygonAreaAbs(const Points& polygon) = 0;

    /// Slot 25.
    virtual bool polylineArcExtremes(const Points& points, const Values& bulges, bool closed,
                                     bool xExtremes, bool yExtremes, Points& outPoints,
                                     Values& outPositions) = 0;

    /// Slot 26.
    virtual void segmentArcExtremes(int index, const Point2DF& p1, const Point2DF& p2, double bulge,
                                    bool xExtremes, bool yExtremes, Points& outPoints,
                                    Values& outPositions) = 0;

    /// Slot 27.
    virtual double arcPositionFraction(const Point2DF& point, const Point2DF& centre,
                                       const Point2DF& start, const Point2DF& end,
                                       bool clockwise) = 0;

    /// Slot 28.
    virtual void sortPointsByKey(Points& points, Values& keys) = 0;
};
