#pragma once

#include "calcora/IGeoSetUp.h"
#include "tavrel/PlainObject.h"

class CGeoSetUp : public tav::PlainObject<CGeoSetUp, IGeoSetUp> {
public:
    static constexpr const char* kClassName = "CGeoSetUp";

    bool insertPathPoint(PathRef& path, int index, const Point3DF& point) override;
    bool removePathPoint(PathRef& path, int index) override;
    bool setSegmentArc(PathRef& path, int index, const Point3DF& start, const Point3DF& end,
                       const Point3DF& arcPoint) override;
    void splitPathIntoSegments(const PathRef& path, const ReceiverRef& receiver) override;
    bool arcThrough3Points3d(const Point3DF& a, const Point3DF& b, const Point3DF& c,
                             Point3DF& start, Point3DF& end, Point3DF& middle) override;
    bool arcThrough3Points(const Point3DF& a, const Point3DF& b, const Point3DF& c, Point3DF& start,
                           Point3DF& end, Point3DF& middle) override;
    bool circleOnDiameter(Point3DF& a, Point3DF& b, GeoCircle& out) override;
    bool makeCircle(Point3DF& centre, double radius, GeoCircle& out) override;
    void reversePath(PathRef& path) override;
    bool isAvailable() override;
};
