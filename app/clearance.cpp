#include "app/clearance.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace calcora::app {

namespace {

using tav::Point2DF;

constexpr double kTurn = 2 * std::numbers::pi;

double dot(const Point2DF& a, const Point2DF& b)
{
    return a.x() * b.x() + a.y() * b.y();
}

double cross(const Point2DF& a, const Point2DF& b)
{
    return a.x() * b.y() - a.y() * b.x();
}

double length(const Point2DF& vector)
{
    return std::sqrt(dot(vector, vector));
}

Box grown(const Box& box, double by)
{
    return {box.minX - by, box.minY - by, box.maxX + by, box.maxY + by};
}

void addInside(double share, std::vector<double>& shares)
{
    if (share > 0 && share < 1) shares.push_back(share);
}

/// What is left of a segment while bands are taken away.
class Remains {
public:
    Remains(IcommonFunc& common, const Segment& segment, double distance)
        : way_(common, segment), distance_(distance)
    {
        setBounds();
    }

    const std::vector<Stretch>& stretches() const { return stretches_; }
    Point2DF middle() const { return way_.at(0.5); }

    bool mayBeNear(const Box& box) const
    {
        return !stretches_.empty() && way_.leastDistance(box, hull(), bounds_.upright) < distance_;
    }
    bool mayBeIn(const TwoBoxes& bounds) const
    {
        return !stretches_.empty() && bounds.overlap(bounds_);
    }

    void takeAway(const Way& other)
    {
        cuts_.clear();
        way_.crossBand(other, distance_, cuts_);
        keep([&](const Point2DF& middle) { return other.distance(middle) >= distance_; });
    }
    void takeAway(const CornerTips::Inside& inside)
    {
        cuts_.clear();
        way_.crossSides(inside, cuts_);
        keep([&](const Point2DF& middle) { return !isInside(inside, middle); });
    }

private:
    Stretch hull() const { return {stretches_.front().from, stretches_.back().to}; }

    /// Cuts what is left, and keeps of it the parts whose middle is free.
    template <class IsFree>
    void keep(IsFree&& isFree)
    {
        std::sort(cuts_.begin(), cuts_.end());
        left_.clear();
        for (const Stretch& stretch : stretches_) {
            double from = stretch.from;
            const auto keepTo = [&](double to) {
                if (isFree(way_.at((from + to) / 2))) {
                    if (!left_.empty() && left_.back().to == from)
                        left_.back().to = to;
                    else
                        left_.push_back({from, to});
                }
                from = to;
            };
            for (const double cut : cuts_)
                if (cut > from && cut < stretch.to) keepTo(cut);
            keepTo(stretch.to);
        }
        std::swap(stretches_, left_);
        const bool isSame = !stretches_.empty() && stretches_.front().from == left_.front().from &&
                            stretches_.back().to == left_.back().to;
        if (!isSame) setBounds();
    }

    void setBounds()
    {
        if (stretches_.empty()) return;
        bounds_ = way_.boundsOf(hull());
    }

    Way way_;
    double distance_;
    std::vector<Stretch> stretches_ = {{0, 1}};
    TwoBoxes bounds_;  ///< of all that is left
    std::vector<double> cuts_;
    std::vector<Stretch> left_;
};

}  // namespace

Way::Way(IcommonFunc& common, const Segment& segment)
    : segment_(segment), isArc_(std::fabs(segment.bulge) >= kArcBulge)
{
    const Point2DF chord = segment.to - segment.from;
    length_ = length(chord);
    if (length_ > 0) along_ = 1 / length_ * chord;
    if (!isArc_) return;
    common.bulgeArcCenter(segment.from, segment.to, segment.bulge, centre_, &radius_);
    const Point2DF toStart = segment.from - centre_;
    startAngle_ = std::atan2(toStart.y(), toStart.x());
    sweep_ = 4 * std::atan(segment.bulge);
}

Point2DF Way::at(double share) const
{
    if (share <= 0) return segment_.from;
    if (share >= 1) return segment_.to;
    if (!isArc_) return segment_.from + share * (segment_.to - segment_.from);
    const double angle = startAngle_ + share * sweep_;
    return centre_ + radius_ * Point2DF(std::cos(angle), std::sin(angle));
}

/// The angle about the centre from the start to a direction, in the sense of the arc.
double Way::turnTo(double angle) const
{
    const double turn = std::fmod((angle - startAngle_) * (sweep_ > 0 ? 1 : -1), kTurn);
    return turn < 0 ? turn + kTurn : turn;
}

double Way::distance(const Point2DF& point) const
{
    const Point2DF toPoint = point - segment_.from;
    if (isArc_) {
        const Point2DF out = point - centre_;
        if (turnTo(std::atan2(out.y(), out.x())) <= std::fabs(sweep_))
            return std::fabs(length(out) - radius_);
        return std::min(length(toPoint), length(point - segment_.to));
    }
    const double foot = dot(along_, toPoint);
    if (foot <= 0) return length(toPoint);
    return foot >= length_ ? length(point - segment_.to) : std::fabs(cross(along_, toPoint));
}

TwoBoxes Way::boundsOf(const Stretch& part) const
{
    TwoBoxes bounds;
    bounds.add(at(part.from));
    bounds.add(at(part.to));
    if (!isArc_) return bounds;
    // An arc lies within its sagitta of the chord, and within its circle.
    const double turn = std::min(std::fabs(sweep_) * (part.to - part.from), kTurn / 2);
    const double rise = turn < kTurn / 2 ? radius_ * (1 - std::cos(turn / 2)) : 2 * radius_;
    return {grown(bounds.upright, rise), grown(bounds.turned, rise * std::numbers::sqrt2)};
}

double Way::leastDistance(const Box& box, const Stretch& part, const Box& partBox) const
{
    const double x = std::max({partBox.minX - box.maxX, box.minX - partBox.maxX, 0.0});
    const double y = std::max({partBox.minY - box.maxY, box.minY - partBox.maxY, 0.0});
    const double apart = std::hypot(x, y);
    const Point2DF middle((box.minX + box.maxX) / 2, (box.minY + box.maxY) / 2);
    const Point2DF half(box.width() / 2, box.height() / 2);
    if (isArc_) {
        const Point2DF corner(std::fabs(middle.x() - centre_.x()) + half.x(),
                              std::fabs(middle.y() - centre_.y()) + half.y());
        return std::max({apart, boxDistance(box, centre_) - radius_, radius_ - length(corner)});
    }
    // Along the way and across it.
    const Point2DF place = middle - segment_.from;
    const Point2DF steepness(std::fabs(along_.x()), std::fabs(along_.y()));
    const double foot = dot(along_, place);
    const double reach = dot(steepness, half);
    const double beyond =
        std::max({part.from * length_ - foot - reach, foot - reach - part.to * length_, 0.0});
    const double beside = std::max(
        std::fabs(cross(along_, place)) - (steepness.x() * half.y() + steepness.y() * half.x()),
        0.0);
    return std::max(apart, std::hypot(beyond, beside));
}

void Way::crossBand(const Way& other, double distance, std::vector<double>& shares) const
{
    crossCircle(other.segment_.from, distance, shares);
    crossCircle(other.segment_.to, distance, shares);
    if (other.isArc_) {
        crossCircle(other.centre_, other.radius_ + distance, shares);
        crossCircle(other.centre_, std::fabs(other.radius_ - distance), shares);
    } else if (other.length_ > 0) {
        const Point2DF aside(-other.along_.y() * distance, other.along_.x() * distance);
        crossLine(other.segment_.from + aside, other.along_, shares);
        crossLine(other.segment_.from - aside, other.along_, shares);
    }
}

void Way::crossSides(const CornerTips::Inside& sides, std::vector<double>& shares) const
{
    for (const Side& side : sides) crossLine(side.place, side.along, shares);
}

void Way::crossCircle(const Point2DF& centre, double radius, std::vector<double>& shares) const
{
    if (isArc_) {
        const Point2DF apart = centre - centre_;
        const double distance = length(apart);
        addAngles(std::atan2(apart.y(), apart.x()),
                  (distance * distance + (radius_ - radius) * (radius_ + radius)) /
                      (2 * distance * radius_),
                  shares);
        return;
    }
    const Point2DF toCentre = centre - segment_.from;
    const double foot = dot(along_, toCentre);
    const double beside = cross(along_, toCentre);
    const double half = std::sqrt((radius - beside) * (radius + beside));
    addInside((foot - half) / length_, shares);
    addInside((foot + half) / length_, shares);
}

/// The line through a place in a direction, a unit vector.
void Way::crossLine(const Point2DF& place, const Point2DF& direction,
                    std::vector<double>& shares) const
{
    if (isArc_)
        addAngles(std::atan2(direction.x(), -direction.y()),
                  cross(direction, place - centre_) / radius_, shares);
    else
        addInside(cross(place - segment_.from, direction) / cross(along_, direction) / length_,
                  shares);
}

/// The places of an arc whose directions from its centre are that far from `axis`.
void Way::addAngles(double axis, double cosine, std::vector<double>& shares) const
{
    if (!(std::fabs(cosine) <= 1)) return;
    const double off = std::acos(cosine);
    for (const double angle : {axis - off, axis + off})
        addInside(turnTo(angle) / std::fabs(sweep_), shares);
}

Clearance::Clearance(IcommonFunc& common, const SegmentIndex& line,
                     const std::vector<CornerTip>& tips, double distance, double depth)
    : common_(common), line_(line), tips_(tips, depth), distance_(distance)
{
    ways_.reserve(static_cast<std::size_t>(line.count()));
    for (int i = 0; i < line.count(); ++i) ways_.emplace_back(common, line.segment(i));
}

std::vector<Stretch> Clearance::clearStretches(const Segment& segment) const
{
    Remains remains(common_, segment, distance_);
    line_.search(
        remains.middle(), [&](const Box& box) { return remains.mayBeNear(box); },
        [&](int i) { remains.takeAway(ways_[static_cast<std::size_t>(i)]); });
    tips_.search(
        remains.middle(), [&](const TwoBoxes& bounds) { return remains.mayBeIn(bounds); },
        [&](const CornerTips::Inside& inside) { remains.takeAway(inside); });
    return remains.stretches();
}

}  // namespace calcora::app
