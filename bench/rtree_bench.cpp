// The R-tree against the dynamic trees of Boost.Geometry with the same node sizes.
//
// The rectangles are boxes of sides up to 1, one for each unit of area, as the segments of a line
// work are; a window has ten hits on average. Times are for one operation.
#include <algorithm>
#include <boost/geometry.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <boost/iterator/function_output_iterator.hpp>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "benchmark/benchmark.h"
#include "rtree/CRTree.h"
#include "rtree/detail/inspect.h"

namespace {

namespace bg = boost::geometry;
namespace bgi = boost::geometry::index;

enum Order { kRandom, kScan };

void* idOf(std::size_t index)
{
    return reinterpret_cast<void*>(index + 1);
}

std::vector<RTreeRect> boxes(std::size_t count, Order order)
{
    std::mt19937_64 random(1);
    const double extent = std::sqrt(static_cast<double>(count));
    std::uniform_real_distribution<double> place(0.0, extent);
    std::uniform_real_distribution<double> side(0.0, 1.0);
    std::vector<RTreeRect> result(count);
    for (RTreeRect& r : result) {
        const double x = place(random);
        const double y = place(random);
        r = {x, y, x + side(random), y + side(random)};
    }
    if (order == kScan)
        std::sort(result.begin(), result.end(), [](const RTreeRect& a, const RTreeRect& b) {
            return std::pair(std::floor(a.minY), a.minX) < std::pair(std::floor(b.minY), b.minX);
        });
    return result;
}

std::vector<RTreeRect> windows(std::size_t count)
{
    constexpr std::size_t kWindows = 10000;
    std::mt19937_64 random(2);
    const double extent = std::sqrt(static_cast<double>(count));
    const double side = std::sqrt(10.0) - 0.5;  // meets boxes of mean side 0.5 ten times
    std::uniform_real_distribution<double> place(0.0, extent - side);
    std::vector<RTreeRect> result(kWindows);
    for (RTreeRect& r : result) {
        const double x = place(random);
        const double y = place(random);
        r = {x, y, x + side, y + side};
    }
    return result;
}

/// Allocator that knows how much is in use.
template <class T>
struct CountingAllocator {
    using value_type = T;

    explicit CountingAllocator(std::size_t* counter) : bytes(counter) {}
    template <class U>
    CountingAllocator(const CountingAllocator<U>& other) : bytes(other.bytes)
    {
    }
    T* allocate(std::size_t n)
    {
        *bytes += n * sizeof(T);
        return std::allocator<T>().allocate(n);
    }
    void deallocate(T* p, std::size_t n)
    {
        *bytes -= n * sizeof(T);
        std::allocator<T>().deallocate(p, n);
    }
    template <class U>
    bool operator==(const CountingAllocator<U>& other) const
    {
        return bytes == other.bytes;
    }

    std::size_t* bytes;
};

/// The module's tree, through its interface as a host uses it.
class Ours {
public:
    void insert(const RTreeRect& rect, void* id)
    {
        RTreeRect copy = rect;
        face().insertRect(&copy, id, 0);
    }
    std::uintptr_t query(const RTreeRect& window)
    {
        std::uintptr_t sum = 0;
        face().searchOverlapping(
            &window,
            [](void* id, void* context) {
                *static_cast<std::uintptr_t*>(context) += reinterpret_cast<std::uintptr_t>(id);
                return 1;
            },
            &sum);
        return sum;
    }
    void remove(const RTreeRect& rect, void* id) { face().removeRect(&rect, id); }
    std::size_t bytes() const { return calcora::rtree::Inspector::bytes(tree); }

protected:
    ICRTree& face()
    {
        ICRTree* interface = &tree;
        benchmark::DoNotOptimize(interface);
        return *interface;
    }

    CRTree tree;
};

/// The same with the window search that code of the module uses.
class OursInline : public Ours {
public:
    std::uintptr_t query(const RTreeRect& window)
    {
        std::uintptr_t sum = 0;
        tree.forEachOverlapping(window,
                                [&sum](void* id) { sum += reinterpret_cast<std::uintptr_t>(id); });
        return sum;
    }
};

template <class Parameters>
class Boost {
public:
    using Point = bg::model::point<double, 2, bg::cs::cartesian>;
    using Box = bg::model::box<Point>;
    using Value = std::pair<Box, void*>;

    void insert(const RTreeRect& rect, void* id) { tree.insert(Value(box(rect), id)); }
    std::uintptr_t query(const RTreeRect& window)
    {
        std::uintptr_t sum = 0;
        tree.query(bgi::intersects(box(window)),
                   boost::make_function_output_iterator([&sum](const Value& value) {
                       sum += reinterpret_cast<std::uintptr_t>(value.second);
                   }));
        return sum;
    }
    void remove(const RTreeRect& rect, void* id) { tree.remove(Value(box(rect), id)); }
    std::size_t bytes() const { return *used; }

private:
    static Box box(const RTreeRect& r) { return {{r.minX, r.minY}, {r.maxX, r.maxY}}; }

    std::unique_ptr<std::size_t> used = std::make_unique<std::size_t>(0);
    bgi::rtree<Value, Parameters, bgi::indexable<Value>, bgi::equal_to<Value>,
               CountingAllocator<Value>>
        tree{Parameters(), bgi::indexable<Value>(), bgi::equal_to<Value>(),
             CountingAllocator<Value>(used.get())};
};

template <class Tree>
void fill(Tree& tree, const std::vector<RTreeRect>& rects)
{
    for (std::size_t i = 0; i < rects.size(); ++i) tree.insert(rects[i], idOf(i));
}

/// Sets the time of one operation from that of `operations`.
void reportEach(benchmark::State& state, std::size_t operations)
{
    using benchmark::Counter;
    state.counters["each"] = Counter(static_cast<double>(operations),
                                     Counter::kIsIterationInvariantRate | Counter::kInvert);
}

template <class Tree>
void insertion(benchmark::State& state, Order order)
{
    const auto rects = boxes(static_cast<std::size_t>(state.range(0)), order);
    std::size_t bytes = 0;
    for (auto _ : state) {
        auto tree = std::make_unique<Tree>();
        fill(*tree, rects);
        state.PauseTiming();
        bytes = tree->bytes();
        tree.reset();
        state.ResumeTiming();
    }
    reportEach(state, rects.size());
    state.counters["bytes_per_rect"] =
        static_cast<double>(bytes) / static_cast<double>(rects.size());
}

template <class Tree>
void query(benchmark::State& state, Order order)
{
    const auto rects = boxes(static_cast<std::size_t>(state.range(0)), order);
    const auto asked = windows(rects.size());
    Tree tree;
    fill(tree, rects);
    std::uintptr_t sum = 0;
    for (auto _ : state)
        for (const RTreeRect& window : asked) sum += tree.query(window);
    benchmark::DoNotOptimize(sum);
    reportEach(state, asked.size());
}

template <class Tree>
void removal(benchmark::State& state)
{
    const auto rects = boxes(static_cast<std::size_t>(state.range(0)), kRandom);
    std::vector<std::size_t> leaving(rects.size());
    for (std::size_t i = 0; i < leaving.size(); ++i) leaving[i] = i;
    std::shuffle(leaving.begin(), leaving.end(), std::mt19937_64(3));
    leaving.resize(leaving.size() / 2);
    for (auto _ : state) {
        state.PauseTiming();
        auto tree = std::make_unique<Tree>();
        fill(*tree, rects);
        state.ResumeTiming();
        for (const std::size_t i : leaving) tree->remove(rects[i], idOf(i));
        state.PauseTiming();
        tree.reset();
        state.ResumeTiming();
    }
    reportEach(state, leaving.size());
}

/// The time to let go of a full tree.
template <class Tree>
void destruction(benchmark::State& state)
{
    const auto rects = boxes(static_cast<std::size_t>(state.range(0)), kRandom);
    for (auto _ : state) {
        state.PauseTiming();
        auto tree = std::make_unique<Tree>();
        fill(*tree, rects);
        state.ResumeTiming();
        tree.reset();
    }
    reportEach(state, rects.size());
}

template <class Tree>
void addRows(const std::string& name)
{
    const auto add = [&name](const char* work, auto function) {
        benchmark::RegisterBenchmark((std::string(work) + "/" + name).c_str(), function)
            ->RangeMultiplier(10)
            ->Range(1000, 1000000)
            ->Unit(benchmark::kMillisecond);
    };
    add("insert_random", [](benchmark::State& state) { insertion<Tree>(state, kRandom); });
    add("insert_scan", [](benchmark::State& state) { insertion<Tree>(state, kScan); });
    add("query_random", [](benchmark::State& state) { query<Tree>(state, kRandom); });
    add("query_scan", [](benchmark::State& state) { query<Tree>(state, kScan); });
    add("remove", [](benchmark::State& state) { removal<Tree>(state); });
    add("destroy", [](benchmark::State& state) { destruction<Tree>(state); });
}

const bool kRowsAdded = [] {
    addRows<Ours>("CRTree");
    addRows<OursInline>("CRTree_inline");
    addRows<Boost<bgi::quadratic<9, 4>>>("boost_quadratic");
    addRows<Boost<bgi::rstar<9, 4>>>("boost_rstar");
    return true;
}();

}  // namespace
