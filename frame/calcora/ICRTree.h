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
///
/// Guttman's tree ("R-trees: a dynamic index structure for spatial searching", 1984) with the
/// quadratic split. Nodes have nine slots; all nodes below the root use four or more; leaves are on
/// level 0. Wherever sizes are compared, the size of a rectangle is that of the disc through its
/// corners: r * r * 3.141593 with r = sqrt(w * w + h * h), w and h half its width and height.
///
/// - Ids are opaque values of the size of a pointer, never null, belonging to the caller: the tree
///   neither follows nor frees them. The same id, and the same rectangle, may be stored often.
/// - Two rectangles overlap unless, on some axis, the minimum of one exceeds the maximum of the
///   other: touching edges overlap. One lies inside another unless, on some axis, its minimum is
///   exceeded by the other's minimum or its maximum exceeds the other's: shared edges are inside.
///   Nothing else is asked of rectangles: those of width or height 0, infinite ones and those whose
///   minimum exceeds their maximum are stored and compared as they are. A not-a-number exceeds
///   nothing, so a query that has one is not limited on that side.
/// - Searches go depth-first through the slots of each node in index order, into every slot whose
///   cover overlaps the query; hits come in that order, which depends on the history of insertions
///   and removals, and on nothing else.
/// - Callbacks get the context as it was passed. A callback of slots 14, 15 and 18 to 21 may search
///   the same tree but not change it: slots 6 to 12 called from it do nothing and give the neutral
///   result (8, 9, 10 false; 11, 12 true). The callback of slots 11 and 12 is called when the tree
///   is whole again and may do anything with it.
/// - A null rectangle or list, where one is needed, gives the neutral result (false, 0; 11 and 12:
///   true, nothing called).
/// - After `reset` the tree has no root: searches give 0, nothing is visited or removed, `bounds`
///   writes nothing and `insertRect` stores nothing, until `removeAll`.
/// - An object serves one thread at a time. When memory runs out, std::bad_alloc passes through and
///   the tree is as it was before the call.
class ICRTree : public tav::InterfaceOf<ICRTree> {
public:
    static constexpr const char* kInterfaceName = "ICRTree";

    using EntryCallback = int (*)(void* id, void* context);
    using EntryRectCallback = int (*)(void* id, RTreeRect* rect, void* context);

    /// Slot 6. Empties the tree, by slot 7 unless that was done before, and gives it an empty root
    /// again: the state of a new tree.
    virtual void removeAll() = 0;

    /// Slot 7. Frees all nodes and leaves the tree without a root; only slots 6, 7 and 22 (which
    /// gives 0) are of use then.
    virtual void reset() = 0;

    /// Slot 8. Stores an entry. Not-a-numbers in `*rect` are replaced first, for the caller to see:
    /// a minimum by 0, then a maximum by its (replaced) minimum + 1. Other rectangles are stored as
    /// they are, also with a minimum above its maximum.
    /// `level` is 0: entries lie in leaves. With any other level, a null rectangle or a null id
    /// nothing is stored and the result is false.
    /// Result: true when the root was split, so that the tree has one level more; false otherwise.
    /// It does not tell whether the entry was stored; slot 22 does.
    /// The way down takes, on each level, the slot whose cover grows least in size; among equal
    /// growths the smaller cover, then the lower index. The entry goes to the lowest unused slot of
    /// the leaf. A full node is split: the two of its ten branches whose common cover wastes most
    /// size found two groups; the branch with the greatest difference between the growths of the
    /// two covers joins the group that grows less, differences closer than 1e-6 being a tie that
    /// the smaller group wins, until none is left or a group has six, when the rest goes to the
    /// other. The node keeps the first group; the second one goes to a new node, into the lowest
    /// unused slot of the parent.
    virtual bool insertRect(RTreeRect* rect, void* id, int level) = 0;

    /// Slot 9. Removes the first entry with that id in leaves whose cover overlaps `rect`; the
    /// entry's own rectangle is not compared. When there is none, the result is that of slot 10: a
    /// rectangle that does not fit only costs time, it looks through all entries.
    /// Result: whether an entry was removed; false at once for a null id, a null rectangle and one
    /// whose minimum is not at most its maximum (so with a not-a-number).
    /// A node left with three branches is dissolved and its branches are inserted anew at its
    /// level, those of the highest node first. A root left with a single child gives way to it.
    virtual bool removeRect(const RTreeRect* rect, void* id) = 0;

    /// Slot 10. Removes the first entry with that id, in the order of slot 14; looks through all
    /// entries.
    /// Result: whether an entry was removed; false for a null id.
    virtual bool removeId(void* id) = 0;

    /// Slot 11. Removes the first entry whose rectangle overlaps `rect`, then calls `callback`,
    /// which may be null, with its id; the callback's result is ignored.
    /// Result, the other way round than slots 9 and 10: **false when an entry was removed**, true
    /// when there was none. The rectangle is not checked: all of it not-a-number finds the first
    /// entry there is.
    virtual bool removeFirstOverlapping(const RTreeRect* rect, EntryCallback callback,
                                        void* context) = 0;

    /// Slot 12. As slot 11, for the first entry whose rectangle lies inside `rect`. Only covers
    /// that overlap `rect` are gone into, so an entry whose minimum exceeds its maximum may be
    /// passed over.
    virtual bool removeFirstContained(const RTreeRect* rect, EntryCallback callback,
                                      void* context) = 0;

    /// Slot 13. Writes the cover of all entries to `*out`; an empty tree writes nothing.
    virtual void bounds(RTreeRect* out) = 0;

    /// Slot 14. Calls `callback` with each entry's id, depth-first in slot order; its results are
    /// ignored. A null callback visits nothing.
    virtual void forEachEntry(EntryCallback callback, void* context) = 0;

    /// Slot 15. As slot 14, with each entry's rectangle: a copy that lasts as long as the call.
    virtual void forEachEntryWithRect(EntryRectCallback callback, void* context) = 0;

    /// Slot 16. Replaces the contents of `*out` by the ids of the entries that lie inside `rect`.
    /// Result: how many there are. A null list gives 0, a null rectangle an empty list.
    virtual int findContained(const RTreeRect* rect, tav::List<void*>* out) = 0;

    /// Slot 17. As slot 16, for the entries that overlap `rect`.
    virtual int findOverlapping(const RTreeRect* rect, tav::List<void*>* out) = 0;

    /// Slot 18. Calls `callback`, which may be null, with the id of each entry that overlaps
    /// `rect`. When it returns 0, the rest of that leaf is left out, **but the search goes on** in
    /// the next one.
    /// Result: the number of hits met, those that returned 0 among them.
    virtual int searchOverlapping(const RTreeRect* rect, EntryCallback callback, void* context) = 0;

    /// Slot 19. As slot 18, with each entry's rectangle: a copy that lasts as long as the call.
    virtual int searchOverlappingWithRect(const RTreeRect* rect, EntryRectCallback callback,
                                          void* context) = 0;

    /// Slot 20. As slot 18, for the entries that lie inside `rect`.
    virtual int searchContained(const RTreeRect* rect, EntryCallback callback, void* context) = 0;

    /// Slot 21. As slot 19, for the entries that lie inside `rect`.
    virtual int searchContainedWithRect(const RTreeRect* rect, EntryRectCallback callback,
                                        void* context) = 0;

    /// Slot 22. The number of entries.
    virtual int entryTotal() = 0;
};
