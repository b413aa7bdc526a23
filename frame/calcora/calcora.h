// All interfaces of the module.
#pragma once

#include "calcora/ICRTree.h"      // IWYU pragma: export
#include "calcora/IDataGeo.h"     // IWYU pragma: export
#include "calcora/IGeoSetUp.h"    // IWYU pragma: export
#include "calcora/IGeometric.h"   // IWYU pragma: export
#include "calcora/IUnit.h"        // IWYU pragma: export
#include "calcora/IcommonFunc.h"  // IWYU pragma: export
