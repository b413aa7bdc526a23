// Everything of the core library that modules use.
#pragma once

#include "tavrel/ClassEntry.h"    // IWYU pragma: export
#include "tavrel/DString.h"       // IWYU pragma: export
#include "tavrel/IObject.h"       // IWYU pragma: export
#include "tavrel/List.h"          // IWYU pragma: export
#include "tavrel/NormalObject.h"  // IWYU pragma: export
#include "tavrel/PlainObject.h"   // IWYU pragma: export
#include "tavrel/Ref.h"           // IWYU pragma: export
#include "tavrel/Variant.h"       // IWYU pragma: export
#include "tavrel/Vector.h"        // IWYU pragma: export
#include "tavrel/atomic.h"        // IWYU pragma: export
#include "tavrel/diagnostics.h"   // IWYU pragma: export
#include "tavrel/export.h"        // IWYU pragma: export
#include "tavrel/factory.h"       // IWYU pragma: export
#include "tavrel/points.h"        // IWYU pragma: export
