// The texts under which the module's classes are known, derived from the module's name.
#pragma once

#include "tavrel/DString.h"

namespace calcora {

/// "<module>.<class>" in lower case, e.g. "quon_calcora.cunit".
tav::DString fullClassName(const tav::DString& module, const tav::DString& className);

/// "clsid_<rest>_<class>" in lower case, where <rest> is the module name after its first "_"
/// (the whole name when it has none). The names are filled in one after the other and markers
/// inside them are not protected: a "%1" in <rest> is replaced by the class name.
tav::DString classIdString(const tav::DString& module, const tav::DString& className);

}  // namespace calcora
