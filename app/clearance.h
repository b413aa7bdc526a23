// Where segments keep their distance from a line.
#pragma once

#include <vector>

#include "app/corner_tips.h"
#include "app/segment_index.h"

namespace calcora::app {

/// Part of a segment, as shares of its length.
struct Stretch {
    double from = 0;
    double to = 1;
};

/// A segment as the way along it: straight, or about a centre.
class Way {
public:
    Way(IcommonFunc& common, const Segment& segment);

    tav::Point2DF at(double share) const;
    double distance(const tav::Point2DF& point) const;
    /// Of a part, somewhat larger for an arc.
    TwoBoxes boundsOf(const Stretch& part) const;

    /// A lower bound of the distance between a box and a part of the way with that box.
    double leastDistance(const Box& box, const Stretch& part, const Box& partBox) const;

    /// Appends the places of this way on the lines and circles that are `distance` from another.
    void crossBand(const Way& other, double distance, std::vector<double>& shares) const;
    /// Appends its places on the lines around the inside of a tip.
    void crossSides(const CornerTips::Inside& sides, std::vector<double>& shares) const;

private:
    void crossCircle(const tav::Point2DF& centre, double radius, std::vector<double>& shares) const;
    void crossLine(const tav::Point2DF& place, const tav::Point2DF& direction,
                   std::vector<double>& shares) const;
    void addAngles(double axis, double cosine, std::vector<double>& shares) const;
    double turnTo(double angle) const;

    Segment segment_;
    bool isArc_ = false;
    double length_ = 0;     ///< of the chord
    tav::Point2DF along_;   ///< unit vector of a straight way
    tav::Point2DF centre_;  ///< of an arc
    double radius_ = 0;
    double startAngle_ = 0;
    double sweep_ = 0;
};

/// Tells which parts of segments are nowhere nearer to a line than a distance, nor inside the tips
/// of its parallel.
///
/// The points nearer than the distance to one segment of the line form a band about it: between its
/// two parallels, and in the discs about its ends. What comes nearer to the line enters a band,
/// across one of these lines and circles; so between two crossings with them all points of a piece
/// are in the band or none is, and its middle tells. Each band is taken away from what is still
/// clear, the nearest first; what no band reaches any more is not looked at again. Likewise the
/// tips: they may be much longer than the distance, and each would cross hundreds of others.
class Clearance {
public:
    /// What lies less than `depth` inside a tip counts as outside. The index must outlive this
    /// object.
    Clearance(IcommonFunc& common, const SegmentIndex& line, const std::vector<CornerTip>& tips,
              double distance, double depth);

    /// The clear parts of a segment in their order.
    std::vector<Stretch> clearStretches(const Segment& segment) const;

private:
    IcommonFunc& common_;
    const SegmentIndex& line_;
    std::vector<Way> ways_;  ///< of the line's segments
    CornerTips tips_;
    double distance_;
};

}  // namespace calcora::app
