#pragma once

#include "tavrel/sequence.h"

namespace tav {

/// The host's contiguous, indexed list. Shared until written; see detail::SharedSequence for what
/// copying, sharing and growing cost.
template <class T>
class TAV_TEMPLATE_API Vector : public detail::SharedSequence<T> {
public:
    using detail::SharedSequence<T>::SharedSequence;
    using detail::SharedSequence<T>::operator=;
};

}  // namespace tav
