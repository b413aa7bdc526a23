// Every operation of every interface stays in its slot: the order is the binary interface.
#include <gmock/gmock.h>

#include <cstdint>
#include <cstring>
#include <numeric>
#include <vector>

#include "calcora/calcora.h"
#include "geo/geometry.h"

namespace {

/// The slot of a virtual member: its place in declaration order, the destructor taking one place
/// although it has two entries in the table.
template <class Member>
int slotOf(Member member)
{
    std::intptr_t words[2];
    static_assert(sizeof member == sizeof words);
    std::memcpy(words, &member, sizeof words);
#if defined(__aarch64__) || defined(__arm__)
    const bool isVirtual = words[1] & 1;
    const std::intptr_t offset = words[0];
#else
    const bool isVirtual = words[0] & 1;
    const std::intptr_t offset = words[0] - 1;
#endif
    if (!isVirtual) return -1;
    const int entry = static_cast<int>(offset / std::intptr_t{sizeof(void*)});
    return entry < 2 ? entry : entry - 1;
}

template <class... Members>
std::vector<int> slotsOf(Members... members)
{
    return {slotOf(members)...};
}

/// The given members are all operations of I beyond those of the root, from slot 6 on.
template <class I>
void expectSlots(const std::vector<int>& slots)
{
    struct Longer : I {
        virtual void next() {}
    };
    std::vector<int> expected(slots.size());
    std::iota(expected.begin(), expected.end(), 6);
    EXPECT_EQ(slots, expected);
    EXPECT_EQ(slotOf(&Longer::next), 6 + static_cast<int>(slots.size()));
    EXPECT_EQ(slotsOf(&I::classInfo, &I::addRef, &I::release, &I::queryInterface, &I::className),
              (std::vector<int>{0, 2, 3, 4, 5}));
}

TEST(Slots, GeometryPlugin)
{
    using P = geo::IPointCollection;
    expectSlots<P>(slotsOf(&P::addPoint, &P::pointCount, &P::pointAt, &P::reserved9, &P::reserved10,
                           &P::reserved11, &P::reserved12, &P::addArcRecord, &P::arcRecords,
                           &P::firstPoint, &P::closingPoint));
    using M = geo::IMatrix;
    expectSlots<M>(slotsOf(&M::initSquare, &M::reserved7, &M::reserved8, &M::resize, &M::reserved10,
                           &M::reserved11, &M::reserved12, &M::rowCount, &M::columnCount,
                           &M::reserved15, &M::setValue, &M::value, &M::reserved18, &M::reserved19,
                           &M::reserved20, &M::reserved21, &M::reserved22, &M::reserved23,
                           &M::reserved24, &M::reserved25, &M::reserved26, &M::reserved27,
                           &M::reserved28, &M::reserved29, &M::reserved30, &M::reserved31,
                           &M::reserved32, &M::reserved33, &M::multiply, &M::reserved35,
                           &M::reserved36, &M::reserved37, &M::solveInPlace, &M::solve));
    expectSlots<geo::IPath>({});
    using R = geo::IPathReceiver;
    expectSlots<R>(slotsOf(&R::pieceCount, &R::addPiece, &R::pieceAt));
}

TEST(Slots, IcommonFunc)
{
    using I = IcommonFunc;
    expectSlots<I>(slotsOf(
        &I::polylineRegionRelation, &I::intersectBulgePolylines, &I::intersectArcWithBulgePolyline,
        &I::intersectLineWithBulgePolyline, &I::intersectArcSegment, &I::intersectArcArc,
        &I::intersectPolylinesToLists, &I::intersectPolylines, &I::intersectSegmentPolyline,
        &I::lineAngle, &I::pointDist, &I::projectionRatio, &I::pointDistSquared,
        &I::reverseDoubleList, &I::reversePointList, &I::dotProduct, &I::vectorDot,
        &I::innerProduct, &I::scalarProduct, &I::crossProduct, &I::arcMidPoint,
        &I::bulgeFrom3Points, &I::orientation3, &I::sweepAngle, &I::densifyArc3d,
        &I::closestPointOnSegment, &I::polygonArea, &I::bulgeSegmentArea, &I::bulgePolylineLength,
        &I::bulgeSegmentLength, &I::bulgePolygonArea, &I::segmentParameter, &I::arcSweepFraction,
        &I::bulgePolylineStations, &I::pointAtStation3d, &I::pointAtStationZ, &I::pointAtStation,
        &I::pointAtParameter, &I::pointOnBulgeSegmentAtRatio, &I::projectPointOnBulgePolyline,
        &I::pointOnBulgeSegmentAtDistance, &I::arcLength, &I::bulgeArcCenter, &I::circleFrom3Points,
        &I::intersectLineCircle, &I::intersectLineCircleEq, &I::intersectCircles,
        &I::intersectAngleLines, &I::intersectSegmentArc, &I::intersectSegments,
        &I::intersectSegmentsAll, &I::overlapIntervals, &I::isPointOnSegment,
        &I::pointInBulgeRegion, &I::pointInRegion, &I::pointInBulgePolygon, &I::pointInPolygon,
        &I::pointSegmentDistSquared, &I::pointLineDistSquared, &I::pointLineSignedDist,
        &I::nearestOnBulgePolylineEx, &I::nearestOnPolyline, &I::pointBulgePolylineDistSquared,
        &I::pointPolylineDistSquared, &I::pointBulgeSegmentDistSquared,
        &I::removeDuplicatePointsRaw, &I::removeDuplicatePoints, &I::reverseBulges, &I::polarPoint,
        &I::offsetPolyline, &I::splineInterpolate, &I::tensionCurve, &I::tensionCurveRaw,
        &I::tensionCurveZ, &I::tensionCurveZRaw, &I::bezierSpanToPolyline3d,
        &I::bezierSpanToPolyline, &I::bezierSpanPoint3d, &I::bezierCurveSpans, &I::akimaCurve,
        &I::simplifyRange, &I::simplifyPolylineWithValues, &I::simplifyPolyline, &I::ringCentroid,
        &I::hasPositiveBulgeArea, &I::bulgeArcExtents, &I::bulgePolylineExtents,
        &I::offsetBulgePolyline, &I::parallelSegment, &I::bulgeFromRadius, &I::bulgePolylineSection,
        &I::densifyBulgesByAngle, &I::bulgeArcToChords, &I::bulgeArcToChords3d,
        &I::bulgePolylineToChords, &I::bulgePolylineToChords3d, &I::dominantEdgeDirection,
        &I::intersectDirectionLines, &I::lowerLeftPointIndex, &I::isParallelDirection,
        &I::removeCollinearPoints, &I::lookupAngleLine, &I::isClockwiseRing, &I::squareRings,
        &I::bsplineToPolyline3d, &I::bsplineToPolyline, &I::convexHull,
        &I::pointSideOfBulgePolyline, &I::pointSideOfPolyline, &I::segmentsSideOfPolyline,
        &I::polylineSideOfPolyline, &I::segmentMidpointInRing, &I::polylineRingRelation,
        &I::polylinePartsInRing, &I::polylinesExtents, &I::pointsExtents, &I::polylinesRect,
        &I::pointsRect, &I::degreesToDms, &I::radiansToDms, &I::dmsToRadians,
        &I::translatePolylines, &I::translatePoints, &I::centerPointsOnBox, &I::normalizeAngle,
        &I::vectorAngle, &I::polarFromCoordinates, &I::coordinatesFromPolar,
        &I::circleCircleIntersection, &I::bulgeSegmentsLength, &I::polylineLength,
        &I::anyBulgeInLists, &I::hasBulges, &I::haveSameEnds, &I::findSameEnds,
        &I::angleBetweenDirections, &I::squareCorner, &I::squareCorners, &I::triangleArea,
        &I::triangleCentroid, &I::labelPoint, &I::innerPointByTriangles, &I::innerPointOfRegion,
        &I::innerPointOfRing, &I::pointsBoxCenterPoint, &I::pointsBoxCenter, &I::polylinesMeanPoint,
        &I::ringMeanPoint, &I::ringMean, &I::sortPointsByKey));
}

TEST(Slots, IGeometric)
{
    using I = IGeometric;
    expectSlots<I>(slotsOf(
        &I::directionAngle3d, &I::segmentDirectionAngle3d, &I::directionAngle2d,
        &I::segmentDirectionAngle2d, &I::distance3d, &I::segmentLength3d, &I::slopeAngle3d,
        &I::segmentSlopeAngle, &I::projectPointToSegmentLine3d, &I::projectPointToSegment,
        &I::segmentArcLength, &I::nearestPointOnPolyline, &I::angleBetweenSegments3d,
        &I::angleBetweenLines2d, &I::angleBetweenSegments2d, &I::pointOffsetFromSegmentLine2d,
        &I::pointDistToSegmentLine3d, &I::intersectSegments3d, &I::intersectSegmentArc,
        &I::intersectArcs, &I::segmentArcIntersections, &I::transformPoint3d,
        &I::lineCircleIntersections, &I::intersectCircles, &I::segmentArcCircle2d,
        &I::circleFrom3Points2d, &I::segmentArcCircle3d, &I::circleFrom3Points3d,
        &I::arcSegmentOp34, &I::arcTangentAtPoint, &I::pointListLength2d, &I::polylineLength2d,
        &I::polylineLength3d, &I::pointDistFromPointList, &I::pointDistFromPolyline,
        &I::pointDistFromPolyline3d, &I::pointRatioFromPointList, &I::pointRatioFromPolyline,
        &I::pointRatioFromPolyline3d, &I::polygonCentroidOfPointList, &I::polygonCentroid,
        &I::midPointOfPointList, &I::midPointOfPolyline, &I::polarPoint, &I::pointAlongVector,
        &I::raisePoint, &I::pathArcOp52, &I::sameSideOfLine));
}

TEST(Slots, IGeoSetUp)
{
    using I = IGeoSetUp;
    expectSlots<I>(slotsOf(&I::insertPathPoint, &I::removePathPoint, &I::setSegmentArc,
                           &I::splitPathIntoSegments, &I::arcThrough3Points3d,
                           &I::arcThrough3Points, &I::circleOnDiameter, &I::makeCircle,
                           &I::reversePath, &I::isAvailable));
}

TEST(Slots, IDataGeo)
{
    using I = IDataGeo;
    expectSlots<I>(slotsOf(
        &I::buildRegions, &I::buildDirectedRegions, &I::pointInBulgePolygon, &I::pointInPolygon,
        &I::intersectSegmentPolylineToLists, &I::intersectPolylinesToListsEx, &I::pointDistSquared,
        &I::reverseDoubleList, &I::reversePointList, &I::polylineLengthWithBulges,
        &I::segmentLengthWithBulge, &I::arcCenterFromBulge, &I::arcLengthFromCenter,
        &I::insertArcExtremes, &I::bulgeChordArea, &I::polarPoint, &I::pointDist, &I::lineAngle,
        &I::polygonAreaAbs, &I::polylineArcExtremes, &I::segmentArcExtremes,
        &I::arcPositionFraction, &I::sortPointsByKey));
}

TEST(Slots, ICRTree)
{
    using I = ICRTree;
    expectSlots<I>(slotsOf(&I::removeAll, &I::reset, &I::insertRect, &I::removeRect, &I::removeId,
                           &I::removeFirstOverlapping, &I::removeFirstContained, &I::bounds,
                           &I::forEachEntry, &I::forEachEntryWithRect, &I::findContained,
                           &I::findOverlapping, &I::searchOverlapping,
                           &I::searchOverlappingWithRect, &I::searchContained,
                           &I::searchContainedWithRect, &I::entryTotal));
}

TEST(Slots, IUnit)
{
    using I = IUnit;
    expectSlots<I>(slotsOf(&I::meterToUsFoot, &I::meterToFoot, &I::usFootToMeter, &I::footToMeter,
                           &I::polarToRect, &I::rectToPolar, &I::bearingToAzimuth,
                           &I::azimuthToBearing, &I::degreeToGon, &I::gonToDegree, &I::degreeToMil,
                           &I::milToDegree, &I::radianToDegree, &I::degreeToRadian));
}

}  // namespace
