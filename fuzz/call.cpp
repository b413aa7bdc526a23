#include "fuzz/call.h"

#include <bit>

#include "tavrel/diagnostics.h"

namespace fuzz {

namespace {

thread_local Call::State* calling = nullptr;  ///< whose callbacks are being called

/// What a callback does besides answering.
int answer(Call::State& s, void* id)
{
    s.seeCount(reinterpret_cast<std::intptr_t>(id));
    auto& tree = s.object<ICRTree>();
    if (s.depth < 2 && s.source.oneIn(16)) {
        ++s.depth;
        RTreeRect rect;
        s.fill(rect);
        switch (s.source.below(4)) {
            case 0:
                s.seeCount(tree.searchOverlapping(&rect, onEntry, nullptr));
                break;
            case 1:
                tree.insertRect(&rect, id, 0);
                break;
            case 2:
                tree.removeId(id);
                break;
            default:
                tree.removeFirstOverlapping(&rect, onEntry, nullptr);
        }
        --s.depth;
    }
    return s.source.below(8) - 1;
}

template <class... T>
void empty(std::tuple<Pool<T>...>& pools)
{
    const auto drop = [](auto& pool) {
        while (pool.count > 0) pool.items[--pool.count].reset();
    };
    (drop(std::get<Pool<T>>(pools)), ...);
}

}  // namespace

int onEntry(void* id, void*)
{
    return answer(*calling, id);
}

int onEntryRect(void* id, RTreeRect* rect, void*)
{
    calling->inspect(Point2DF(rect->minX, rect->minY));
    calling->inspect(Point2DF(rect->maxX, rect->maxY));
    return answer(*calling, id);
}

void Call::State::forget()
{
    empty(pools);
    sizes.clear();
    pointArray.items.reset();
    for (auto& array : valueArrays) array.items.reset();
    valueArrayCount = 0;
    counter.reset();
    places = 0;
}

void Call::State::plant(ICRTree& tree)
{
    for (int i = source.below(48); i > 0; --i) {
        RTreeRect rect;
        fill(rect);
        tree.insertRect(&rect, reinterpret_cast<void*>(static_cast<std::intptr_t>(i)), 0);
    }
}

void Call::State::fill(PointLists& lists)
{
    sizes.clear();
    for (int n = source.below(6); n > 0; --n) {
        source.fill(lists.emplaceBack());
        sizes.push_back(std::as_const(lists).last().size());
    }
}

void Call::State::fill(ValueLists& lists)
{
    const std::size_t n =
        source.oneIn(8) ? static_cast<std::size_t>(source.below(6)) : sizes.size();
    for (std::size_t i = 0; i < n; ++i)
        source.fill(lists.emplaceBack(), i < sizes.size() ? sizes[i] : source.length());
}

void Call::State::fill(SpaceList& list)
{
    Points points;
    fill(points);
    for (const Point2DF& p : std::as_const(points)) list.append({p, source.number()});
}

void Call::State::fill(tav::Vector<CMyAngleLine>& list)
{
    while (list.size() < 3) list.append({source.number(), source.number()});
}

void Call::State::fill(geo::PathRef& path)
{
    if (source.manner != Manner::Clear && source.oneIn(16)) return;
    const auto collection = tav::Ref<geo::IPointCollection>::create();
    SpaceList points;
    fill(points);
    sizes.push_back(points.size());
    const bool isLevel = source.oneIn(2);
    for (const Point3DF& p : std::as_const(points))
        collection->addPoint(isLevel ? Point3DF(p.x(), p.y(), 0) : p);
    for (int n = source.below(1 + std::min(points.size(), 40)); n > 0; --n)
        collection->addArcRecord(tav::Radian{source.index(points.size()),
                                             {source.point(), isLevel ? 0 : source.number()}});
    path = collection.query<geo::IPath>();
}

void Call::State::fill(geo::MatrixRef& matrix)
{
    if (source.oneIn(16)) return;
    matrix = geo::MatrixRef::create();
    matrix->resize(source.oneIn(8) ? source.below(6) : 4, 4);
    for (int i = 0; i < 16; ++i) matrix->setValue(i / 4, i % 4, source.number());
}

void Call::State::fill(ReceiverRef& receiver)
{
    if (!source.oneIn(16)) receiver = ReceiverRef::create();
}

void Call::State::fill(RTreeRect& rect)
{
    const Point2DF corner = source.point();
    const bool isPlain = source.isFinite() || !source.oneIn(8);
    const double width = isPlain ? std::fabs(source.number()) : source.number();
    const double height = isPlain ? std::fabs(source.number()) : source.number();
    rect = {corner.x(), corner.y(), corner.x() + width, corner.y() + height};
}

Point2DF& Call::State::pointInList()
{
    auto& points = take<Points>();
    if (points.isEmpty()) points.append(source.point());
    return points[source.below(points.size())];
}

void Call::State::inspect(const geo::PathRef& path)
{
    const auto collection = path.query<geo::IPointCollection>();
    seeCount(collection ? collection->pointCount() : -1);
    for (int i = 0; collection && i < collection->pointCount(); ++i)
        inspect(collection->pointAt(i));
}

void Call::State::inspectArrays()
{
    if (pointArray.items && counter) {
        const int n = *counter;
        if (n < 0 || n > pointArray.size) fail("a count beyond the array");
        seeCount(n);
        const auto isMarked = [](const Point2DF& p) { return p.x() == kMark && p.y() == kMark; };
        if (!std::all_of(pointArray.items.get() + n, pointArray.items.get() + pointArray.size,
                         isMarked))
            fail("written behind the count");
        for (int i = 0; i < n; ++i) inspect(pointArray.items[static_cast<std::size_t>(i)]);
        for (int i = 0; i < n && valueArrays[0].items; ++i)
            see(valueArrays[0].items[static_cast<std::size_t>(i)]);
        return;
    }
    if (counter) seeCount(*counter);
    for (const auto& array : valueArrays)
        if (array.items)
            for (int i = 0; i < array.size; ++i) see(array.items[static_cast<std::size_t>(i)]);
}

std::uint64_t Outcome::digest() const
{
    std::uint64_t hash = 0xCBF29CE484222325ull;
    for (const Item& item : items) {
        // One not-a-number is as good as another.
        const auto bits = std::isnan(item.value) ? 1 : std::bit_cast<std::uint64_t>(item.value);
        hash = (hash ^ bits) * 0x100000001B3ull;
    }
    return hash;
}

void loadPlugins()
{
    static const auto geometry = tav::Plugin::load(CALCORA_GEOMETRY_PLUGIN);
    static const auto calcora = tav::Plugin::load(CALCORA_PLUGIN);
    tav::setMessageTarget({[](const tav::MessageRecord&, void*) {}, nullptr});
}

Call::Call(Source& bytes) : source(bytes), state_(new State(bytes)) {}

Call::~Call()
{
    delete state_;
}

void Call::run(const Operation& operation, Outcome& outcome)
{
    state_->operation = &operation;
    state_->outcome = &outcome;
    calling = state_;
    state_->forget();
    try {
        operation.run(*this);
    } catch (const std::bad_alloc&) {
        if (letsBadAllocOut) throw;
        state_->fail("std::bad_alloc");
    } catch (...) {
        state_->fail("an exception");
    }
}

}  // namespace fuzz
