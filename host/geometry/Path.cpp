#include "host/geometry/Path.h"

#include <utility>

#include "tavrel/atomic.h"

namespace tavrel_geometry {

tav::ClassInfo* Path::staticInfo()
{
    struct Record : tav::ClassInfo {
        Record() : ClassInfo(kClassName, tav::kConcreteClassId, geo::IPath::staticInfo())
        {
            bases.append(geo::IPointCollection::staticInfo());
        }
    };
    static Record info;
    return &info;
}

bool Path::supports(long interfaceId)
{
    return geo::IPath::staticInfo()->inherits(interfaceId) ||
           geo::IPointCollection::staticInfo()->inherits(interfaceId);
}

tav::IObject* Path::create(long interfaceId)
{
    // The caller goes on through the interface that it asked for, so the address is that base's.
    return supports(interfaceId) ? (new Path)->base(interfaceId) : nullptr;
}

tav::IObject* Path::base(long interfaceId)
{
    // "IObject" is always the one below IPath: an object has one identity.
    if (geo::IPath::staticInfo()->inherits(interfaceId)) return static_cast<geo::IPath*>(this);
    if (geo::IPointCollection::staticInfo()->inherits(interfaceId))
        return static_cast<geo::IPointCollection*>(this);
    return nullptr;
}

long Path::addRef()
{
    return tav::lockedIncrement(&refCount_);
}

long Path::release()
{
    const long left = tav::lockedDecrement(&refCount_);
    if (left == 0) delete this;
    return left;
}

bool Path::queryInterface(long id, void** out)
{
    tav::IObject* const found = out ? base(id) : nullptr;
    if (!found) return false;
    *out = found;
    addRef();
    return true;
}

tav::DString Path::className() const
{
    return tav::DString(kClassName).toLower();
}

tav::Point3DF Path::pointAt(int index)
{
    return 0 <= index && index < points_.size() ? points_.at(index) : tav::Point3DF();
}

tav::List<tav::Variant> Path::arcRecords(int kind)
{
    return kind == kArcRecords ? arcRecords_ : tav::List<tav::Variant>();
}

}  // namespace tavrel_geometry
