// IDataGeo: closed loops from line work.
#pragma once

#include "tavrel/IObject.h"
#include "tavrel/Vector.h"
#include "tavrel/points.h"

/// Operations on line work, above all the building of closed loops: 23 operations (slots 6 to 28).
class IDataGeo : public tav::InterfaceOf<IDataGeo> {
public:
    static constexpr const char* kInterfaceName = "IDataGeo";

    using Point2DF = tav::Point2DF;
    using Points = tav::Vector<tav::Point2DF>;
    using Values = tav::Vector<double>;
    using PointLists = tav::Vector<Points>;
    using ValueLists = tav::Vector<Values>;

    /// Slot 6. Closed loops that line work forms: cuts all segments at their crossings and returns
    /// either the regions they enclose or the outlines.
    ///
    /// @param lines            polylines, drawing units; one that should close repeats its first point
    /// @param lineBulges       per polyline one bulge per point (the last one is not used); a polyline
    ///                         whose two lists differ in length is left out, and so is one shorter than
    ///                         1e-7
    /// @param loops            replaced: the loops' points without the first one repeated, smallest
    ///                         area first, equal areas in the order found
    /// @param loopBulges       replaced: parallel to the points, the last bulge closes the loop
    /// @param outerBoundaries  false: every bounded face by its full outer boundary, counter-clockwise.
    ///                         Holes are no loops of their own, what lies inside a hole is; so the
    ///                         areas tile the plane only where no figure lies inside a face of another.
    ///                         true: the outline of every biconnected block, clockwise; two squares
    ///                         joined by a bridge or touching at a vertex give one outline each. Pieces
    ///                         between 1e-7 and 1e-5 long can give outlines of one point.
    /// @param cancel           may be null; raised by another thread it stops the work. Raised while
    ///                         segments are cut it leaves no loops, later the loops found so far.
    ///                         Even on a million segments the call then ends within 50 ms; more
    ///                         than 65,536 loops may then stand in the order found.
    /// @param snapTolerance    drawing units: points within it in both coordinates of an earlier point
    ///                         take that point's place (of several, the earliest's); not above 0 snaps
    ///                         nothing
    ///
    /// Dangling lines and bridges appear nowhere; T joints stay as vertices. Segments drawn twice, in
    /// either direction, count once (ends within 1e-5 in both coordinates, bulges within 1e-7).
    /// Segments without length or with values that are not finite are left out. Ends within 1e-5 meet.
    /// What counts as a crossing, with absolute tolerances: two segments whose lengths multiply to less
    /// than 1e-3 never cut each other; a line that ends a hair short of an axis-parallel one is not
    /// tested against it, while against a slanted one gaps up to about 2e-6 are closed; cuts closer than
    /// 1e-7 of a segment's length are one. Draw small details larger, split very long lines.
    /// Near-linear in segments and crossings.
    virtual void buildRegions(const PointLists& lines, const ValueLists& lineBulges,
                              PointLists& loops, ValueLists& loopBulges, bool outerBoundaries,
                              bool* cancel, double snapTolerance) = 0;

    /// Slot 7. The gaps that figures enclose between them, counter-clockwise. As slot 6 with a snap
    /// tolerance of 1e-5, and every polyline a closed figure (its ends are joined by a straight segment
    /// when they are more than 1e-12 apart). Single figures, and figures that are merely neighbours, give
    /// nothing. A gap that a later figure fills is still reported. Of figures drawn twice one counts,
    /// whatever its direction. The cancel flag is read while segments are cut, not while loops are traced.
    virtual void buildDirectedRegions(const PointLists& lines, const ValueLists& lineBulges,
                                      PointLists& loops, ValueLists& loopBulges, bool* cancel) = 0;

    /// Slot 8. Where a point lies in a closed polyline with arcs: 1 outside, -1 inside, 0 on the
    /// boundary (within 1e-4 of a straight edge, 1e-6 of an arc), -2 for no point.
    ///
    /// A polyline that runs counter-clockwise (negative signed area) is reversed in place, its bulge list
    /// brought to the point count; otherwise both lists stay untouched. Missing bulges count as 0. Edges
    /// shorter than 3.2e-4 have no boundary of their own, but their crossings count, so a repeated vertex
    /// changes nothing.
    virtual int pointInBulgePolygon(Points& points, Values& bulges, Point2DF point) = 0;

    /// Slot 9. Where (x, y) lies in a straight-edged polygon: 1 outside, -1 inside, 0 within 1e-6 of
    /// the boundary or with fewer than 3 points. A vertex level with the point counts once.
    virtual int pointInPolygon(const Points& polygon, double x, double y) = 0;

    /// Slot 10. Crossings of the segment from `start` to `end` with a polyline.
    ///
    /// @param lo, hi  range of a crossing on the segment, as parameter times squared length
    /// @param outPoints, outParams  replaced: points and their parameters on the segment, in the order of
    ///                              the polyline's edges; they may be the input
    /// @return number of points; 0 (lists cleared) for fewer than 2 polyline points
    ///
    /// Along an edge a crossing counts from -1e-12 (on squared lengths) to 2e-6 before its end, on the
    /// last edge to 2e-6 beyond it: a crossing 1e-6 before an inner vertex belongs to no edge. Segments
    /// that are equal exactly give both ends whatever the ranges.
    virtual int intersectSegmentPolylineToLists(const Point2DF& start, const Point2DF& end,
                                                const Points& polyline, double lo, double hi,
                                                Points& outPoints, Values& outParams) = 0;

    /// Slot 11. Crossings of two polylines; parameters are edge number of `a` plus fraction.
    /// @return number of points, coincident ones (within 1e-6 on one edge) counted once; 0 with the lists
    /// untouched when either polyline has fewer than 2 points, otherwise the lists are replaced. Ranges as
    /// in slot 10, on both polylines.
    virtual int intersectPolylinesToListsEx(const Points& a, const Points& b, Points& outPoints,
                                            Values& outParams) = 0;

    /// Slot 12. Squared distance of two points.
    virtual double pointDistSquared(const Point2DF& a, const Point2DF& b) = 0;

    /// Slot 13. Reverses the list in place.
    virtual void reverseDoubleList(Values& values) = 0;

    /// Slot 14. Reverses the list in place.
    virtual void reversePointList(Points& points) = 0;

    /// Slot 15. Length of a polyline with arcs, drawing units.
    /// @param closed  adds the segment from the last point to the first, with the last bulge
    /// @return -1.0 for fewer than 2 points or lists of different length
    virtual double polylineLengthWithBulges(const Points& points, const Values& bulges,
                                            bool closed) = 0;

    /// Slot 16. Length of the segment or arc; below |bulge| 1e-6 that of the chord.
    virtual double segmentLengthWithBulge(const Point2DF& p1, const Point2DF& p2, double bulge) = 0;

    /// Slot 17. Centre and radius of the arc from p1 to p2. Bulge 0 gives the chord's middle and a
    /// radius that is not finite; coincident ends with a bulge give that point and 0. A null radius is
    /// skipped.
    virtual void arcCenterFromBulge(const Point2DF& p1, const Point2DF& p2, double bulge,
                                    Point2DF& centre, double* radius) = 0;

    /// Slot 18. Radius times the sweep from `from` to `to` about the centre, in [0, 2 pi): equal
    /// directions give 0, never a full circle.
    virtual double arcLengthFromCenter(const Point2DF& centre, double radius, const Point2DF& from,
                                       const Point2DF& to, bool clockwise) = 0;

    /// Slot 19. The polyline with vertices inserted where its arcs are topmost or lowest (`yExtremes`)
    /// or leftmost or rightmost (`xExtremes`), so that every piece is monotone in those directions.
    ///
    /// @param closed  the first point is appended, and the closing segment is cut too
    /// @param outPoints, outBulges  replaced, of equal length, last bulge 0; they may be the inputs
    ///
    /// An extreme up to 1e-6 of an edge before a vertex takes that vertex's place, one up to 1e-6 after a
    /// vertex goes. Each piece has its share of the sweep; edges below |bulge| 1e-6 become straight.
    /// Missing bulges count as 0.
    virtual void insertArcExtremes(Points points, Values bulges, bool closed, bool xExtremes,
                                   bool yExtremes, Points& outPoints, Values& outBulges) = 0;

    /// Slot 20. Area between chord and arc, never negative; 0 below |bulge| 1e-12. Beyond a half
    /// circle the triangle between chord and centre is taken off all the same (a three-quarter arc of
    /// radius 1 gives 3 pi / 4 - 1 / 2): cut such arcs first.
    virtual double bulgeChordArea(const Point2DF& p1, const Point2DF& p2, double bulge) = 0;

    /// Slot 21. out = base + distance (cos angle, sin angle); radians.
    virtual void polarPoint(const Point2DF& base, double angle, double distance, Point2DF& out) = 0;

    /// Slot 22. Distance of two points.
    virtual double pointDist(const Point2DF& a, const Point2DF& b) = 0;

    /// Slot 23. Direction from `from` to `to` in [0, 2 pi), radians; as IcommonFunc::lineAngle.
    virtual double lineAngle(const Point2DF& from, const Point2DF& to) = 0;

    /// Slot 24. Area of the closed straight-edged polygon, without sign; 0 for fewer than 2 points.
    virtual double polygonAreaAbs(const Points& polygon) = 0;

    /// Slot 25. Appends the extreme points of all arcs with their positions (edge number plus fraction of
    /// the sweep); false, nothing appended, for fewer than 2 points. See slot 26.
    virtual bool polylineArcExtremes(const Points& points, const Values& bulges, bool closed,
                                     bool xExtremes, bool yExtremes, Points& outPoints,
                                     Values& outPositions) = 0;

    /// Slot 26. Appends the extreme points of one arc that lie strictly inside it, with the positions
    /// `index` + fraction of the sweep, in the order top, left, bottom, right; nothing below |bulge| 1e-6.
    virtual void segmentArcExtremes(int index, const Point2DF& p1, const Point2DF& p2, double bulge,
                                    bool xExtremes, bool yExtremes, Points& outPoints,
                                    Values& outPositions) = 0;

    /// Slot 27. Place of a point on an arc as fraction of its sweep: 0 at the start, 1 at the end. Of
    /// the gap outside the arc the half before the start is negative, the other above 1. Start and end in
    /// one direction from the centre: 0 for a point in that direction, otherwise infinity.
    virtual double arcPositionFraction(const Point2DF& point, const Point2DF& centre,
                                       const Point2DF& start, const Point2DF& end,
                                       bool clockwise) = 0;

    /// Slot 28. Sorts points and keys together, ascending by key, equal keys in their order; as
    /// IcommonFunc::sortPointsByKey.
    virtual void sortPointsByKey(Points& points, Values& keys) = 0;
};
