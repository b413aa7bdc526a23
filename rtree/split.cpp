#include "rtree/detail/split.h"

#include <cmath>
#include <limits>
#include <utility>

namespace calcora::rtree {

namespace {

/// Preferences closer than this are a tie; a difference of volumes.
constexpr double kPreferenceTie = 1e-6;

/// A group with this many members is complete: the rest fills the other one up to its minimum.
constexpr int kGroupFull = kSplitBranches - kMinFill;

constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

using Volumes = double[kSplitBranches];

class Division {
public:
    explicit Division(const SplitBuffer& branches) : buffer(branches) {}

    Groups run()
    {
        foundGroups();
        for (Choice choice{0, 0};; measureGrowth(choice.group)) {
            choice = strongestPreference();
            join(choice.branch, choice.group);
            if (unassigned == 0 || count[choice.group] == kGroupFull) break;
        }
        joinRest(count[0] >= kGroupFull ? 1 : 0);
        return groups;
    }

private:
    struct Choice {
        int branch;
        int group;
    };

    /// Puts a branch into a group; the group's volume is left to measureGrowth.
    void join(int branch, int g)
    {
        Group& group = groups.group[g];
        const RTreeRect rect = buffer.rects.at(branch);
        group.cover = group.members == 0 ? rect : combineRect(rect, group.cover);
        group.members |= 1u << branch;
        ++count[g];
        unassigned &= ~(1u << branch);
        closed[branch] = kNotANumber;
    }

    /// How much each branch would add to the volume of a group.
    void measureGrowth(int g)
    {
        Group& group = groups.group[g];
        group.volume = sphericalVolume(group.cover);
        combinedVolumes(buffer.rects, group.cover, growth[g]);
        for (double& value : growth[g]) value -= group.volume;
    }

    /// The volume of everything, below which no waste is accepted.
    double startingWaste() const
    {
        RTreeRect cover = buffer.rects.at(0);
        for (int i = 1; i < kSplitBranches; ++i) cover = combineRect(cover, buffer.rects.at(i));
        return -sphericalVolume(cover) - 1.0;
    }

    /// The waste of each pair (A, b) with b > A, against the worst one so far.
    template <int A>
    void compareWaste(double& worst, int (&seeds)[2]) const
    {
        Volumes waste;
        combinedVolumes<A + 1>(buffer.rects, buffer.rects.at(A), waste);
        for (int b = A + 1; b < kSplitBranches; ++b)
            waste[b] = waste[b] - buffer.volume[A] - buffer.volume[b];
        const double most = largestOf<A + 1>(waste, worst);
        if (!(most > worst)) return;
        worst = most;
        seeds[0] = A;
        seeds[1] = std::countr_zero(maskOf<Equal, A + 1>(waste, most));
    }

    /// Finds the first pair of the largest waste and makes each of the two a group. When no pair
    /// gives a waste at all (infinite or crossed rectangles) it is the first one.
    void foundGroups()
    {
        double worst = startingWaste();
        int seeds[2] = {0, 1};
        [&]<int... A>(std::integer_sequence<int, A...>)
        {
            (compareWaste<A>(worst, seeds), ...);
        }
        (std::make_integer_sequence<int, kSplitBranches - 1>());
        for (int g = 0; g < 2; ++g) join(seeds[g], g);
        for (int g = 0; g < 2; ++g) measureGrowth(g);
    }

    /// The unassigned branch whose growths of the two groups differ most. Of branches that tie with
    /// the first such one, a later one is taken when its group is smaller. When no difference is a
    /// number, it is the first branch, for group 1.
    Choice strongestPreference() const
    {
        Volumes difference;
        Volumes preference;
        for (int i = 0; i < kSplitBranches; ++i) {
            difference[i] = growth[1][i] - growth[0][i] + closed[i];
            preference[i] = std::abs(difference[i]);
        }
        const double biggest = largestOf(preference, -1.0);
        if (biggest < 0.0) return {std::countr_zero(unassigned), 1};

        Volumes distance;
        for (int i = 0; i < kSplitBranches; ++i) distance[i] = std::abs(preference[i] - biggest);
        const unsigned second = maskOf<Below>(difference, 0.0);  // those that prefer group 1
        const int first = std::countr_zero(maskOf<Equal>(preference, biggest));
        Choice choice{first, static_cast<int>(second >> first & 1u)};
        unsigned ties = maskOf<Below>(distance, kPreferenceTie) >> first >> 1 << first << 1;
        for (; ties != 0; ties &= ties - 1) {
            const int i = std::countr_zero(ties);
            const int g = static_cast<int>(second >> i & 1u);
            if (count[g] < count[choice.group]) choice = {i, g};
        }
        return choice;
    }

    void joinRest(int g)
    {
        for (; unassigned != 0;) join(std::countr_zero(unassigned), g);
        for (Group& group : groups.group) group.volume = sphericalVolume(group.cover);
    }

    const SplitBuffer& buffer;
    Groups groups;
    Volumes growth[2];
    Volumes closed = {};  ///< 0 for an unassigned branch, not a number for the others
    unsigned unassigned = (1u << kSplitBranches) - 1;
    int count[2] = {0, 0};
};

}  // namespace

Groups divideBranches(const SplitBuffer& buffer)
{
    return Division(buffer).run();
}

}  // namespace calcora::rtree
