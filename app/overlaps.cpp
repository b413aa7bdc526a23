#include "app/overlaps.h"

#include <cmath>

namespace calcora::app {

namespace {

using tav::Point2DF;

double dot(const Point2DF& a, const Point2DF& b)
{
    return a.x() * b.x() + a.y() * b.y();
}

double cross(const Point2DF& a, const Point2DF& b)
{
    return a.x() * b.y() - a.y() * b.x();
}

bool isStraight(const Segment& segment)
{
    return std::fabs(segment.bulge) < kArcBulge;
}

/// What is left of a straight segment.
class Rest {
public:
    explicit Rest(const Segment& segment)
        : from_(segment.from), length_(segment.from.distanceTo(segment.to))
    {
        if (!(length_ > 0)) return;
        along_ = (1 / length_) * (segment.to - segment.from);
        setBounds();
    }

    const std::vector<Stretch>& stretches() const { return stretches_; }
    Point2DF middle() const { return from_ + length_ / 2 * along_; }
    bool mayTouch(const TwoBoxes& bounds) const
    {
        return length_ > 0 && !stretches_.empty() && bounds.overlap(bounds_);
    }

    void takeAway(const Segment& other, double tolerance)
    {
        const Point2DF from = other.from - from_;
        const Point2DF to = other.to - from_;
        if (!isStraight(other) || std::fabs(cross(along_, from)) > tolerance ||
            std::fabs(cross(along_, to)) > tolerance)
            return;
        const Stretch gone{dot(along_, from) / length_, dot(along_, to) / length_};
        if (!(gone.to > gone.from)) return;
        std::vector<Stretch> left;
        for (const Stretch& stretch : stretches_) {
            if (gone.to <= stretch.from || gone.from >= stretch.to) {
                left.push_back(stretch);
                continue;
            }
            if (gone.from > stretch.from) left.push_back({stretch.from, gone.from});
            if (gone.to < stretch.to) left.push_back({gone.to, stretch.to});
        }
        stretches_ = std::move(left);
        setBounds();
    }

private:
    void setBounds()
    {
        if (stretches_.empty()) return;
        bounds_ = {};
        bounds_.add(from_ + stretches_.front().from * length_ * along_);
        bounds_.add(from_ + stretches_.back().to * length_ * along_);
    }

    Point2DF from_;
    double length_;
    Point2DF along_;
    std::vector<Stretch> stretches_ = {{0, 1}};
    TwoBoxes bounds_;
};

}  // namespace

std::vector<std::vector<Stretch>> withoutOverlaps(const std::vector<Segment>& segments,
                                                  double tolerance)
{
    // Across its line a segment has the tolerance for its box, so that those beside it are found.
    std::vector<TwoBoxes> bounds;
    for (const Segment& segment : segments) {
        TwoBoxes& box = bounds.emplace_back();
        for (const Point2DF& end : {segment.from, segment.to})
            for (const double by : {-tolerance, tolerance}) box.add(end + Point2DF(by, by));
    }
    const BoundsTree tree(std::move(bounds));

    std::vector<std::vector<Stretch>> rests;
    for (std::size_t i = 0; i < segments.size(); ++i) {
        Rest rest(segments[i]);
        if (isStraight(segments[i]))
            tree.searchBefore(
                static_cast<int>(i), rest.middle(),
                [&](const TwoBoxes& box) { return rest.mayTouch(box); },
                [&](int k) { rest.takeAway(segments[static_cast<std::size_t>(k)], tolerance); });
        rests.push_back(rest.stretches());
    }
    return rests;
}

}  // namespace calcora::app
