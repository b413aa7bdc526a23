// Four threads with objects of their own, and one object counted from four threads.
#include <gtest/gtest.h>

#include <atomic>
#include <random>
#include <string_view>
#include <thread>
#include <vector>

#include "calcora/calcora.h"
#include "geo/geometry.h"
#include "tests/reliability/support.h"

namespace {

constexpr int kThreads = 4;

/// What every operation says to some arguments, one digest for each call.
std::vector<std::uint64_t> digests(unsigned first, unsigned cases)
{
    std::vector<std::uint64_t> result;
    reliability::forEachOperation([&](const fuzz::Family&, const fuzz::Operation& operation) {
        for (unsigned number = first; number < first + cases; ++number) {
            const auto bytes = reliability::bytesOf(number, static_cast<fuzz::Manner>(number % 3));
            fuzz::Source source(bytes.data(), bytes.size());
            fuzz::Outcome outcome;
            fuzz::Call(source).run(operation, outcome);
            result.push_back(outcome.digest());
        }
    });
    return result;
}

template <class Work>
void inThreads(Work work)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) threads.emplace_back(work, i);
    for (auto& thread : threads) thread.join();
}

TEST(Threads, WithObjectsOfTheirOwnNeverMeet)
{
    constexpr unsigned kCases = 5;
    // The threads come first: what is made on first use is made by four at once.
    fuzz::loadPlugins();
    std::vector<std::uint64_t> together[kThreads];
    inThreads([&](int i) { together[i] = digests(100 * static_cast<unsigned>(i), kCases); });
    for (unsigned i = 0; i < kThreads; ++i)
        EXPECT_EQ(together[i], digests(100 * i, kCases)) << "thread " << i;
}

TEST(Threads, CountReferencesAndShareListsSafely)
{
    fuzz::loadPlugins();
    const auto object = tav::Ref<IcommonFunc>::create();
    const auto path = tav::Ref<geo::IPath>::create();
    const IcommonFunc::PointLists shared{{{0, 0}, {1, 0}, {1, 1}}, {{2, 2}}};
    inThreads([&](int) {
        for (int i = 0; i < 20000; ++i) {
            const tav::Ref<IcommonFunc> other = object;
            EXPECT_TRUE(path.query<geo::IPointCollection>());
            IcommonFunc::PointLists copy = shared;
            copy[0].append({5, 5});
            EXPECT_EQ(copy.at(0).size(), 4);
        }
    });
    EXPECT_EQ(object->addRef(), 2);
    EXPECT_EQ(object->release(), 1);
    EXPECT_EQ(path->addRef(), 2);
    EXPECT_EQ(path->release(), 1);
    EXPECT_EQ(shared.at(0).size(), 3);
}

TEST(Threads, StopAnExtractionOfAnother)
{
    fuzz::loadPlugins();
    std::mt19937 random(1);
    std::uniform_real_distribution<double> at(0, 1000);
    IDataGeo::PointLists lines, loops;
    IDataGeo::ValueLists bulges, loopBulges;
    for (int i = 0; i < 3000; ++i) {
        lines.append(IDataGeo::Points{{at(random), at(random)}, {at(random), at(random)}});
        bulges.append(IDataGeo::Values{0, 0});
    }
    bool cancel = false;
    const auto dataGeo = tav::Ref<IDataGeo>::create();
    std::thread asking([&] { std::atomic_ref(cancel).store(true); });
    dataGeo->buildRegions(lines, bulges, loops, loopBulges, false, &cancel, 0);
    asking.join();
    EXPECT_EQ(loops.size(), loopBulges.size());
    dataGeo->buildRegions(lines, bulges, loops, loopBulges, false, &cancel, 0);
    EXPECT_TRUE(loops.isEmpty()) << "raised before it began";
}

}  // namespace
