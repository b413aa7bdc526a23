// What tests on paths share: the plugins loaded, paths made through the host, arcs of known shape,
// messages caught, creations that fail.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <numbers>
#include <random>
#include <string>
#include <vector>

#include "frame/detail/vec3.h"
#include "geo/geometry.h"
#include "tavrel/PluginHost.h"
#include "tavrel/diagnostics.h"

namespace path_test {

using namespace calcora::paths;
using geo::IPointCollection;
using geo::PathRef;
using tav::Point3DF;

constexpr double kPi = std::numbers::pi;
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Where surveys lie; formulas in absolute coordinates lose their digits there.
constexpr Vec3 kSurvey{5e5, 4e6, 0};

/// What an output holds before a call that is to leave it alone.
constexpr Point3DF kUntouched{777, 777, 777};

inline double apart(const Point3DF& a, const Point3DF& b)
{
    return length(between(a, b));
}

#define EXPECT_POINT_NEAR(found, wanted, tolerance)                                  \
    EXPECT_LE(path_test::apart(found, wanted), tolerance)                            \
        << (found).x() << ' ' << (found).y() << ' ' << (found).z() << " instead of " \
        << (wanted).x() << ' ' << (wanted).y() << ' ' << (wanted).z()

/// Loads the geometry plugin and the module, so that createObject() finds their classes.
class PathTest : public testing::Test {
protected:
    std::unique_ptr<tav::Plugin> geometryPlugin = tav::Plugin::load(CALCORA_GEOMETRY_PLUGIN);
    std::unique_ptr<tav::Plugin> calcoraPlugin = tav::Plugin::load(CALCORA_PLUGIN);
    std::mt19937 random{2024};

    double uniform(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(random);
    }
    int below(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random); }
    /// Around the origin or, every second time, at survey coordinates.
    Point3DF anyPoint(double size)
    {
        const Vec3 v{uniform(-size, size), uniform(-size, size), uniform(-size, size)};
        return moved({}, below(2) ? v + kSurvey : v);
    }
};

inline PathRef makePath(const std::vector<Point3DF>& points,
                        const std::vector<tav::Radian>& records = {})
{
    const auto collection = tav::Ref<IPointCollection>::create();
    for (const Point3DF& p : points) collection->addPoint(p);
    for (const tav::Radian& record : records) collection->addArcRecord(record);
    return collection.query<geo::IPath>();
}

inline std::vector<Point3DF> pointsOf(const PathRef& path)
{
    const auto collection = path.query<IPointCollection>();
    std::vector<Point3DF> points;
    for (int i = 0; i < collection->pointCount(); ++i) points.push_back(collection->pointAt(i));
    return points;
}

inline std::vector<tav::Radian> recordsOf(const PathRef& path)
{
    const tav::List<tav::Variant> list = path.query<IPointCollection>()->arcRecords(2);
    std::vector<tav::Radian> records;
    for (const tav::Variant& record : list) records.push_back(record.toRadian());
    return records;
}

/// An arc of known shape: the start radius turned about an axis.
struct TurnedArc {
    Point3DF centre;
    Vec3 radius;  ///< from the centre to the start
    Vec3 across;  ///< a quarter turn on, of the same length
    double sweep = 1.0;

    Point3DF at(double t) const
    {
        return moved(centre, std::cos(t * sweep) * radius + std::sin(t * sweep) * across);
    }
    double size() const { return calcora::paths::length(radius); }
    double length() const { return size() * sweep; }
    PathRef path(double t = 0.5) const { return makePath({at(0), at(1)}, {{0, at(t)}}); }
};

/// A level arc; a negative sweep runs clockwise.
inline TurnedArc levelArc(const Point3DF& centre, double radius, double from, double sweep)
{
    const Vec3 start{radius * std::cos(from), radius * std::sin(from), 0};
    const double sense = sweep < 0 ? -1 : 1;
    return {centre, start, {-sense * start.y, sense * start.x, 0}, std::fabs(sweep)};
}

/// An arc in any plane.
inline TurnedArc tiltedArc(std::mt19937& random, const Point3DF& centre, double radius,
                           double sweep)
{
    std::normal_distribution<double> normal;
    const Vec3 u{normal(random), normal(random), normal(random)};
    const Vec3 v{normal(random), normal(random), normal(random)};
    const Vec3 across = cross(cross(u, v), u);
    return {centre, (radius / length(u)) * u, (radius / length(across)) * across, sweep};
}

/// Catches debug lines and assertion reports while it lives.
class Messages {
public:
    Messages() : before_(tav::setMessageTarget({&Messages::take, this})) {}
    ~Messages() { tav::setMessageTarget(before_); }

    std::vector<std::string> debugLines;
    std::vector<std::string> assertions;  ///< "IPath geosetup 77"
    std::string debugOrigin;              ///< "file function" of the last debug line

private:
    static void take(const tav::MessageRecord& record, void* context)
    {
        auto& self = *static_cast<Messages*>(context);
        const std::string text = record.text, file = record.file;
        if (record.kind == tav::MessageKind::Assertion) {
            self.assertions.push_back(text + " " + file + " " + std::to_string(record.line));
            return;
        }
        self.debugLines.push_back(text);
        self.debugOrigin = file + " " + record.function;
    }

    tav::MessageTarget before_;
};

/// Lets one creation of an interface fail, the one after `skip` others, while it lives.
class FailedCreation {
public:
    explicit FailedCreation(const char* interfaceName, int skip = 0)
        : id_(tav::interfaceId(interfaceName)), skip_(skip)
    {
        tav::setCreationFilter(&FailedCreation::allow, this);
    }
    ~FailedCreation() { tav::setCreationFilter(nullptr, nullptr); }

    bool happened() const { return skip_ < 0; }

private:
    static bool allow(const char*, long interfaceId, void* context)
    {
        auto& self = *static_cast<FailedCreation*>(context);
        return interfaceId != self.id_ || self.skip_-- != 0;
    }

    long id_;
    int skip_;
};

}  // namespace path_test
