// ICRTree: an R-tree of rectangles.
#pragma once

#include "tavrel/IObject.h"
#include "tavrel/List.h"

/// An axis-aligned rectangle; valid when each minimum is at most its maximum.
struct RTreeRect {
    double minX = 0.0;
    double minY = 0.0;
    double maxX = 0.0;
    double maxY = 0.0;

    friend bool operator==(const RTreeRect& a, const RTreeRect& b) = default;
};

/// A dynamic R-tree over rectangles with caller-supplied ids: 17 operations (slots 6 to 22).
class ICRTree : public tav::InterfaceOf<ICRTree>
{
public:
    static constexpr const char* kInterfaceName = "ICRTree";

    using EntryCallback = int (*)(void* id, void* context);
    using EntryRectCallback = int (*)(void* id, RTreeRect* rect, void* context);

    /// Slot 6.
    virtual void removeAll() = 0;

    /// Slot 7.
    virtual void reset() = 0;

    /// Slot 8.
    virtual bool insertRect(RTreeRect* rect, void* id, int level) = 0;

    /// Slot 9.
    virtual bool removeRect(const RTreeRect* rect, void* id) = 0;

    /// Slot 10.
    virtual bool removeId(void* id) = 0;

    /// Slot 11.
    virtual bool removeFirstOverlapping(const RTreeRect* rect, EntryCallback callback,
                                        void* context) = 0;

    /// Slot 12.
    virtual bool removeFirstContained(const RTreeRect* rect, EntryCallback callback,
                                      void* context) = 0;

    /// Slot 13.
    virtual void bounds(RTreeRect* out) = 0;

    /// Slot 14.
    virtual void forEachEntry(EntryCallback callback, void* context) = 0;

    /// Slot 15.
    virtual void forEachEntryWithRect(EntryRectCallback callback, void* context) = 0;

    /// Slot 16.
    virtual int findContained(const RTreeRect* rect, tav::List<void*>* out) = 0;

    /// Slot 17.
    virtual int findOverlapping(const RTreeRect* rect, tav::List<void*>* out) = 0;

    /// Slot 18.
    virtual int searchOverlapping(const RTreeRect* rect, EntryCallback callback, void* context) = 0;

    /// Slot 19.
    virtual int searchOverlappingWithRect(const RTreeRect* rect, EntryRectCallback callback,
                                          void* context) = 0;

    /// Slot 20.
    virtual int searchContained(const RTreeRect* rect, EntryCallback callback, void* context) = 0;

    /// Slot 21.
    virtual int searchContainedWithRect(const RTreeRect* rect, EntryRectCallback callback,
                                        void* context) = 0;

    /// Slot 22.
    virtual int entryTotal() = 0;
};
