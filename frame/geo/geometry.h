// Everything of the sibling geometry module that other modules use.
#pragma once

#include "geo/IMatrix.h"           // IWYU pragma: export
#include "geo/IPath.h"             // IWYU pragma: export
#include "geo/IPathReceiver.h"     // IWYU pragma: export
#include "geo/IPointCollection.h"  // IWYU pragma: export
