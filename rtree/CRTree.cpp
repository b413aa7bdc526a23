#include "rtree/CRTree.h"

#include <cmath>
#include <limits>

#include "rtree/detail/pick.h"
#include "rtree/detail/split.h"

using namespace calcora::rtree;

/// Held while a search calls back; changes are refused meanwhile.
class CRTree::SearchMark {
public:
    explicit SearchMark(CRTree& searched) : tree(searched) { ++tree.openSearches_; }
    SearchMark(const SearchMark&) = delete;
    SearchMark& operator=(const SearchMark&) = delete;
    ~SearchMark() { --tree.openSearches_; }

private:
    CRTree& tree;
};

namespace {

constexpr auto kEverySlot = [](const Node& node) -> unsigned { return node.used; };

/// Walks over the hits that `walk(visit)` gives: counts each one and calls `call(leaf, slot)` for
/// it; a result of 0 leaves the leaf.
template <class WalkOver, class Call>
int countHits(WalkOver walkOver, Call call)
{
    int hits = 0;
    walkOver([&](const Leaf& leaf, int slot) {
        ++hits;
        return call(leaf, slot) == 0 ? Walk::NextLeaf : Walk::On;
    });
    return hits;
}

/// Calls back with an id, or not at all when there is nothing to call.
auto callWithId(ICRTree::EntryCallback callback, void* context)
{
    return [=](const Leaf& leaf, int slot) {
        return callback ? callback(leaf.ids[slot], context) : 1;
    };
}

/// The same with a copy of the rectangle, which lives as long as the call.
auto callWithRect(ICRTree::EntryRectCallback callback, void* context)
{
    return [=](const Leaf& leaf, int slot) {
        if (!callback) return 1;
        RTreeRect rect = leaf.rects.at(slot);
        return callback(leaf.ids[slot], &rect, context);
    };
}

auto appendTo(tav::List<void*>& list)
{
    return [&list](const Leaf& leaf, int slot) {
        list.append(leaf.ids[slot]);
        return 1;
    };
}

bool isValid(const RTreeRect& rect)
{
    return rect.minX <= rect.maxX && rect.minY <= rect.maxY;
}

/// Replaces what is not a number: a minimum by 0, then a maximum by its minimum + 1.
void correct(RTreeRect& rect)
{
    if (std::isnan(rect.minX)) rect.minX = 0.0;
    if (std::isnan(rect.minY)) rect.minY = 0.0;
    if (std::isnan(rect.maxX)) rect.maxX = rect.minX + 1.0;
    if (std::isnan(rect.maxY)) rect.maxY = rect.minY + 1.0;
}

unsigned slotsWithId(const Leaf& leaf, const void* id)
{
    unsigned mask = 0;
    for (int i = 0; i < kSlots; ++i) mask |= static_cast<unsigned>(leaf.ids[i] == id) << i;
    return mask;
}

}  // namespace

template <class Visit>
void CRTree::walkContained(const RTreeRect& rect, Visit visit) const
{
    walkLeaves(
        root_, [rect](const Inner& inner) { return overlapMask(inner.rects, rect); },
        [rect](const Leaf& leaf) { return containedMask(leaf.rects, rect); }, visit);
}

template <class Visit>
void CRTree::walkEverything(Visit visit) const
{
    walkLeaves(root_, kEverySlot, kEverySlot, visit);
}

void CRTree::removeAll()
{
    if (openSearches_ > 0) return;
    if (!isReset_) reset();
    clear();
    isReset_ = false;
}

void CRTree::reset()
{
    if (openSearches_ > 0) return;
    clear();
    isReset_ = true;
}

void CRTree::clear()
{
    leaves_.clear();
    inners_.clear();
    root_ = nullptr;
    entryCount_ = 0;
    isOrdinary_ = true;
}

// Insertion

bool CRTree::insertRect(RTreeRect* rect, void* id, int level)
{
    if (!rect || !id || !isChangeable()) return false;
    correct(*rect);
    if (level != 0 || entryCount_ == std::numeric_limits<int>::max()) return false;
    isOrdinary_ = isOrdinary_ && isOrdinary(*rect);
    const bool grew = place({*rect, 0.0, id}, 0);
    ++entryCount_;
    return grew;
}

/// Puts a branch into a node of the given level, splitting what is full; true when the tree grew
/// by a level. The memory for it is reserved before anything changes.
bool CRTree::place(const Branch& branch, int level)
{
    if (!root_) {
        leaves_.reserve(1);
        root_ = takeNode(0);
    }
    Path path;
    Node* node = descend(branch.rect, level, path);
    if (node->isFull()) reserveForSplits(*node, path);

    Branch extra = branch;
    int depth = path.length;
    while (node->isFull()) {
        const Branch kept = splitNode(*node, extra);
        if (depth == 0) {
            growRoot(kept, extra);
            return true;
        }
        const Step& step = path.steps[--depth];
        setCover(*step.node, step.slot, kept.rect, kept.volume);
        node = step.node;
    }
    putBranch(*node, node->firstUnused(), extra);
    while (depth > 0) {
        const Step& step = path.steps[--depth];
        const RTreeRect old = step.node->rects.at(step.slot);
        const RTreeRect cover = combineRect(branch.rect, old);
        if (cover == old) break;  // the covers above contain this one
        setCover(*step.node, step.slot, cover, sphericalVolume(cover));
    }
    return false;
}

/// The node of the given level that a rectangle goes into, and the way to it.
CRTree::Node* CRTree::descend(const RTreeRect& rect, int level, Path& path) const
{
    Node* node = root_;
    while (node->level > level) {
        Inner& inner = asInner(*node);
        const int slot = isOrdinary_ ? pickBranch(inner, rect) : pickAmong(inner, inner.used, rect);
        path.steps[path.length++] = {&inner, slot};
        node = inner.children[slot];
    }
    return node;
}

/// Reserves a node for each one that splits, and one for a new root when all of them do.
void CRTree::reserveForSplits(const Node& target, const Path& path)
{
    const int leaves = target.isLeaf() ? 1 : 0;
    int inners = 1 - leaves;
    int depth = path.length;
    while (depth > 0 && path.steps[depth - 1].node->isFull()) {
        ++inners;
        --depth;
    }
    if (depth == 0) ++inners;
    leaves_.reserve(leaves);
    inners_.reserve(inners);
}

/// Divides the branches of a full node and `extra` between the node and a new one. Returns the
/// branch of the node and leaves that of the new one in `extra`.
CRTree::Branch CRTree::splitNode(Node& node, Branch& extra)
{
    SplitBuffer buffer;
    for (int i = 0; i < kSplitBranches; ++i) {
        const Branch branch = i < kSlots ? branchAt(node, i) : extra;
        buffer.rects.set(i, branch.rect);
        buffer.volume[i] = node.isLeaf() ? sphericalVolume(branch.rect) : branch.volume;
        buffer.child[i] = branch.child;
    }
    const Groups groups = divideBranches(buffer);

    Node* sibling = takeNode(node.level);
    for (int i = 0; i < kSlots; ++i) clearSlot(node, i);
    Node* const halves[2] = {&node, sibling};
    for (int g = 0; g < 2; ++g) {
        int slot = 0;
        for (unsigned rest = groups.group[g].members; rest != 0; rest &= rest - 1) {
            const int i = std::countr_zero(rest);
            putBranch(*halves[g], slot++, {buffer.rects.at(i), buffer.volume[i], buffer.child[i]});
        }
    }
    extra = {groups.group[1].cover, groups.group[1].volume, sibling};
    return {groups.group[0].cover, groups.group[0].volume, &node};
}

void CRTree::growRoot(const Branch& first, const Branch& second)
{
    Node* root = takeNode(root_->level + 1);
    putBranch(*root, 0, first);
    putBranch(*root, 1, second);
    root_ = root;
}

CRTree::Node* CRTree::takeNode(int level)
{
    if (level == 0) return leaves_.take(level);
    return inners_.take(level);
}

void CRTree::giveBack(Node* node)
{
    if (node->isLeaf())
        leaves_.giveBack(&asLeaf(*node));
    else
        inners_.giveBack(&asInner(*node));
}

// Removal

/// Finds the first leaf slot, depth-first in slot order, that `match(leaf)` has a bit for; only
/// the slots that `enter(inner)` has a bit for are gone down into.
template <class Enter, class Match>
bool CRTree::find(Place& found, Enter enter, Match match) const
{
    if (!root_) return false;
    Path& path = found.path;
    unsigned open[kMaxLevels];  // slots still to be entered of each node on the way
    Node* node = root_;
    for (;;) {
        if (node->isLeaf()) {
            const unsigned slots = match(asLeaf(*node)) & node->used;
            if (slots != 0) {
                found.leaf = &asLeaf(*node);
                found.slot = std::countr_zero(slots);
                return true;
            }
        } else {
            Inner& inner = asInner(*node);
            open[path.length] = enter(inner) & inner.used;
            path.steps[path.length++] = {&inner, 0};
        }
        while (path.length > 0 && open[path.length - 1] == 0) --path.length;
        if (path.length == 0) return false;
        Step& step = path.steps[path.length - 1];
        unsigned& slots = open[path.length - 1];
        step.slot = std::countr_zero(slots);
        slots &= slots - 1;
        node = step.node->children[step.slot];
    }
}

/// Reserves what reinserting the branches of dissolving nodes can need at most: of m such nodes
/// each leaves three branches, each of which may split a node of every level; the levels may grow
/// by one and by one more for each eight branches.
void CRTree::reserveForReinsertion(const Place& found)
{
    constexpr int kLeft = kMinFill - 1;
    const Path& path = found.path;
    const Node* node = found.leaf;
    int dissolving = 0;
    for (int depth = path.length; depth > 0 && node->count <= kMinFill; --depth) {
        ++dissolving;
        node = path.steps[depth - 1].node;
    }
    if (dissolving == 0) return;
    leaves_.reserve(kLeft);
    inners_.reserve(kLeft * dissolving * (path.length + dissolving + 3));
}

/// Removes an entry and brings the tree back to its rules.
void CRTree::removeAt(const Place& found)
{
    reserveForReinsertion(found);
    clearSlot(*found.leaf, found.slot);
    --entryCount_;

    Node* dissolved[kMaxLevels];
    int count = 0;
    Node* child = found.leaf;
    for (int depth = found.path.length; depth > 0; --depth) {
        const auto [node, slot] = found.path.steps[depth - 1];
        if (child->count >= kMinFill) {
            const RTreeRect cover = nodeCover(*child);
            if (cover == node->rects.at(slot)) break;  // nor does anything above change
            setCover(*node, slot, cover, sphericalVolume(cover));
        } else {
            dissolved[count++] = child;
            clearSlot(*node, slot);
        }
        child = node;
    }
    while (count > 0) {  // the highest one first
        Node* node = dissolved[--count];
        for (unsigned rest = node->used; rest != 0; rest &= rest - 1)
            place(branchAt(*node, std::countr_zero(rest)), node->level);
        giveBack(node);
    }
    shrinkRoot();
}

/// A root with a single child gives way to it.
void CRTree::shrinkRoot()
{
    if (root_->isLeaf() || root_->count != 1) return;
    Node* old = root_;
    root_ = asInner(*old).children[old->firstUsed()];
    giveBack(old);
}

bool CRTree::removeRect(const RTreeRect* rect, void* id)
{
    if (!rect || !id || !isValid(*rect) || !isChangeable()) return false;
    Place found;
    const bool isFound = find(
        found, [rect](const Inner& inner) { return overlapMask(inner.rects, *rect); },
        [id](const Leaf& leaf) { return slotsWithId(leaf, id); });
    if (!isFound) return removeId(id);
    removeAt(found);
    return true;
}

bool CRTree::removeId(void* id)
{
    if (!id || !isChangeable()) return false;
    Place found;
    if (!find(found, kEverySlot, [id](const Leaf& leaf) { return slotsWithId(leaf, id); }))
        return false;
    removeAt(found);
    return true;
}

bool CRTree::removeFirstOverlapping(const RTreeRect* rect, EntryCallback callback, void* context)
{
    if (!rect || !isChangeable()) return true;
    const auto overlaps = [rect](const Node& node) { return overlapMask(node.rects, *rect); };
    Place found;
    if (!find(found, overlaps, overlaps)) return true;
    return removeFirst(found, callback, context);
}

bool CRTree::removeFirstContained(const RTreeRect* rect, EntryCallback callback, void* context)
{
    if (!rect || !isChangeable()) return true;
    Place found;
    const bool isFound = find(
        found, [rect](const Inner& inner) { return overlapMask(inner.rects, *rect); },
        [rect](const Leaf& leaf) { return containedMask(leaf.rects, *rect); });
    if (!isFound) return true;
    return removeFirst(found, callback, context);
}

/// Removes what was found, then tells the caller; the tree is whole by then.
bool CRTree::removeFirst(const Place& found, EntryCallback callback, void* context)
{
    void* const id = found.leaf->ids[found.slot];
    removeAt(found);
    if (callback) callback(id, context);
    return false;
}

// Searches

void CRTree::bounds(RTreeRect* out)
{
    if (!out || !root_ || root_->used == 0) return;
    *out = nodeCover(*root_);
}

void CRTree::forEachEntry(EntryCallback callback, void* context)
{
    if (!callback) return;
    const SearchMark mark(*this);
    walkEverything([=](const Leaf& leaf, int slot) {
        callback(leaf.ids[slot], context);
        return Walk::On;
    });
}

void CRTree::forEachEntryWithRect(EntryRectCallback callback, void* context)
{
    if (!callback) return;
    const SearchMark mark(*this);
    walkEverything([call = callWithRect(callback, context)](const Leaf& leaf, int slot) {
        call(leaf, slot);
        return Walk::On;
    });
}

int CRTree::findContained(const RTreeRect* rect, tav::List<void*>* out)
{
    if (!out) return 0;
    out->clear();
    if (!rect) return 0;
    return countHits([&](auto visit) { walkContained(*rect, visit); }, appendTo(*out));
}

int CRTree::findOverlapping(const RTreeRect* rect, tav::List<void*>* out)
{
    if (!out) return 0;
    out->clear();
    if (!rect) return 0;
    return countHits([&](auto visit) { walkOverlapping(*rect, visit); }, appendTo(*out));
}

int CRTree::searchOverlapping(const RTreeRect* rect, EntryCallback callback, void* context)
{
    if (!rect) return 0;
    const SearchMark mark(*this);
    return countHits([&](auto visit) { walkOverlapping(*rect, visit); },
                     callWithId(callback, context));
}

int CRTree::searchOverlappingWithRect(const RTreeRect* rect, EntryRectCallback callback,
                                      void* context)
{
    if (!rect) return 0;
    const SearchMark mark(*this);
    return countHits([&](auto visit) { walkOverlapping(*rect, visit); },
                     callWithRect(callback, context));
}

int CRTree::searchContained(const RTreeRect* rect, EntryCallback callback, void* context)
{
    if (!rect) return 0;
    const SearchMark mark(*this);
    return countHits([&](auto visit) { walkContained(*rect, visit); },
                     callWithId(callback, context));
}

int CRTree::searchContainedWithRect(const RTreeRect* rect, EntryRectCallback callback,
                                    void* context)
{
    if (!rect) return 0;
    const SearchMark mark(*this);
    return countHits([&](auto visit) { walkContained(*rect, visit); },
                     callWithRect(callback, context));
}

int CRTree::entryTotal()
{
    return entryCount_;
}
