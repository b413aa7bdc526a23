#include "geosetup/CGeoSetUp.h"

bool CGeoSetUp::insertPathPoint(PathRef&, int, const Point3DF&)
{
    return false;
}

bool CGeoSetUp::removePathPoint(PathRef&, int)
{
    return false;
}

bool CGeoSetUp::setSegmentArc(PathRef&, int, const Point3DF&, const Point3DF&, const Point3DF&)
{
    return false;
}

void CGeoSetUp::splitPathIntoSegments(const PathRef&, const ReceiverRef&) {}

bool CGeoSetUp::arcThrough3Points3d(const Point3DF&, const Point3DF&, const Point3DF&, Point3DF&,
                                    Point3DF&, Point3DF&)
{
    return false;
}

bool CGeoSetUp::arcThrough3Points(const Point3DF&, const Point3DF&, const Point3DF&, Point3DF&,
                                  Point3DF&, Point3DF&)
{
    return false;
}

bool CGeoSetUp::circleOnDiameter(Point3DF&, Point3DF&, GeoCircle&)
{
    return false;
}

bool CGeoSetUp::makeCircle(Point3DF&, double, GeoCircle&)
{
    return false;
}

void CGeoSetUp::reversePath(PathRef&) {}

bool CGeoSetUp::isAvailable()
{
    return true;
}
