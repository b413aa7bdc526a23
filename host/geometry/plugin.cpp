// The sibling geometry plugin's exported functions and its list of classes.
#include <initializer_list>

#include "host/geometry/Matrix.h"
#include "host/geometry/Path.h"
#include "host/geometry/PathCollector.h"
#include "tavrel/NormalObject.h"
#include "tavrel/plugin_exports.h"

namespace tavrel_geometry {

namespace {

tav::List<tav::ClassEntry*> classEntries;

/// Adds a class to the list; the host owns the entry.
void registerClass(const char* className, std::initializer_list<long> interfaceIds,
                   tav::CreateInstanceFunction create, tav::SupportsInterfaceFunction supports)
{
    const tav::DString name = tav::DString(className).toLower();
    classEntries.append(new tav::CppClassEntry(
        0, tav::DString("tavrel_geometry.") + name, tav::DString("clsid_geometry_") + name,
        tav::kLangCpp, tav::List<long>(interfaceIds), create, supports));
}

template <class T>
void registerPlainClass()
{
    registerClass(T::kClassName, {T::InterfaceType::staticInterfaceId()}, &tav::createInstance<T>,
                  &tav::supportsInterface<T>);
}

}  // namespace
}  // namespace tavrel_geometry

extern "C" {

bool TavInitPlugin()
{
    return true;
}

bool TavFreePlugin()
{
    return true;
}

tav::List<tav::ClassEntry*>* initClasses()
{
    using namespace tavrel_geometry;
    classEntries.clear();
    registerClass(Path::kClassName,
                  {geo::IPath::staticInterfaceId(), geo::IPointCollection::staticInterfaceId()},
                  &Path::create, &Path::supports);
    registerPlainClass<Matrix>();
    registerPlainClass<PathCollector>();
    return &classEntries;
}

const char* tavrelVersion()
{
    return tav::kFrameworkVersion;
}
}
