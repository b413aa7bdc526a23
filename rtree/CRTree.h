#pragma once

#include "calcora/ICRTree.h"
#include "tavrel/PlainObject.h"

class CRTree : public tav::PlainObject<CRTree, ICRTree>
{
public:
    static constexpr const char* kClassName = "CRTree";

    void removeAll() override;
    void reset() override;
    bool insertRect(RTreeRect* rect, void* id, int level) override;
    bool removeRect(const RTreeRect* rect, void* id) override;
    bool removeId(void* id) override;
    bool removeFirstOverlapping(const RTreeRect* rect, EntryCallback callback,
                                void* context) override;
    bool removeFirstContained(const RTreeRect* rect, EntryCallback callback,
                              void* context) override;
    void bounds(RTreeRect* out) override;
    void forEachEntry(EntryCallback callback, void* context) override;
    void forEachEntryWithRect(EntryRectCallback callback, void* context) override;
    int findContained(const RTreeRect* rect, tav::List<void*>* out) override;
    int findOverlapping(const RTreeRect* rect, tav::List<void*>* out) override;
    int searchOverlapping(const RTreeRect* rect, EntryCallback callback, void* context) override;
    int searchOverlappingWithRect(const RTreeRect* rect, EntryRectCallback callback,
                                  void* context) override;
    int searchContained(const RTreeRect* rect, EntryCallback callback, void* context) override;
    int searchContainedWithRect(const RTreeRect* rect, EntryRectCallback callback,
                                void* context) override;
    int entryTotal() override;
};
