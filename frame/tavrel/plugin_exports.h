// The functions that a plugin exports, and that its host calls in this order.
#pragma once

#include "tavrel/ClassEntry.h"
#include "tavrel/List.h"
#include "tavrel/export.h"

namespace tav {

/// The version of the framework that these headers belong to, for tavrelVersion().
inline constexpr const char* kFrameworkVersion = "1.0.0";

}  // namespace tav

extern "C" {

/// The first call. False: the plugin cannot be used and is closed again.
TAV_EXPORT bool TavInitPlugin();
/// The list of the plugin's classes, made anew by every call. The list is the plugin's, the entries
/// are the host's: it deletes them after TavFreePlugin() and before it closes the library.
TAV_EXPORT tav::List<tav::ClassEntry*>* initClasses();
/// The version of the framework that the plugin was made for.
TAV_EXPORT const char* tavrelVersion();
/// The last call, when all objects of the plugin have been released.
TAV_EXPORT bool TavFreePlugin();
}
