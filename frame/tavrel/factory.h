// Creation of objects through the host.
#pragma once

#include "tavrel/export.h"

namespace tav {

/// The class key of ordinary, counted objects.
inline constexpr const char* kNormalClassKey = "N";

/// Creates an object of a registered class that offers the interface with that id and stores the
/// interface, with one reference for the caller, in `*out`; `*out` becomes null when no class
/// offers it or the key is unknown. With the key "N" the first registered class that offers the
/// interface is taken. A null `out` does nothing. Safe to call from several threads while no plugin
/// is being unloaded.
TAV_CORE_API void createObject(const char* key, long interfaceId, void** out);

}  // namespace tav

using tav::createObject;  // the host's functions are known without the namespace, too
