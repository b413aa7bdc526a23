#pragma once

#include "tavrel/sequence.h"

namespace tav {

/// The host's list of records and objects. The same storage and manners as tav::Vector, a type of
/// its own because interfaces tell the two apart.
template <class T>
class TAV_TEMPLATE_API List : public detail::SharedSequence<T> {
public:
    using detail::SharedSequence<T>::SharedSequence;
    using detail::SharedSequence<T>::operator=;
};

}  // namespace tav
