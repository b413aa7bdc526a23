// Figures at survey coordinates give what they give at the origin.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <numbers>
#include <set>
#include <string>

#include "calcora/calcora.h"
#include "tavrel/PluginHost.h"
#include "tests/reliability/support.h"

namespace {

using fuzz::Outcome;
using tav::Point2DF;

const Point2DF kPlaces[] = {{5e5, 4e6}, {-3.2e7, 5.1e6}};

/// The largest deviation by family, in units of 1 + |value|: coordinates and numbers after moving
/// back. One step of a coordinate is 4.7e-10 at (5e5, 4e6) and 3.7e-9 at (-3.2e7, 5.1e6).
double boundOf(const std::string& family)
{
    static const std::map<std::string, double> kBounds = {{"angles and squaring", 1e-6}};
    const auto at = kBounds.find(family);
    return at == kBounds.end() ? 1e-8 : at->second;
}

/// How far b is from a moved by `move`; infinite when they differ in a decision.
double deviation(const Outcome& a, const Outcome& b, const Point2DF& move)
{
    if (a.items.size() != b.items.size()) return INFINITY;
    double worst = 0;
    for (std::size_t i = 0; i < a.items.size(); ++i) {
        const auto [kind, value] = a.items[i];
        if (kind == Outcome::Count && value != b.items[i].value) return INFINITY;
        const double shift = kind == Outcome::X ? move.x() : kind == Outcome::Y ? move.y() : 0;
        if (value == 0 && b.items[i].value == 0) continue;  // where there is no point
        double off = std::fabs(b.items[i].value - shift - value);
        // Directions on either side of the x axis.
        if (kind == Outcome::Number) off = std::min(off, std::fabs(off - 2 * std::numbers::pi));
        if (std::isfinite(value) || std::isfinite(b.items[i].value))
            worst = std::max(worst, off / (1 + std::fabs(value)));
    }
    return worst;
}

TEST(Survey, MovesNoDecisionAndNoDigitBeyondTheLast)
{
    std::map<std::string, double> worst;
    reliability::forEachOperation(
        [&](const fuzz::Family& family, const fuzz::Operation& operation) {
            if (operation.flags & fuzz::kAbsolute) return;
            for (unsigned number = 0; number < 200; ++number) {
                const auto bytes = reliability::bytesOf(number, fuzz::Manner::Clear);
                const auto outcomeAt = [&](const Point2DF& place) {
                    fuzz::Source source(bytes.data(), bytes.size());
                    source.frame = {0.3 + 0.7 * number, place};
                    Outcome outcome;
                    fuzz::Call(source).run(operation, outcome);
                    return outcome;
                };
                const Outcome atOrigin = outcomeAt({});
                for (const Point2DF& place : kPlaces) {
                    const double off = deviation(atOrigin, outcomeAt(place), place);
                    EXPECT_LE(off, boundOf(family.name))
                        << operation.name << ", case " << number << " at " << place.x();
                    worst[family.name] = std::max(worst[family.name], off);
                }
            }
        });
    for (const auto& [family, off] : worst)
        RecordProperty(family, std::to_string(off / 1e-9) + "e-9");
}

/// What operations with plain coordinates or vectors among their arguments say to a figure.
class Figure {
public:
    Figure(unsigned number, const Point2DF& place) : place_(place)
    {
        const auto bytes = reliability::bytesOf(number, fuzz::Manner::Clear);
        fuzz::Source source(bytes.data(), bytes.size());
        source.frame = {0.3 + 0.7 * number, place};
        while (points_.size() < 3) source.fill(points_);
        a_ = points_[0], b_ = points_[1], c_ = points_[2];
        const double angle = number;
        half_ = Point2DF(25 * std::cos(angle), 25 * std::sin(angle));
        ahead_ = half_ + half_;
    }

    Outcome of(const std::string& name)
    {
        outcome_.items.clear();
        Point2DF pair[2];
        double x = 0, y = 0, right = 0, bottom = 0, shares[2] = {};
        int count = 0;
        Points list;
        IcommonFunc::PointLists lists;
        const Points halves[] = {points_, {c_, a_}};
        if (name == "pointInPolygon") {
            put(Outcome::Count, data_->pointInPolygon(points_, a_.x() + 0.5, a_.y() + 0.25));
            put(Outcome::Count, data_->pointInPolygon(points_, a_.x(), a_.y()));
        } else if (name == "intersectSegments") {
            common_->intersectSegments(a_, b_ - a_, c_ - half_, ahead_, -1e-6, 1e12, -1e-6, 1e12,
                                       pair, shares, &count);
            put(Outcome::Count, count);
            for (int i = 0; i < count; ++i) put(pair[i]);
        } else if (name == "intersectSegmentsAll") {
            common_->intersectSegmentsAll(a_, ahead_, a_ + half_, ahead_, list);
            put(list);
        } else if (name == "intersectLineCircleEq") {
            // Across the circle's middle, so that the points do not slide along it.
            const double c = -(ahead_.x() * a_.x() + ahead_.y() * a_.y());
            count =
                common_->intersectLineCircleEq(a_, 20, ahead_.x(), ahead_.y(), c, pair[0], pair[1]);
            put(Outcome::Count, count);
            for (int i = 0; i < count; ++i) put(pair[i]);
        } else if (name == "vectorAngle") {
            put(Outcome::Number, common_->vectorAngle(a_.x(), a_.y(), b_.x(), b_.y()));
        } else if (name == "polarFromCoordinates") {
            common_->polarFromCoordinates(a_.x(), a_.y(), b_.x(), b_.y(), x, y);
            put(Outcome::Number, x);
            put(Outcome::Number, y);
        } else if (name == "coordinatesFromPolar") {
            common_->coordinatesFromPolar(x, y, a_.x(), a_.y(), 50, ahead_.x());
            put({x, y});
        } else if (name == "pointAlongVector") {
            tav::Point3DF out;
            geometric_->pointAlongVector({a_, 0}, {ahead_, 3}, 50, out);
            put({out.x(), out.y()});
        } else if (name == "polylinesExtents") {
            common_->polylinesExtents({halves[0], halves[1]}, x, y, right, bottom);
            put({x, y});
            put({right, bottom});
        } else if (name == "polylinesRect") {
            const tav::RectF box = common_->polylinesRect({halves[0], halves[1]});
            put({box.left(), box.top()});
            put(Outcome::Number, box.right());  // width and height
            put(Outcome::Number, box.bottom());
        } else if (name == "translatePoints") {
            common_->translatePoints(points_, ahead_.x(), ahead_.y(), list);
            put(list);
        } else if (name == "translatePolylines") {
            common_->translatePolylines({halves[0], halves[1]}, ahead_.x(), ahead_.y(), lists);
            put(lists.at(0));
            put(lists.at(1));
        } else if (name == "centerPointsOnBox") {
            common_->centerPointsOnBox(points_, x, y, list);
            put({x, y});
            for (const Point2DF& p : std::as_const(list)) put(p + place_);
        } else if (name == "ringMean") {
            common_->ringMean(points_, x, y);
            put({x, y});
        }
        return outcome_;
    }

private:
    using Points = IcommonFunc::Points;

    void put(Outcome::Kind kind, double value) { outcome_.items.push_back({kind, value}); }
    void put(const Point2DF& p)
    {
        put(Outcome::X, p.x());
        put(Outcome::Y, p.y());
    }
    void put(const Points& points)
    {
        put(Outcome::Count, points.size());
        for (const Point2DF& p : points) put(p);
    }

    tav::Ref<IcommonFunc> common_ = tav::Ref<IcommonFunc>::create();
    tav::Ref<IGeometric> geometric_ = tav::Ref<IGeometric>::create();
    tav::Ref<IDataGeo> data_ = tav::Ref<IDataGeo>::create();
    Point2DF place_, a_, b_, c_, half_, ahead_;
    Points points_;
    Outcome outcome_;
};

TEST(Survey, MovesFiguresBesidePlainCoordinates)
{
    // Vectors alone, or a matrix about the origin, have no place that could be moved.
    const std::set<std::string> kWithoutPlace = {"dotProduct",   "vectorDot",
                                                 "innerProduct", "scalarProduct",
                                                 "crossProduct", "transformPoint3d"};
    reliability::forEachOperation([&](const fuzz::Family&, const fuzz::Operation& operation) {
        if (!(operation.flags & fuzz::kAbsolute) || kWithoutPlace.contains(operation.name)) return;
        for (unsigned number = 0; number < 100; ++number) {
            const Outcome atOrigin = Figure(number, {}).of(operation.name);
            EXPECT_FALSE(atOrigin.items.empty()) << operation.name << " is not in the table";
            for (const Point2DF& place : kPlaces)
                EXPECT_LE(deviation(atOrigin, Figure(number, place).of(operation.name), place),
                          1e-8)
                    << operation.name << ", case " << number << " at " << place.x();
        }
    });
}

}  // namespace
