#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <limits>
#include <new>
#include <random>
#include <span>
#include <string>
#include <vector>

#include "plain_tree.h"
#include "rtree/CRTree.h"
#include "rtree/detail/inspect.h"

namespace {

// Nodes are the only over-aligned memory of this program: it can be made to run out.
bool outOfMemory = false;

}  // namespace

void* operator new(std::size_t size, std::align_val_t alignment)
{
    const auto unit = static_cast<std::size_t>(alignment);
    void* memory =
        outOfMemory ? nullptr : std::aligned_alloc(unit, (size + unit - 1) / unit * unit);
    if (!memory) throw std::bad_alloc();
    return memory;
}
void operator delete(void* memory, std::align_val_t) noexcept
{
    std::free(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t alignment) noexcept
{
    operator delete(memory, alignment);
}

namespace {

namespace rtree = calcora::rtree;
using Ids = std::vector<void*>;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

void* idOf(int n)
{
    return reinterpret_cast<void*>(static_cast<std::intptr_t>(n));
}

struct Row {
    int level;
    int slot;
    RTreeRect rect;
    void* id;
    friend bool operator==(const Row&, const Row&) = default;
};
using Rows = std::vector<Row>;

/// Every used slot, from the top down.
void list(const rtree::Node& node, Rows& rows)
{
    for (int i = 0; i < 9; ++i) {
        if (!(node.used >> i & 1u)) continue;
        const RTreeRect rect = node.rects.at(i);
        const bool isLeaf = node.level == 0;
        rows.push_back({node.level, i, rect, isLeaf ? rtree::asLeaf(node).ids[i] : nullptr});
        if (!isLeaf) list(*rtree::asInner(node).children[i], rows);
    }
}

Rows structureOf(const CRTree& tree)
{
    Rows rows;
    if (const auto* root = rtree::Inspector::root(tree)) list(*root, rows);
    return rows;
}

void list(const plain::Node& node, Rows& rows)
{
    for (int i = 0; i < 9; ++i) {
        const plain::Branch& b = node.branch[static_cast<std::size_t>(i)];
        if (!b.used()) continue;
        rows.push_back({node.level, i, b.rect, b.id});
        if (b.node) list(*b.node, rows);
    }
}

Rows structureOf(const plain::Tree& tree)
{
    Rows rows;
    list(*tree.root, rows);
    return rows;
}

int collect(void* id, void* ids)
{
    static_cast<Ids*>(ids)->push_back(id);
    return 1;
}
int collectWithRect(void* id, RTreeRect*, void* ids)
{
    return collect(id, ids);
}

std::size_t toSize(int count)
{
    return static_cast<std::size_t>(count);
}

/// The tree, the plain tree and a plain list, given the same work.
struct Twins {
    CRTree tree;
    plain::Tree plainTree;
    std::vector<std::pair<RTreeRect, void*>> entries;

    void insert(RTreeRect rect, void* id)
    {
        RTreeRect given = rect;
        const bool grew = tree.insertRect(&given, id, 0);
        if (std::isnan(rect.minX)) rect.minX = 0;
        if (std::isnan(rect.minY)) rect.minY = 0;
        if (std::isnan(rect.maxX)) rect.maxX = rect.minX + 1;
        if (std::isnan(rect.maxY)) rect.maxY = rect.minY + 1;
        ASSERT_EQ(given, rect);
        ASSERT_EQ(grew, plainTree.insert(rect, id));
        entries.emplace_back(rect, id);
    }

    /// Removes in one of four ways.
    void remove(int way, const RTreeRect& rect, void* id)
    {
        const auto anywhere = [](const RTreeRect&) { return true; };
        const auto meets = [&](const RTreeRect& r) { return plain::overlap(rect, r); };
        const auto isId = [&](const plain::Branch& b) { return b.id == id; };
        void* expected = nullptr;
        Ids removed;
        if (way == 0) {
            const bool valid = rect.minX <= rect.maxX && rect.minY <= rect.maxY;
            if (valid) expected = plainTree.remove(meets, isId);
            if (valid && !expected) expected = plainTree.remove(anywhere, isId);
            ASSERT_EQ(tree.removeRect(&rect, id), expected != nullptr);
        } else if (way == 1) {
            expected = plainTree.remove(anywhere, isId);
            ASSERT_EQ(tree.removeId(id), expected != nullptr);
        } else {
            expected = plainTree.remove(meets, [&](const plain::Branch& b) {
                return way == 2 ? plain::overlap(rect, b.rect) : plain::inside(rect, b.rect);
            });
            const bool none = way == 2 ? tree.removeFirstOverlapping(&rect, collect, &removed)
                                       : tree.removeFirstContained(&rect, collect, &removed);
            ASSERT_EQ(none, expected == nullptr);
            ASSERT_EQ(removed, expected ? Ids{expected} : Ids{});
        }
        // Which of several entries with one id it was, the comparison of structures tells.
        if (!expected) return;
        entries.clear();
        for (const Row& row : structureOf(plainTree))
            if (row.level == 0) entries.emplace_back(row.rect, row.id);
    }

    void compareStructure()
    {
        const Rows rows = structureOf(plainTree);
        ASSERT_EQ(structureOf(tree), rows);
        const RTreeRect none{7, 7, 7, 7};
        RTreeRect box = none;
        tree.bounds(&box);
        ASSERT_EQ(box, rows.empty() ? none : plainTree.root->cover());
        Ids ids, visited[2];
        for (const Row& row : rows)
            if (row.level == 0) ids.push_back(row.id);
        tree.forEachEntry(collect, &visited[0]);
        tree.forEachEntryWithRect(collectWithRect, &visited[1]);
        for (const Ids& found : visited) ASSERT_EQ(found, ids);
    }

    /// All ways to search, against the order of the plain tree.
    void compareSearches(const RTreeRect& q)
    {
        const auto meets = [&](const RTreeRect& r) { return plain::overlap(q, r); };
        const auto isHit = [&](const plain::Branch& b) { return meets(b.rect); };
        const auto isInside = [&](const plain::Branch& b) { return plain::inside(q, b.rect); };
        Ids overlapping, contained, firsts, found[7];
        plainTree.search(*plainTree.root, meets, isHit, false, overlapping);
        plainTree.search(*plainTree.root, meets, isHit, true, firsts);
        plainTree.search(*plainTree.root, meets, isInside, false, contained);

        tav::List<void*> out[2] = {{idOf(1)}, {}};
        const std::size_t hits[] = {
            toSize(tree.findOverlapping(&q, &out[0])),
            toSize(tree.searchOverlapping(&q, collect, &found[1])),
            toSize(tree.searchOverlappingWithRect(&q, collectWithRect, &found[2])),
            overlapping.size(),
            toSize(tree.findContained(&q, &out[1])),
            toSize(tree.searchContained(&q, collect, &found[5])),
            toSize(tree.searchContainedWithRect(&q, collectWithRect, &found[6]))};
        found[0].assign(out[0].cbegin(), out[0].cend());
        tree.forEachOverlapping(q, [&](void* id) { found[3].push_back(id); });
        found[4].assign(out[1].cbegin(), out[1].cend());
        for (int i = 0; i < 7; ++i) {
            ASSERT_EQ(found[i], i < 4 ? overlapping : contained) << i;
            ASSERT_EQ(hits[i], found[i].size()) << i;
        }
        // A callback that stops leaves its leaf only.
        const auto stop = [](void*, void*) { return 0; };
        ASSERT_EQ(toSize(tree.searchOverlapping(&q, stop, nullptr)), firsts.size());
        std::size_t seen = 0;
        tree.forEachOverlapping(
            q, [&](void*) { return ++seen == 20 ? CRTree::Walk::End : CRTree::Walk::On; });
        ASSERT_EQ(seen, std::min(overlapping.size(), std::size_t{20}));
    }

    /// The search of every entry's own rectangle, one by one and in common.
    void compareOverlaps()
    {
        std::vector<Ids> expected, found;
        for (const Row& row : structureOf(plainTree)) {
            if (row.level != 0) continue;
            expected.push_back({row.id});
            tree.forEachOverlapping(row.rect, [&](void* id) { expected.back().push_back(id); });
        }
        tree.forEachWithOverlaps([&](void* id, std::span<void* const> hits) {
            found.push_back({id});
            found.back().insert(found.back().end(), hits.begin(), hits.end());
            return CRTree::Walk::On;
        });
        ASSERT_EQ(found, expected);
    }
};

using Random = std::mt19937_64;

double pick(Random& random, double from, double to)
{
    return std::uniform_real_distribution<double>(from, to)(random);
}

RTreeRect box(Random& random, double x, double y, double extent, double side)
{
    x += pick(random, 0, extent);
    y += pick(random, 0, extent);
    return {x, y, x + pick(random, 0, side), y + pick(random, 0, side)};
}

/// A rectangle on a lattice: equal ones, touching ones, points and segments.
RTreeRect latticeBox(Random& random, int cells, double cell)
{
    const auto at = [&](int n) { return static_cast<double>(random() % static_cast<unsigned>(n)); };
    const double x = at(cells);
    const double y = at(cells);
    return {x * cell, y * cell, (x + at(3)) * cell, (y + at(3)) * cell};
}

RTreeRect anyOf(Random& random, const std::vector<double>& values)
{
    const auto at = [&] { return values[random() % values.size()]; };
    return {at(), at(), at(), at()};
}

struct Kind {
    std::string name;
    std::function<RTreeRect(Random&)> rect;
};

const std::vector<Kind> kKinds = {
    {"boxes", [](Random& r) { return box(r, 0, 0, 12, 1); }},
    {"survey", [](Random& r) { return box(r, 5e5, 4e6, 0.01, 0.001); }},
    {"lattice", [](Random& r) { return latticeBox(r, 5, 1.0); }},
    {"ties", [](Random& r) { return latticeBox(r, 9, 1e-4); }},
    // Growths that are lost in rounding, or in underflow.
    {"barely growing",
     [](Random& r) {
         const RTreeRect b = latticeBox(r, 4, 2e-9);
         return RTreeRect{b.minX, b.minY, 1e8 + b.maxX,
                          static_cast<double>(r() % 2) * 1e8 + b.maxY};
     }},
    {"tiny", [](Random& r) { return latticeBox(r, 6, 3e-162); }},
    {"huge", [](Random& r) { return latticeBox(r, 6, 3e307); }},
    {"crossed",
     [](Random& r) {
         return anyOf(r, {0, 1, 2, 3, 5, 8, 13});
     }},
    {"odd",
     [](Random& r) {
         return r() % 4 == 0 ? anyOf(r, {-kInf, kInf, kNan, 1e308, 0}) : box(r, 0, 0, 12, 1);
     }},
};

void workAndCompare(const Kind& kind)
{
    Random random(7);
    Twins twins;
    int nextId = 1;
    for (int step = 0; step < 2000; ++step) {
        SCOPED_TRACE(kind.name + " step " + std::to_string(step));
        const bool growing = step / 500 % 2 == 0;
        if (random() % 10 < (growing ? 9u : 2u)) {
            const int id = random() % 10 == 0 ? 1 + static_cast<int>(random() % 50) : nextId++;
            twins.insert(kind.rect(random), idOf(id));
        } else {
            const bool fits = random() % 2 == 0 && !twins.entries.empty();
            const auto entry =
                fits ? twins.entries[random() % twins.entries.size()]
                     : std::pair(kind.rect(random), idOf(1 + static_cast<int>(random() % 400)));
            twins.remove(static_cast<int>(random() % 4), entry.first, entry.second);
        }
        twins.compareStructure();
        if (step % 4 == 0) twins.compareSearches(kind.rect(random));
        if (step % 50 == 0) twins.compareOverlaps();
        ASSERT_EQ(twins.tree.entryTotal(), static_cast<int>(twins.entries.size()));
        if (testing::Test::HasFatalFailure()) return;
    }
}

TEST(RTree, IsThatOfTheRulesAfterEveryStep)
{
    for (const Kind& kind : kKinds) workAndCompare(kind);
}

/// A row of n unit squares, one apart, ids from 1.
void fillRow(CRTree& tree, int n)
{
    for (int i = 0; i < n; ++i) {
        RTreeRect rect{2.0 * i, 0, 2.0 * i + 1, 1};
        tree.insertRect(&rect, idOf(i + 1), 0);
    }
}

TEST(RTree, RefusesWhatCannotBeStored)
{
    CRTree tree;
    fillRow(tree, 30);
    const Rows before = structureOf(tree);
    RTreeRect rect{0, 0, 1, 1};
    for (const int level : {-1, 1, 2, 99, std::numeric_limits<int>::min()})
        EXPECT_FALSE(tree.insertRect(&rect, idOf(99), level));
    EXPECT_FALSE(tree.insertRect(&rect, nullptr, 0) || tree.insertRect(nullptr, idOf(9), 0) ||
                 tree.removeRect(nullptr, idOf(1)) || tree.removeId(nullptr));
    EXPECT_TRUE(tree.removeFirstOverlapping(nullptr, nullptr, nullptr));
    EXPECT_TRUE(tree.removeFirstContained(nullptr, nullptr, nullptr));
    EXPECT_EQ(tree.findOverlapping(&rect, nullptr), 0);
    EXPECT_EQ(tree.searchContained(nullptr, collect, nullptr), 0);
    EXPECT_EQ(tree.searchOverlapping(&rect, nullptr, nullptr), 1);
    EXPECT_EQ(structureOf(tree), before);
}

TEST(RTree, IsEmptyAfterResetAndNewAfterRemoveAll)
{
    CRTree tree;
    fillRow(tree, 100);
    const RTreeRect all{-kInf, -kInf, kInf, kInf};

    tree.reset();
    RTreeRect rect{0, 0, 1, 1};
    tav::List<void*> out = {idOf(5)};
    for (const bool rootless : {true, false}) {
        EXPECT_EQ(tree.entryTotal(), 0);
        EXPECT_EQ(tree.findOverlapping(&all, &out), 0);
        EXPECT_TRUE(out.isEmpty());
        RTreeRect box{7, 7, 7, 7};
        tree.bounds(&box);
        EXPECT_EQ(box, (RTreeRect{7, 7, 7, 7}));
        tree.insertRect(&rect, idOf(1), 0);
        EXPECT_EQ(tree.entryTotal(), rootless ? 0 : 1);
        tree.removeAll();
    }
}

TEST(RTree, CallbacksReadTheTreeAndCannotChangeIt)
{
    CRTree tree;
    fillRow(tree, 100);
    const Rows before = structureOf(tree);
    const auto meddle = [](void* id, RTreeRect* rect, void* context) {
        auto& changed = *static_cast<CRTree*>(context);
        const RTreeRect own = *rect;
        EXPECT_EQ(changed.searchOverlapping(&own, nullptr, nullptr), 1);
        *rect = {-9, -9, 9, 9};
        EXPECT_FALSE(changed.insertRect(rect, id, 0) || changed.removeRect(&own, id) ||
                     changed.removeId(id));
        EXPECT_TRUE(changed.removeFirstOverlapping(&own, nullptr, nullptr) &&
                    changed.removeFirstContained(&own, nullptr, nullptr));
        changed.reset();
        changed.removeAll();
        return 1;
    };
    const RTreeRect query{0, 0, 50, 1};
    EXPECT_EQ(tree.searchOverlappingWithRect(&query, meddle, &tree), 26);
    EXPECT_EQ(tree.searchContainedWithRect(&query, meddle, &tree), 25);
    tree.forEachEntryWithRect(meddle, &tree);
    EXPECT_EQ(structureOf(tree), before);
}

TEST(RTree, RemovalCallsBackWhenTheTreeIsWhole)
{
    CRTree tree;
    fillRow(tree, 200);
    const RTreeRect all{-kInf, -kInf, kInf, kInf};
    const auto chain = [](void*, void* context) {
        auto& changed = *static_cast<CRTree*>(context);
        structureOf(changed);
        const RTreeRect everything{kNan, kNan, kNan, kNan};
        changed.removeFirstContained(&everything, nullptr, nullptr);
        RTreeRect rect{5, 5, 6, 6};
        changed.insertRect(&rect, idOf(1), 0);
        return 0;
    };
    while (tree.entryTotal() > 10) ASSERT_FALSE(tree.removeFirstOverlapping(&all, chain, &tree));
}

TEST(RTree, RestsOnItsOwnSlots)
{
    struct Counting : CRTree {
        void reset() override { ++resets; }
        bool removeId(void*) override { return ++removals > 0; }
        int resets = 0;
        int removals = 0;
    } tree;
    fillRow(tree, 20);
    const RTreeRect elsewhere{900, 900, 901, 901};
    EXPECT_TRUE(tree.removeRect(&elsewhere, idOf(3)));
    EXPECT_EQ(tree.removals, 1);
    tree.removeAll();
    EXPECT_EQ(tree.resets, 1);
    EXPECT_EQ(tree.entryTotal(), 0);
}

TEST(RTree, IsAsBeforeWhenMemoryRunsOut)
{
    Random random(5);
    std::vector<RTreeRect> rects;
    for (int i = 0; i < 4000; ++i) rects.push_back(box(random, 0, 0, 60, 1));
    CRTree tree;
    int failures = 0;
    for (const bool inserts : {true, false})
        for (std::size_t i = 0; i < rects.size(); ++i) {
            const Rows before = structureOf(tree);
            const auto change = [&, id = idOf(static_cast<int>(i) + 1)] {
                if (inserts)
                    tree.insertRect(&rects[i], id, 0);
                else
                    EXPECT_TRUE(tree.removeRect(&rects[i], id));
            };
            outOfMemory = true;
            try {
                change();
                outOfMemory = false;
            } catch (const std::bad_alloc&) {
                outOfMemory = false;
                ++failures;
                EXPECT_EQ(structureOf(tree), before);
                change();
            }
        }
    EXPECT_EQ(tree.entryTotal(), 0);
    EXPECT_GT(failures, 40);
}

}  // namespace
