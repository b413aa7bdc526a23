#pragma once

#include "tavrel/IObject.h"
#include "tavrel/List.h"
#include "tavrel/Ref.h"
#include "tavrel/Variant.h"
#include "tavrel/points.h"

namespace geo {

/// The points of a path and its arc records. Segment i runs from point i to point i + 1; a record
/// whose segment index is i makes it the circular arc through the record's point. With several
/// records for one segment the first counts.
///
/// An object offers IPath and IPointCollection with one shared reference count, whichever of the
/// two it was created for; the two have addresses of their own, so one is reached from the other by
/// a query only. Points and records are added, never changed: whoever edits a path makes a new one.
/// One object is used from one thread at a time.
class IPointCollection : public tav::InterfaceOf<IPointCollection> {
public:
    static constexpr const char* kInterfaceName = "IPointCollection";

    /// The only kind of record that arcRecords() knows.
    static constexpr int kArcRecords = 2;

    /// Slot 6. Appends the point at the end.
    virtual void addPoint(const tav::Point3DF& point) = 0;
    /// Slot 7. Number of points.
    virtual int pointCount() = 0;
    /// Slot 8. Point `index`; (0, 0, 0) outside the collection.
    virtual tav::Point3DF pointAt(int index) = 0;
    /// Slots 9 to 12 are reserved; they do nothing.
    virtual void reserved9() = 0;
    virtual void reserved10() = 0;
    virtual void reserved11() = 0;
    virtual void reserved12() = 0;
    /// Slot 13. Appends an arc record. It is not checked against the points.
    virtual void addArcRecord(const tav::Variant& record) = 0;
    /// Slot 14. The records of `kind` in the order added (2: arcs; any other kind: none). The list
    /// is a copy that shares its storage.
    virtual tav::List<tav::Variant> arcRecords(int kind) = 0;
    /// Slot 15. The first point; (0, 0, 0) when empty.
    virtual tav::Point3DF firstPoint() = 0;
    /// Slot 16. The point that closes the figure: the first point again.
    virtual tav::Point3DF closingPoint() = 0;
};

}  // namespace geo
