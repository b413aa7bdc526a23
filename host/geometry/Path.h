// Points and arc records in one counted object.
#pragma once

#include "geo/geometry.h"
#include "tavrel/Vector.h"

namespace tavrel_geometry {

/// A path: one object that answers "IPath" and "IPointCollection" with one reference count.
/// It is born with one reference, which its creator owns.
class Path final : public geo::IPath, public geo::IPointCollection {
public:
    static constexpr const char* kClassName = "Path";

    static tav::ClassInfo* staticInfo();
    /// True for "IPath", "IPointCollection" and "IObject".
    static bool supports(long interfaceId);
    /// A new path seen through that interface, with one reference for the caller; null for others.
    static tav::IObject* create(long interfaceId);

    tav::ClassInfo* classInfo() const override { return staticInfo(); }
    long addRef() override;
    long release() override;
    bool queryInterface(long id, void** out) override;
    tav::DString className() const override;

    void addPoint(const tav::Point3DF& point) override { points_.append(point); }
    int pointCount() override { return points_.size(); }
    tav::Point3DF pointAt(int index) override;
    void reserved9() override {}
    void reserved10() override {}
    void reserved11() override {}
    void reserved12() override {}
    void addArcRecord(const tav::Variant& record) override { arcRecords_.append(record); }
    tav::List<tav::Variant> arcRecords(int kind) override;
    tav::Point3DF firstPoint() override { return pointAt(0); }
    tav::Point3DF closingPoint() override { return pointAt(0); }

private:
    Path() = default;

    /// The address of the base that the interface names, or null.
    tav::IObject* base(long interfaceId);

    long refCount_ = 1;
    tav::Vector<tav::Point3DF> points_;
    tav::List<tav::Variant> arcRecords_;
};

}  // namespace tavrel_geometry
