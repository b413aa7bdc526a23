#pragma once

#include <cstddef>
#include <utility>

#include "tavrel/IObject.h"
#include "tavrel/factory.h"

namespace tav {

/// Holder of one reference to an object seen through interface I; empty when default-constructed.
template <class I>
class Ref {
public:
    Ref() noexcept = default;
    Ref(std::nullptr_t) noexcept {}
    /// Shares `object`: adds a reference of its own.
    explicit Ref(I* object) : object_(object)
    {
        if (object_) object_->addRef();
    }
    Ref(const Ref& other) : Ref(other.object_) {}
    Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    ~Ref()
    {
        if (object_) object_->release();
    }
    Ref& operator=(Ref other) noexcept
    {
        std::swap(object_, other.object_);
        return *this;
    }

    /// Takes over a reference that the caller owns, as creation functions hand them out.
    static Ref adopt(I* object) noexcept
    {
        Ref ref;
        ref.object_ = object;
        return ref;
    }

    /// A new object of the class that `key` chooses, offering I; empty when there is none.
    static Ref create(const char* key = kNormalClassKey)
    {
        void* out = nullptr;
        createObject(key, I::staticInterfaceId(), &out);
        return adopt(static_cast<I*>(out));
    }

    /// The same object seen through interface J; empty when it does not offer J.
    template <class J>
    Ref<J> query() const
    {
        void* out = nullptr;
        if (!object_ || !object_->queryInterface(J::staticInterfaceId(), &out)) return {};
        return Ref<J>::adopt(static_cast<J*>(out));
    }

    I* get() const noexcept { return object_; }
    I* operator->() const noexcept { return object_; }
    I& operator*() const noexcept { return *object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }
    friend bool operator==(const Ref& a, const Ref& b) noexcept { return a.object_ == b.object_; }

private:
    I* object_ = nullptr;
};

}  // namespace tav
