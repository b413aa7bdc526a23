#pragma once

#include "tavrel/IObject.h"

namespace tav {

/// The six common operations of a concrete class, as an instance has them that no
/// NormalObject wraps (a local work object): it is not counted, offers nothing and has no name.
///
/// `Class` declares `static constexpr const char* kClassName`.
template <class Class, class Interface>
class PlainObject : public Interface {
public:
    using InterfaceType = Interface;

    static ClassInfo* staticInfo()
    {
        static ClassInfo info(Class::kClassName, kConcreteClassId, Interface::staticInfo());
        return &info;
    }

    ClassInfo* classInfo() const override { return staticInfo(); }
    long addRef() override { return 1; }
    long release() override { return 1; }

    /// Stores this object whatever is asked, and reports false: a local object is not for sharing.
    bool queryInterface(long, void** out) override
    {
        if (!out) return false;
        *out = static_cast<Interface*>(this);
        this->addRef();
        return false;
    }

    DString className() const override { return {}; }
};

}  // namespace tav
