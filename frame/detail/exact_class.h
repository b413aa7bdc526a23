// Whether an object may override operations of its class.
#pragma once

#include <typeinfo>

#include "tavrel/NormalObject.h"

namespace calcora::detail {

/// Whether the object is of that class itself, wrapped or not, and not of one derived from it.
/// Loops over operations that none overrides need no virtual calls.
template <class Class>
bool isExactly(const Class& object)
{
    const std::type_info& type = typeid(object);
    return type == typeid(Class) || type == typeid(tav::NormalObject<Class>);
}

}  // namespace calcora::detail
