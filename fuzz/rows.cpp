// The rows of all interfaces but IcommonFunc.
#include "fuzz/rows.h"

namespace fuzz {

namespace {

std::vector<Family> geometricFamilies()
{
    using I = IGeometric;
    return {
        {"path measures",
         {ROW(directionAngle3d),
          ROW(segmentDirectionAngle3d),
          ROW(directionAngle2d),
          ROW(segmentDirectionAngle2d),
          ROW(distance3d),
          ROW(segmentLength3d),
          ROW(slopeAngle3d),
          ROW(segmentSlopeAngle),
          ROW(projectPointToSegmentLine3d),
          ROW(segmentArcLength),
          ROW(nearestPointOnPolyline),
          ROW(angleBetweenSegments3d),
          ROW(angleBetweenLines2d),
          ROW(angleBetweenSegments2d),
          ROW(pointOffsetFromSegmentLine2d),
          ROW(pointDistToSegmentLine3d),
          ROW(pointListLength2d),
          ROW(polylineLength2d),
          ROW(polylineLength3d),
          ROW(polarPoint),
          ROW(pointAlongVector, kAbsolute),
          ROW(raisePoint),
          ROW(sameSideOfLine)}},
        {"path stations",
         {ROW(pointDistFromPointList), ROW(pointDistFromPolyline), ROW(pointDistFromPolyline3d),
          ROW(pointRatioFromPointList), ROW(pointRatioFromPolyline), ROW(pointRatioFromPolyline3d),
          ROW(polygonCentroidOfPointList, kWritesAlways), ROW(polygonCentroid, kWritesAlways),
          ROW(midPointOfPointList), ROW(midPointOfPolyline)}},
        {"path circles and intersections",
         {ROW(projectPointToSegment), ROW(intersectSegments3d), ROW(intersectSegmentArc),
          ROW(intersectArcs), ROW(segmentArcIntersections), ROW(transformPoint3d, kAbsolute),
          ROW(lineCircleIntersections), ROW(intersectCircles), ROW(segmentArcCircle2d),
          ROW(circleFrom3Points2d), ROW(segmentArcCircle3d), ROW(circleFrom3Points3d),
          ROW(arcSegmentOp34), ROW(arcTangentAtPoint), ROW(pathArcOp52)}},
    };
}

std::vector<Family> setUpFamilies()
{
    using I = IGeoSetUp;
    return {
        {"path editing",
         {ROW(insertPathPoint), ROW(removePathPoint), ROW(setSegmentArc),
          ROW(splitPathIntoSegments), ROW(arcThrough3Points3d), ROW(arcThrough3Points),
          ROW(circleOnDiameter, kWritesAlways), ROW(makeCircle), ROW(reversePath),
          ROW(isAvailable)}},
    };
}

std::vector<Family> dataFamilies()
{
    using I = IDataGeo;
    return {
        {"loops and line work",
         {ROW(buildRegions),
          ROW(buildDirectedRegions),
          ROW(pointInBulgePolygon, kWritesAlways),
          ROW(pointInPolygon, kAbsolute),
          ROW(intersectSegmentPolylineToLists),
          ROW(intersectPolylinesToListsEx),
          ROW(pointDistSquared),
          ROW(reverseDoubleList),
          ROW(reversePointList),
          ROW(polylineLengthWithBulges),
          ROW(segmentLengthWithBulge),
          ROW(arcCenterFromBulge, kInfinite),
          ROW(arcLengthFromCenter),
          ROW(insertArcExtremes),
          ROW(bulgeChordArea),
          ROW(polarPoint),
          ROW(pointDist),
          ROW(lineAngle),
          ROW(polygonAreaAbs),
          ROW(polylineArcExtremes),
          ROW(segmentArcExtremes),
          ROW(arcPositionFraction, kInfinite),
          ROW(sortPointsByKey)}},
    };
}

std::vector<Family> treeFamilies()
{
    using I = ICRTree;
    return {
        {"R-tree",
         {ROW(removeAll), ROW(reset), ROW(insertRect), ROW(removeRect), ROW(removeId),
          ROW(removeFirstOverlapping), ROW(removeFirstContained), ROW(bounds), ROW(forEachEntry),
          ROW(forEachEntryWithRect), ROW(findContained), ROW(findOverlapping),
          ROW(searchOverlapping), ROW(searchOverlappingWithRect), ROW(searchContained),
          ROW(searchContainedWithRect), ROW(entryTotal)}},
    };
}

std::vector<Family> unitFamilies()
{
    using I = IUnit;
    return {
        {"units",
         {ROW(meterToUsFoot), ROW(meterToFoot), ROW(usFootToMeter), ROW(footToMeter),
          ROW(polarToRect, Room{1}), ROW(rectToPolar, kInfinite), ROW(bearingToAzimuth),
          ROW(azimuthToBearing), ROW(degreeToGon), ROW(gonToDegree), ROW(degreeToMil),
          ROW(milToDegree), ROW(radianToDegree), ROW(degreeToRadian)}},
    };
}

}  // namespace

const std::vector<Family>& families()
{
    static const std::vector<Family> all = [] {
        std::vector<Family> result;
        for (const auto make : {commonFamilies, geometricFamilies, setUpFamilies, dataFamilies,
                                treeFamilies, unitFamilies})
            for (Family& family : make()) result.push_back(std::move(family));
        return result;
    }();
    return all;
}

}  // namespace fuzz
