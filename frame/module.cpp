// What the host calls: the four exported functions and the list of classes.
#include <memory>
#include <utility>

#include "common/commonFunc.h"
#include "datageo/DataGeo.h"
#include "frame/naming/naming.h"
#include "geometric/CGeometric.h"
#include "geosetup/CGeoSetUp.h"
#include "rtree/CRTree.h"
#include "tavrel/NormalObject.h"
#include "tavrel/plugin_exports.h"
#include "unit/CUnit.h"

namespace calcora {

namespace {

/// The module's name; every full class name and class-id text derives from it.
const tav::DString moduleName("quon_calcora");

/// Entries from this type on hold living objects, for which the module keeps a slot.
constexpr int kObjectEntryType = 10;

tav::List<tav::ClassEntry*> classEntries;

/// Places for the living objects of object entries. The start index equals the capacity, so what
/// the table holds at unload is released by whoever filled it.
struct ObjectSlots {
    int capacity = 0;
    int start = 0;
    std::unique_ptr<tav::IObject*[]> table;

    void allocate(int wanted)
    {
        if (table || wanted <= 0) return;
        capacity = wanted > capacity ? wanted : capacity;
        start = capacity;
        table = std::make_unique<tav::IObject*[]>(static_cast<std::size_t>(capacity));
    }

    ~ObjectSlots()
    {
        if (!table) return;
        for (int i = start; i < capacity; ++i) {
            delete table[static_cast<std::size_t>(i)];
            table[static_cast<std::size_t>(i)] = nullptr;
        }
        start = 0;
    }
};

ObjectSlots objectSlots;

/// The ids that class T offers by name: the one of its interface.
template <class T>
tav::List<long> interfaceIds()
{
    static const tav::List<long> ids{T::InterfaceType::staticInterfaceId()};
    return ids;
}

template <class T>
void registerClass()
{
    const tav::DString name(T::kClassName);
    auto entry = std::make_unique<tav::CppClassEntry>(
        0, fullClassName(moduleName, name), classIdString(moduleName, name), tav::kLangCpp,
        interfaceIds<T>(), &tav::createInstance<T>, &tav::supportsInterface<T>);
    classEntries.append(entry.get());
    static_cast<void>(entry.release());  // the host owns the entries
}

int countObjectEntries()
{
    int count = 0;
    for (const tav::ClassEntry* entry : std::as_const(classEntries))
        if (entry->type() >= kObjectEntryType) ++count;
    return count;
}

}  // namespace
}  // namespace calcora

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
    using namespace calcora;
    classEntries.clear();
    registerClass<CGeometric>();
    registerClass<CGeoSetUp>();
    registerClass<CUnit>();
    registerClass<DataGeo>();
    registerClass<commonFunc>();
    registerClass<CRTree>();
    objectSlots.allocate(countObjectEntries());
    return &classEntries;
}

const char* tavrelVersion()
{
    return tav::kFrameworkVersion;
}
}
