#pragma once

#include <new>
#include <type_traits>
#include <utility>

#include "tavrel/IObject.h"
#include "tavrel/atomic.h"

namespace tav {

/// Capacity that objects are created with whose class takes one.
inline constexpr unsigned kObjectCapacity = 2000;

/// A counted instance of the concrete class T; every object that leaves a module is one.
/// It is born with one reference, which its creator owns.
template <class T>
class NormalObject final : public T {
public:
    using Interface = typename T::InterfaceType;

    template <class... Arguments>
    explicit NormalObject(Arguments&&... arguments) : T(std::forward<Arguments>(arguments)...)
    {
    }

    long addRef() override { return lockedIncrement(&refCount); }

    long release() override
    {
        const long left = lockedDecrement(&refCount);
        if (left == 0) delete this;
        return left;
    }

    /// Answers for T's interface and for "IObject".
    bool queryInterface(long id, void** out) override
    {
        if (!out || !Interface::staticInfo()->inherits(id)) return false;
        *out = static_cast<Interface*>(this);
        addRef();
        return true;
    }

    DString className() const override { return DString(T::kClassName).toLower(); }

private:
    long refCount = 1;
};

/// A new T offering interface `id`, with one reference for the caller; null when T does not offer
/// it. A class that takes a capacity gets kObjectCapacity. Allocation failure propagates.
template <class T>
IObject* createInstance(long id)
{
    NormalObject<T>* object = nullptr;
    if constexpr (std::is_constructible_v<T, unsigned>)
        object = new NormalObject<T>(kObjectCapacity);
    else
        object = new NormalObject<T>();
    void* out = nullptr;
    object->queryInterface(id, &out);
    object->release();
    return static_cast<typename T::InterfaceType*>(out);
}

/// Whether T offers interface `id`.
template <class T>
bool supportsInterface(long id)
{
    return T::InterfaceType::staticInfo()->inherits(id);
}

}  // namespace tav
