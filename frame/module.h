// The module's own name and the texts derived from it.
#pragma once

#include "tavrel/DString.h"

namespace calcora
{

/// The module's name; every full class name and class-id text derives from it.
extern const tav::DString moduleName;

/// "<module>.<class>" in lower case, e.g. "quon_calcora.cunit".
tav::DString fullClassName(const tav::DString& module, const tav::DString& className);

/// "clsid_<rest>_<class>" in lower case, where <rest> is the module name after its first "_"
/// (the whole name when it has none). Markers inside the names are not protected.
tav::DString classIdString(const tav::DString& module, const tav::DString& className);

}  // namespace calcora
