#pragma once

#include "tavrel/IObject.h"
#include "tavrel/Ref.h"

namespace geo {

/// A polyline whose segments may be circular arcs, held as a counted object. It has no operations
/// of its own: its points and arc records are read and extended through IPointCollection, which
/// every path offers too (`path.query<geo::IPointCollection>()`).
class IPath : public tav::InterfaceOf<IPath> {
public:
    static constexpr const char* kInterfaceName = "IPath";
};

using PathRef = tav::Ref<IPath>;

}  // namespace geo
