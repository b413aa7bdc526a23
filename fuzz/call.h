// Makes the arguments of an operation by their types, calls it and checks what comes back.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <tuple>
#include <type_traits>

#include "calcora/calcora.h"
#include "fuzz/operations.h"
#include "geo/geometry.h"
#include "tavrel/PluginHost.h"
#include "tests/support/slots.h"

namespace fuzz {

using PointLists = tav::Vector<Points>;
using ValueLists = tav::Vector<Values>;
using SpaceList = tav::List<Point3DF>;
using ReceiverRef = tav::Ref<geo::IPathReceiver>;

/// More points than any operation may make of the lists handed in here.
constexpr int kMostResults = 6000000;
constexpr double kMark = 777;

template <class T>
struct Pool {
    std::optional<T> items[12];
    int count = 0;
};

/// A caller's array of exactly the stated size, so that the sanitizer sees each step beyond it.
template <class T>
struct Array {
    std::unique_ptr<T[]> items;
    int size = 0;

    T* make(int n, const T& mark)
    {
        items.reset(new T[static_cast<std::size_t>(n)]);
        std::fill_n(items.get(), n, mark);
        size = n;
        return items.get();
    }
};

struct Call::State {
    explicit State(Source& bytes) : source(bytes) {}

    Source& source;
    const Operation* operation = nullptr;
    Outcome* outcome = nullptr;
    std::tuple<tav::Ref<IcommonFunc>, tav::Ref<IGeometric>, tav::Ref<IGeoSetUp>, tav::Ref<IDataGeo>,
               tav::Ref<ICRTree>, tav::Ref<IUnit>>
        objects;
    std::tuple<Pool<Points>, Pool<Values>, Pool<PointLists>, Pool<ValueLists>, Pool<Point2DF>,
               Pool<Point3DF>, Pool<double>, Pool<int>, Pool<unsigned>, Pool<bool>, Pool<SpaceList>,
               Pool<tav::Vector<int>>, Pool<tav::Vector<CMyAngleLine>>, Pool<geo::PathRef>,
               Pool<geo::MatrixRef>, Pool<ReceiverRef>, Pool<GeoCircle>, Pool<RTreeRect>,
               Pool<tav::List<void*>>>
        pools;
    std::vector<int> sizes;  ///< of the polylines handed over
    Array<Point2DF> pointArray;
    Array<double> valueArrays[2];
    int valueArrayCount = 0;
    std::optional<int> counter;  ///< the number of results, where the caller asks for it
    bool cancel = false;
    int places = 0;
    int depth = 0;  ///< of calls from callbacks

    [[noreturn]] void fail(const char* what) const
    {
        std::fprintf(stderr, "fuzz: %s: %s\n", operation->name, what);
        std::abort();
    }
    bool has(Flag flag) const { return (operation->flags & flag) != 0; }
    int lastSize() const { return sizes.empty() ? 0 : sizes.back(); }
    int room() const
    {
        const Room& room = operation->room;
        int result = room.factor;
        for (int i = 0; i < room.polylines; ++i) result *= std::max(0, sizes.rbegin()[i] - 1);
        return result;
    }
    void forget();

    template <class I>
    I& object()
    {
        auto& ref = std::get<tav::Ref<I>>(objects);
        if (!ref) {
            ref = tav::Ref<I>::create();
            if constexpr (std::is_same_v<I, ICRTree>) plant(*ref);
        }
        return *ref;
    }
    void plant(ICRTree& tree);

    void fill(Points& points) { source.fill(points); }
    void fill(Values& values) { source.fill(values, lastSize()); }
    void fill(PointLists& lists);
    void fill(ValueLists& lists);
    void fill(Point2DF& p) { p = source.point(); }
    void fill(Point3DF& p) { p = Point3DF(source.point(), source.number()); }
    void fill(double& v) { v = has(kTolerance) ? source.tolerance() : source.number(); }
    void fill(int& v) { v = source.index(lastSize()); }
    void fill(unsigned& v) { v = static_cast<unsigned>(source.index(lastSize())); }
    void fill(bool& v) { v = source.oneIn(2); }
    void fill(SpaceList& list);
    void fill(tav::Vector<int>& list) { list.resize(source.below(3), 7); }
    void fill(tav::Vector<CMyAngleLine>& list);
    void fill(geo::PathRef& path);
    void fill(geo::MatrixRef& matrix);
    void fill(ReceiverRef& receiver);
    void fill(GeoCircle&) {}
    void fill(RTreeRect& rect);
    void fill(tav::List<void*>& list) { list.resize(source.below(3), this); }

    /// A new value, or, at times, one that is in use by this call already.
    template <class T>
    T& take()
    {
        if constexpr (std::is_same_v<T, Point2DF>)
            if (source.manner != Manner::Clear && source.oneIn(24)) return pointInList();
        auto& pool = std::get<Pool<T>>(pools);
        // Clear figures keep their numbers apart: x and y in one variable have no place.
        const bool mayBeOld = !std::is_arithmetic_v<T> || source.manner != Manner::Clear;
        const bool isNew = pool.count == 0 || !mayBeOld || !source.oneIn(8);
        T& taken =
            isNew ? pool.items[pool.count++].emplace() : *pool.items[source.below(pool.count)];
        if (isNew) fill(taken);
        if constexpr (std::is_same_v<T, Points>) sizes.push_back(taken.size());
        return taken;
    }
    Point2DF& pointInList();

    void see(double v, Outcome::Kind kind = Outcome::Number)
    {
        if (!has(kInfinite) && source.isFinite() && !std::isfinite(v)) fail("not finite");
        if (outcome->isWanted) outcome->items.push_back({kind, v});
    }
    void seeCount(long v)
    {
        if (outcome->isWanted) outcome->items.push_back({Outcome::Count, static_cast<double>(v)});
    }
    void inspect(const double& v)
    {
        see(v, has(kPlaces) ? places++ % 2 ? Outcome::Y : Outcome::X : Outcome::Number);
    }
    void inspect(const int& v) { seeCount(v); }
    void inspect(const short& v) { seeCount(v); }
    void inspect(const bool& v) { seeCount(v); }
    void inspect(const Point2DF& p)
    {
        see(p.x(), Outcome::X);
        see(p.y(), Outcome::Y);
    }
    void inspect(const Point3DF& p)
    {
        inspect(Point2DF(p.x(), p.y()));
        see(p.z());
    }
    void inspect(const tav::RectF& r)
    {
        inspect(Point2DF(r.left(), r.top()));
        see(r.right());
        see(r.bottom());
    }
    void inspect(const GeoCircle& c)
    {
        inspect(c.centre);
        see(c.radius);
    }
    void inspect(const CMyAngleLine* line)
    {
        seeCount(line != nullptr);
        if (line) see(line->direction);
    }
    void inspect(void* const& id) { seeCount(reinterpret_cast<std::intptr_t>(id)); }
    void inspect(const geo::PathRef& path);
    template <class List>
    void inspect(const List& list) requires requires
    {
        list.isEmpty();
    }
    {
        if (list.size() > kMostResults) fail("a result without bounds");
        seeCount(list.size());
        for (const auto& item : list) inspect(item);
    }
    void inspectArrays();
};

template <class T>
bool same(const T& a, const T& b)
{
    if constexpr (requires { a.isEmpty(); }) {
        return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                          [](const auto& x, const auto& y) { return same(x, y); });
    } else if constexpr (std::is_trivially_copyable_v<T>) {
        return std::memcmp(&a, &b, sizeof a) == 0;
    } else {
        return a == b;
    }
}

/// Callbacks of the tree: at times they search the tree, or try to change it.
int onEntry(void* id, void* context);
int onEntryRect(void* id, RTreeRect* rect, void* context);
inline ICRTree::EntryCallback callback(ICRTree::EntryCallback)
{
    return onEntry;
}
inline ICRTree::EntryRectCallback callback(ICRTree::EntryRectCallback)
{
    return onEntryRect;
}

/// The value of one argument. What a list, a point or a reference is made of lives in the state.
template <class A>
decltype(auto) argument(Call::State& s)
{
    using T = std::remove_cvref_t<A>;
    if constexpr (!std::is_pointer_v<T>) {
        return (s.take<T>());
    } else if constexpr (std::is_function_v<std::remove_pointer_t<T>>) {
        return s.source.oneIn(12) ? nullptr : callback(T{});
    } else if constexpr (std::is_same_v<T, void*>) {
        return reinterpret_cast<void*>(static_cast<std::intptr_t>(s.source.below(50)));
    } else {
        const bool isNull = s.source.manner != Manner::Clear && s.source.oneIn(16);
        if constexpr (std::is_same_v<T, Point2DF*>)
            return isNull ? nullptr : s.pointArray.make(s.room(), {kMark, kMark});
        else if constexpr (std::is_same_v<T, double*>)
            return isNull ? nullptr : s.valueArrays[s.valueArrayCount++].make(s.room(), kMark);
        else if constexpr (std::is_same_v<T, int*>)
            return isNull ? nullptr : &s.counter.emplace(-5);
        else if constexpr (std::is_same_v<T, bool*>)
            return s.cancel = s.source.oneIn(16), isNull ? nullptr : &s.cancel;
        else
            return isNull ? nullptr : &s.take<std::remove_cv_t<std::remove_pointer_t<T>>>();
    }
}

/// What surrounds the operation itself: creations refused, the caller's hook.
class Surroundings {
public:
    explicit Surroundings(Call& call) : call_(call), left_(call.refusedCreation)
    {
        if (left_ >= 0) tav::setCreationFilter(&allow, this);
        if (call_.onCall) call_.onCall(true);
    }
    ~Surroundings()
    {
        if (call_.onCall) call_.onCall(false);
        if (call_.refusedCreation < 0) return;
        tav::setCreationFilter(nullptr, nullptr);
        call_.hasRefused = left_ < 0;
    }

private:
    static bool allow(const char*, long, void* self)
    {
        return static_cast<Surroundings*>(self)->left_-- != 0;
    }
    Call& call_;
    int left_;
};

struct Nothing {};
template <class A>
inline constexpr bool kIsOutput =
    std::is_lvalue_reference_v<A> && !std::is_const_v<std::remove_reference_t<A>>;
template <class A>
using Copy = std::conditional_t<kIsOutput<A>, std::remove_cvref_t<A>, Nothing>;

template <class A, class T>
Copy<A> copyOf(const T& value)
{
    if constexpr (kIsOutput<A>)
        return value;
    else
        return {};
}

template <class I, class R, class... A>
void invoke(Call& call, R (I::*operation)(A...))
{
    Call::State& s = call.state();
    I& object = s.object<I>();
    std::tuple<decltype(argument<A>(s))...> arguments{argument<A>(s)...};
    const bool compares = s.source.oneIn(4);
    using Copies = std::tuple<Copy<A>...>;
    std::optional<Copies> before;
    const auto forOutputs = [&](auto&& visit) {
        [&]<std::size_t... K>(std::index_sequence<K...>)
        {
            (visit.template operator()<K, A>(std::get<K>(arguments)), ...);
        }
        (std::index_sequence_for<A...>());
    };
    if (compares) std::apply([&](const auto&... a) { before.emplace(copyOf<A>(a)...); }, arguments);
    bool isNeutral = false;
    call.hasRefused = false;
    const auto perform = [&](auto&... a) -> R {
        const Surroundings surroundings(call);
        return (object.*operation)(a...);
    };
    if constexpr (std::is_void_v<R>) {
        std::apply(perform, arguments);
    } else {
        const R result = std::apply(perform, arguments);
        s.places = 0;
        s.inspect(result);
        if constexpr (std::is_same_v<R, bool>) isNeutral = !result;
        if constexpr (std::is_same_v<R, bool>)
            if (call.hasRefused && result) s.fail("succeeded without an object it needs");
        if constexpr (std::is_same_v<R, short> || std::is_same_v<R, int>) isNeutral = result == -1;
    }
    s.places = 0;
    forOutputs([&]<std::size_t K, class Argument>(const auto& a) {
        if constexpr (kIsOutput<Argument>) {
            if (before && isNeutral && !s.has(kWritesAlways) && !same(std::get<K>(*before), a))
                s.fail("an output was written although the operation failed");
            s.inspect(a);
        }
    });
    s.inspectArrays();
}

/// The row of an operation.
template <auto Member>
Operation row(const char* name, Room room = {}, unsigned flags = 0)
{
    return {name,
            [](Call& call) { invoke(call, Member); },
            room,
            flags,
            test_support::slotOf(Member),
            &typeid(Member)};
}
template <auto Member>
Operation row(const char* name, unsigned flags)
{
    return row<Member>(name, Room{}, flags);
}

}  // namespace fuzz
