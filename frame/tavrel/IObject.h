// Object identity: the root interface, the records of classes and interfaces, interface ids.
#pragma once

#include <cstdint>

#include "tavrel/DString.h"
#include "tavrel/List.h"

namespace tav {

/// The id of an interface name: h = h * 33 + c over its bytes taken as signed, starting at 0, in
/// 32 bits; the result is read as a signed 32-bit value (sign-extended where `long` is wider).
/// The empty name and a null pointer give 0.
constexpr long interfaceId(const char* name)
{
    std::uint32_t h = 0;
    for (; name && *name; ++name)
        h = h * 33u + static_cast<std::uint32_t>(static_cast<signed char>(*name));
    return static_cast<std::int32_t>(h);
}

/// The id in every concrete class's record; it is never offered by a query.
inline constexpr long kConcreteClassId = 1234567;

/// Static record of one interface or concrete class: its name, its id and what it derives from.
class ClassInfo {
public:
    /// Appends `base` to the bases even when it is null.
    ClassInfo(const char* recordName, long recordId, ClassInfo* base)
        : name(recordName), id(recordId)
    {
        bases.append(base);
    }

    /// True when this record or one of its bases carries `wanted`. The first null base ends the
    /// walk with false.
    bool inherits(const long& wanted) const
    {
        if (id == wanted) return true;
        for (const ClassInfo* base : bases) {
            if (!base) return false;
            if (base->inherits(wanted)) return true;
        }
        return false;
    }

    List<ClassInfo*> bases;
    DString name;
    long id;
};

/// Root of every interface: six operations in fixed slots, followed by those of one interface.
///
/// Ownership: whoever receives an object from a creation function or a successful query owns one
/// reference and gives it back with `release`. References may be added and released from several
/// threads; the operations of one object are called from one thread at a time.
class IObject {
public:
    static constexpr const char* kInterfaceName = "IObject";
    static ClassInfo* staticInfo()
    {
        static ClassInfo info(kInterfaceName, interfaceId(kInterfaceName), nullptr);
        return &info;
    }

    static long staticInterfaceId() { return interfaceId(kInterfaceName); }

    /// Slot 0. The record of the object's class; never null, owned by the library.
    virtual ClassInfo* classInfo() const { return staticInfo(); }
    /// Slot 1. Objects are destroyed by their last `release`.
    virtual ~IObject() = default;
    /// Slot 2. Adds one reference; the new count.
    virtual long addRef() = 0;
    /// Slot 3. Removes one reference; the new count. At 0 the object is gone.
    virtual long release() = 0;
    /// Slot 4. Offers the interface with that id: on true `*out` holds it with one reference added;
    /// on false `*out` is untouched. A null `out` gives false.
    virtual bool queryInterface(long id, void** out) = 0;
    /// Slot 5. The class's name in lower case.
    virtual DString className() const = 0;

    IObject() = default;
    IObject(const IObject&) = delete;
    IObject& operator=(const IObject&) = delete;
};

/// Base of interface I: its record below that of "IObject", its id, and slot 0.
///
/// I declares `static constexpr const char* kInterfaceName`.
template <class I>
class InterfaceOf : public IObject {
public:
    /// The interface's record, built on first use.
    static ClassInfo* staticInfo()
    {
        static ClassInfo info(I::kInterfaceName, staticInterfaceId(), IObject::staticInfo());
        return &info;
    }
    static long staticInterfaceId()
    {
        static const long id = interfaceId(I::kInterfaceName);
        return id;
    }
    ClassInfo* classInfo() const override { return staticInfo(); }
};

}  // namespace tav
