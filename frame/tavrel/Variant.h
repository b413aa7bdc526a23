#pragma once

#include <variant>

#include "tavrel/export.h"
#include "tavrel/points.h"

namespace tav {

/// A value of one of the kinds that objects hand to each other without knowing its use.
class TAV_TEMPLATE_API Variant {
public:
    Variant() = default;
    Variant(const Radian& record) : value_(record) {}

    bool isEmpty() const { return std::holds_alternative<std::monostate>(value_); }

    /// The arc record that this was built from; an empty variant gives segment index -1 and the
    /// origin, a record that names no segment.
    Radian toRadian() const
    {
        if (const auto* record = std::get_if<Radian>(&value_)) return *record;
        return {-1, Point3DF()};
    }

private:
    std::variant<std::monostate, Radian> value_;
};

}  // namespace tav
