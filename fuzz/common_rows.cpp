// The rows of IcommonFunc.
#include "fuzz/rows.h"

namespace fuzz {

namespace {

/// The one operation with arrays that it reads and writes.
void removeRepeats(Call& call)
{
    Call::State& s = call.state();
    Points points;
    s.fill(points);
    Values values;
    values.resize(points.size());
    int count = points.size() - s.source.below(3);
    Point2DF* array = s.pointArray.make(std::max(count, 0), {});
    std::copy_n(points.begin(), std::max(count, 0), array);
    double* valueArray = s.valueArrays[0].make(std::max(count, 0), kMark);
    const bool isNull = s.source.oneIn(16);
    s.object<IcommonFunc>().removeDuplicatePointsRaw(isNull ? nullptr : array, valueArray, &count);
    if (count > s.pointArray.size) s.fail("a count beyond the array");
    s.seeCount(count);
}

Operation removeRepeatsRow()
{
    Operation operation = row<&IcommonFunc::removeDuplicatePointsRaw>("removeDuplicatePointsRaw");
    operation.run = removeRepeats;
    return operation;
}

}  // namespace

std::vector<Family> commonFamilies()
{
    using I = IcommonFunc;
    return {
        {"points and vectors",
         {ROW(lineAngle), ROW(pointDist), ROW(projectionRatio, kInfinite), ROW(pointDistSquared),
          ROW(reverseDoubleList), ROW(reversePointList), ROW(dotProduct, kAbsolute),
          ROW(vectorDot, kAbsolute), ROW(innerProduct, kAbsolute), ROW(scalarProduct, kAbsolute),
          ROW(crossProduct, kAbsolute), ROW(orientation3), ROW(pointSegmentDistSquared),
          ROW(pointLineDistSquared), ROW(pointLineSignedDist), ROW(polarPoint),
          ROW(closestPointOnSegment), ROW(triangleArea), ROW(triangleCentroid)}},
        {"arcs",
         {ROW(arcMidPoint), ROW(bulgeFrom3Points), ROW(sweepAngle), ROW(densifyArc3d, kTolerance),
          ROW(bulgeSegmentArea), ROW(bulgeSegmentLength), ROW(arcSweepFraction, kInfinite),
          ROW(pointOnBulgeSegmentAtRatio), ROW(pointOnBulgeSegmentAtDistance), ROW(arcLength),
          ROW(bulgeArcCenter, kInfinite), ROW(circleFrom3Points), ROW(bulgeFromRadius)}},
        {"polylines with bulges",
         {ROW(polygonArea), ROW(bulgePolylineLength), ROW(bulgePolygonArea),
          ROW(segmentParameter, kInfinite), ROW(bulgePolylineStations), ROW(pointAtStation3d),
          ROW(pointAtStationZ), ROW(pointAtStation), ROW(pointAtParameter), removeRepeatsRow(),
          ROW(removeDuplicatePoints), ROW(reverseBulges), ROW(offsetPolyline),
          ROW(hasPositiveBulgeArea), ROW(bulgeSegmentsLength), ROW(polylineLength)}},
        {"point location",
         {ROW(polylineRegionRelation), ROW(isPointOnSegment), ROW(pointInBulgeRegion),
          ROW(pointInRegion), ROW(pointInBulgePolygon), ROW(pointInPolygon), ROW(isClockwiseRing)}},
        {"segment intersections",
         {ROW(intersectPolylinesToLists), ROW(intersectPolylines, Room{2, 2}),
          ROW(intersectSegmentPolyline, Room{2, 1}), ROW(intersectAngleLines),
          ROW(intersectSegments, Room{2}, kAbsolute), ROW(intersectSegmentsAll, kAbsolute),
          ROW(overlapIntervals, Room{2}), ROW(intersectDirectionLines)}},
        {"arc and circle intersections",
         {ROW(intersectBulgePolylines, Room{4, 2}), ROW(intersectArcWithBulgePolyline, Room{4, 1}),
          ROW(intersectLineWithBulgePolyline, Room{2, 1}), ROW(intersectArcSegment, Room{2}),
          ROW(intersectArcArc, Room{4}), ROW(intersectLineCircle),
          ROW(intersectLineCircleEq, kAbsolute), ROW(intersectCircles),
          ROW(intersectSegmentArc, Room{2}), ROW(circleCircleIntersection)}},
        {"distances",
         {ROW(projectPointOnBulgePolyline, kInfinite), ROW(nearestOnBulgePolylineEx, kInfinite),
          ROW(nearestOnPolyline), ROW(pointBulgePolylineDistSquared), ROW(pointPolylineDistSquared),
          ROW(pointBulgeSegmentDistSquared)}},
        {"spline and tension curves",
         {ROW(splineInterpolate, kTolerance), ROW(tensionCurve, kTolerance),
          ROW(tensionCurveRaw, kTolerance), ROW(tensionCurveZ, kTolerance),
          ROW(tensionCurveZRaw, kTolerance)}},
        {"other curves",
         {ROW(bezierSpanToPolyline3d, kTolerance), ROW(bezierSpanToPolyline, kTolerance),
          ROW(bezierSpanPoint3d), ROW(bezierCurveSpans), ROW(akimaCurve),
          ROW(bsplineToPolyline3d, kTolerance), ROW(bsplineToPolyline, kTolerance)}},
        {"angles and squaring",
         {ROW(degreesToDms), ROW(radiansToDms), ROW(dmsToRadians), ROW(normalizeAngle),
          ROW(vectorAngle, kAbsolute), ROW(polarFromCoordinates, kAbsolute),
          ROW(coordinatesFromPolar, kAbsolute), ROW(angleBetweenDirections),
          ROW(dominantEdgeDirection), ROW(isParallelDirection), ROW(removeCollinearPoints),
          ROW(lookupAngleLine), ROW(squareRings), ROW(squareCorner), ROW(squareCorners)}},
        {"extents, chords and offsets",
         {ROW(bulgeArcExtents), ROW(bulgePolylineExtents), ROW(offsetBulgePolyline),
          ROW(parallelSegment), ROW(bulgePolylineSection), ROW(densifyBulgesByAngle, kTolerance),
          ROW(bulgeArcToChords, kTolerance), ROW(bulgeArcToChords3d, kTolerance),
          ROW(bulgePolylineToChords, kTolerance), ROW(bulgePolylineToChords3d, kTolerance),
          ROW(polylinesExtents, kAbsolute), ROW(pointsExtents, kPlaces),
          ROW(polylinesRect, kAbsolute), ROW(pointsRect)}},
        {"lists, hull and simplification",
         {ROW(simplifyRange), ROW(simplifyPolylineWithValues), ROW(simplifyPolyline),
          ROW(ringCentroid), ROW(lowerLeftPointIndex), ROW(convexHull),
          ROW(translatePolylines, kAbsolute), ROW(translatePoints, kAbsolute),
          ROW(centerPointsOnBox, kAbsolute), ROW(anyBulgeInLists), ROW(hasBulges),
          ROW(haveSameEnds), ROW(findSameEnds), ROW(pointsBoxCenterPoint),
          ROW(pointsBoxCenter, kPlaces), ROW(polylinesMeanPoint), ROW(ringMeanPoint),
          ROW(ringMean, kAbsolute), ROW(sortPointsByKey)}},
        {"inner points and sides",
         {ROW(pointSideOfBulgePolyline), ROW(pointSideOfPolyline), ROW(segmentsSideOfPolyline),
          ROW(polylineSideOfPolyline), ROW(segmentMidpointInRing), ROW(polylineRingRelation),
          ROW(polylinePartsInRing), ROW(labelPoint), ROW(innerPointByTriangles),
          ROW(innerPointOfRegion), ROW(innerPointOfRing)}},
    };
}

}  // namespace fuzz
