// The cancel flag raised at each of the places where an extraction looks at it.
#include <gtest/gtest.h>

#if defined(__x86_64__) && defined(__linux__)

#include <signal.h>
#include <sys/mman.h>
#include <ucontext.h>

#include <algorithm>
#include <array>

#include "datageo/DataGeo.h"

namespace {

/// A flag alone in a page that cannot be read. A read traps: it is counted, the page is opened for
/// the one instruction, and the step after it closes the page again.
class WatchedFlag {
public:
    WatchedFlag()
    {
        page_ = mmap(nullptr, kPage, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        struct sigaction action = {};
        action.sa_flags = SA_SIGINFO;
        action.sa_sigaction = onRead;
        sigaction(SIGSEGV, &action, &before_[0]);
        action.sa_sigaction = onStep;
        sigaction(SIGTRAP, &action, &before_[1]);
    }
    ~WatchedFlag()
    {
        sigaction(SIGSEGV, &before_[0], nullptr);
        sigaction(SIGTRAP, &before_[1], nullptr);
        munmap(page_, kPage);
    }

    /// Lowered again, to be raised at read `number`; 0: never.
    bool* raisedAt(int number)
    {
        reads = 0;
        raiseAt_ = number;
        mprotect(page_, kPage, PROT_READ | PROT_WRITE);
        *static_cast<bool*>(page_) = false;
        mprotect(page_, kPage, PROT_NONE);
        return static_cast<bool*>(page_);
    }

    static inline volatile int reads = 0;

private:
    static constexpr std::size_t kPage = 4096;
    static constexpr greg_t kSingleStep = 0x100;

    static void onRead(int, siginfo_t* info, void* context)
    {
        if (info->si_addr != page_) abort();
        mprotect(page_, kPage, PROT_READ | PROT_WRITE);
        reads = reads + 1;
        if (reads == raiseAt_) *static_cast<bool*>(page_) = true;
        static_cast<ucontext_t*>(context)->uc_mcontext.gregs[REG_EFL] |= kSingleStep;
    }
    static void onStep(int, siginfo_t*, void* context)
    {
        mprotect(page_, kPage, PROT_NONE);
        static_cast<ucontext_t*>(context)->uc_mcontext.gregs[REG_EFL] &= ~kSingleStep;
    }

    static inline void* page_ = nullptr;
    static inline volatile int raiseAt_ = 0;
    struct sigaction before_[2];
};

struct Loops {
    DataGeo::PointLists points;
    DataGeo::ValueLists bulges;

    bool contains(const DataGeo::Points& loop) const
    {
        return std::find(points.begin(), points.end(), loop) != points.end();
    }
    friend bool operator==(const Loops&, const Loops&) = default;
};

TEST(Cancel, EndsCleanlyWhereverItComes)
{
    // Discs in a row, each crossing its neighbours and a line; four bars round a gap.
    DataGeo::PointLists lines{{{-5, 1}, {60, 1}}};
    DataGeo::ValueLists bulges{{0, 0}};
    for (int i = 0; i < 6; ++i) {
        lines.append(DataGeo::Points{{10.0 * i, 0}, {10.0 * i + 12, 0}, {10.0 * i, 0}});
        bulges.append(DataGeo::Values{1, 1, 0});
    }
    for (const auto& [x0, y0, x1, y1] :
         {std::array<double, 4>{0, 40, 10, 41}, {0, 45, 10, 46}, {0, 41, 2, 45}, {8, 41, 10, 45}}) {
        lines.append(DataGeo::Points{{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}, {x0, y0}});
        bulges.append(DataGeo::Values{0, 0, 0, 0, 0});
    }
    DataGeo dataGeo(0);
    WatchedFlag flag;
    for (const bool isDirected : {false, true}) {
        const auto extract = [&](bool* cancel) {
            Loops loops{{{{1, 1}}}, {{0}}};
            if (isDirected)
                dataGeo.buildDirectedRegions(lines, bulges, loops.points, loops.bulges, cancel);
            else
                dataGeo.buildRegions(lines, bulges, loops.points, loops.bulges, false, cancel, 0);
            return loops;
        };
        const Loops all = extract(nullptr);
        EXPECT_GT(all.points.size(), 0);
        EXPECT_EQ(extract(flag.raisedAt(0)), all);
        const int reads = WatchedFlag::reads;
        EXPECT_GT(reads, 20);
        RecordProperty(isDirected ? "directed" : "regions", reads);
        int withLoops = 0;
        for (int at = 1; at <= reads; ++at) {
            const Loops found = extract(flag.raisedAt(at));
            ASSERT_EQ(found.points.size(), found.bulges.size());
            for (const auto& loop : std::as_const(found.points)) EXPECT_TRUE(all.contains(loop));
            EXPECT_LE(WatchedFlag::reads, at + 1) << "goes on after it was raised";
            EXPECT_LT(found.points.size(), all.points.size()) << at;
            withLoops += !found.points.isEmpty();
            EXPECT_EQ(extract(nullptr), all);
        }
        EXPECT_EQ(withLoops > 0, !isDirected) << "loops found before, when loops are traced";
    }
}

/// Raises the flag when the first loop that was found is measured.
class RaisesInSorting : public DataGeo {
public:
    RaisesInSorting() : DataGeo(0) {}
    double bulgeChordArea(const Point2DF& a, const Point2DF& b, double bulge) override
    {
        isRaised = true;
        return DataGeo::bulgeChordArea(a, b, bulge);
    }
    bool isRaised = false;
};

TEST(Cancel, LeavesManyLoopsInTheOrderFound)
{
    // More cells than are sorted when the flag is raised, each larger than those below and before.
    constexpr int kLines = 262;
    DataGeo::PointLists lines;
    const DataGeo::ValueLists bulges(2 * kLines, {0, 0});
    for (int i = 0; i < kLines; ++i) {
        const double at = i + 1e-3 * i * i, end = 2 * kLines;
        lines.append(DataGeo::Points{{at, -1}, {at, end}});
        lines.append(DataGeo::Points{{-1, at}, {end, at}});
    }
    const auto areas = [&](DataGeo&& dataGeo, bool* cancel) {
        Loops loops;
        dataGeo.buildRegions(lines, bulges, loops.points, loops.bulges, false, cancel, 0);
        std::vector<double> found;
        for (const auto& cell : std::as_const(loops.points)) {
            const tav::Point2DF across = cell.at(2) - cell.at(0);
            found.push_back(std::fabs(across.x() * across.y()));
        }
        return found;
    };
    const auto isSorted = [](const std::vector<double>& found) {
        const auto isTooLarge = [](double a, double b) { return a > b * (1 + 1e-9); };
        return std::adjacent_find(found.begin(), found.end(), isTooLarge) == found.end();
    };
    std::vector<double> all = areas(DataGeo(0), nullptr);
    EXPECT_EQ(all.size(), std::size_t{kLines - 1} * (kLines - 1));
    EXPECT_TRUE(isSorted(all));
    RaisesInSorting raising;
    std::vector<double> asFound = areas(std::move(raising), &raising.isRaised);
    EXPECT_FALSE(isSorted(asFound));
    std::sort(all.begin(), all.end());
    std::sort(asFound.begin(), asFound.end());
    EXPECT_EQ(asFound, all);
}

}  // namespace

#endif
