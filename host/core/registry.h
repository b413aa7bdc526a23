// The classes that createObject() chooses from.
#pragma once

#include <vector>

#include "tavrel/ClassEntry.h"

namespace tav::detail {

/// Adds the entries after those registered before. They must live until unregistered.
void registerEntries(const std::vector<const ClassEntry*>& entries);

/// Takes the entries out again; unknown ones are passed over.
void unregisterEntries(const std::vector<const ClassEntry*>& entries);

}  // namespace tav::detail
