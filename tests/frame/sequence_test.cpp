// tav::Vector and tav::List: sharing, growth, aliasing, faults of the element type.
#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "tavrel/List.h"
#include "tavrel/Vector.h"

namespace {

using testing::ElementsAre;

template <class Sequence>
class SequenceOfStrings : public testing::Test {
};
using SequenceTypes = testing::Types<tav::Vector<std::string>, tav::List<std::string>>;
TYPED_TEST_SUITE(SequenceOfStrings, SequenceTypes);

/// One random operation on a sequence and on its plain model.
template <class Sequence>
void step(Sequence& sequence, std::vector<std::string>& model, std::mt19937& random)
{
    const auto upTo = [&](std::size_t n) {
        return std::uniform_int_distribution<int>(0, int(n))(random);
    };
    const auto at = [&](int i) { return model.begin() + i; };
    const std::string text = "a text too long to be kept in place " + std::to_string(random());
    const int place = upTo(model.size());
    const auto copy = model;
    const int count = upTo(4), size = upTo(model.size() + 3);
    const auto end = [&] { return at(std::min(place + count, int(model.size()))); };
    const auto own = [&] { return std::string(*at(place)); };
    const std::function<void()> always[] = {
        [&] { sequence.append(text), model.push_back(text); },
        [&] { sequence.insert(place, text), model.insert(at(place), text); },
        [&] { sequence.remove(place, count), model.erase(at(place), end()); },
        [&] { sequence.resize(size, text), model.resize(std::size_t(size), text); },
        [&] { sequence.reserve(place * 2); },
    };
    // The last two put an element of its own, and the whole of itself, in.
    const std::function<void()> inside[] = {
        [&] { sequence.remove(place), model.erase(at(place)); },
        [&] { sequence.pop_front(), model.erase(model.begin()); },
        [&] { sequence.pop_back(), model.pop_back(); },
        [&] { sequence[place] = text, *at(place) = text; },
        [&] { sequence.append(std::as_const(sequence)[place]), model.push_back(own()); },
        [&] { sequence.insert(0, std::as_const(sequence)[place]), model.insert(at(0), own()); },
        [&] { sequence.append(sequence), model.insert(model.end(), copy.begin(), copy.end()); },
    };
    if (model.size() > 50)
        sequence.clear(), model.clear();
    else if (place < int(model.size()) && upTo(1))
        inside[upTo(std::size(inside) - 1)]();
    else
        always[upTo(std::size(always) - 1)]();
}

TYPED_TEST(SequenceOfStrings, BehavesAsAPlainListWhileCopiesShareIt)
{
    std::mt19937 random(7);
    std::vector<TypeParam> sequences(4);
    std::vector<std::vector<std::string>> models(4);
    for (int round = 0; round < 5000; ++round) {
        const auto i = random() % 4;
        const auto j = random() % 4;
        if (random() % 5 == 0) {
            sequences[i] = sequences[j];
            models[i] = models[j];
        } else {
            step(sequences[i], models[i], random);
        }
        for (std::size_t k = 0; k < 4; ++k) {
            const TypeParam& seen = sequences[k];
            ASSERT_TRUE(std::ranges::equal(seen, models[k])) << "round " << round;
        }
    }
}

TEST(Sequence, DetachesTheWriterAloneAndOnlyOnWriting)
{
    const tav::Vector<int> original{1, 2, 3};
    tav::Vector<int> copy(original);
    EXPECT_EQ(copy.constData(), original.data());
    EXPECT_EQ(std::as_const(copy)[1] + std::as_const(copy).last() + std::as_const(copy).at(0), 6);
    EXPECT_EQ(std::as_const(copy).begin(), original.begin()) << "reading took a copy";

    copy[1] = 9;
    EXPECT_NE(copy.constData(), original.data());
    EXPECT_THAT(original, ElementsAre(1, 2, 3));
    const int* own = copy.constData();
    *copy.begin() = 8;
    copy.last() = 7;
    EXPECT_EQ(copy.constData(), own) << "a list of its own was copied";
    std::reverse(copy.begin(), copy.end());
    EXPECT_THAT(copy, ElementsAre(7, 9, 8));
    copy.reserve(50);
    own = copy.constData();
    while (copy.size() < 50) copy.append(0);
    EXPECT_EQ(copy.constData(), own) << "the memory was there";

    tav::Vector<int> cleared(original);
    cleared.clear();
    EXPECT_EQ(original.size(), 3);
    EXPECT_FALSE(original.isShared());
}

TEST(Sequence, AnswersIndicesOutsideTheListHarmlessly)
{
    tav::List<int> list{1, 2};
    list.insert(-5, 0);
    list.insert(50, 3);
    list.remove(-1);
    list.remove(4);
    EXPECT_THAT(list, ElementsAre(0, 1, 2, 3));
    list.remove(3, 1000);
    list.resize(-3);
    EXPECT_TRUE(list.isEmpty());
    list.pop_back();
    list.pop_front();
    list.removeLast();
    EXPECT_EQ(list, tav::List<int>());
}

/// Counts its copies, moves and living instances, and throws where it is told to.
struct Fragile {
    static inline int living = 0;
    static inline int copiesUntilThrow = -1;
    static inline int transfers = 0;

    explicit Fragile(int v) : value(v) { ++living; }
    Fragile(const Fragile& other) : value(other.value)
    {
        if (copiesUntilThrow >= 0 && copiesUntilThrow-- == 0) throw std::runtime_error("copy");
        ++transfers;
        ++living;
    }
    Fragile& operator=(const Fragile&) = default;
    ~Fragile() { --living; }

    int value;
    friend bool operator==(const Fragile& a, const Fragile& b) = default;
};

using Fragiles = tav::Vector<Fragile>;

TEST(Sequence, SurvivesAnElementThatCannotBeCopied)
{
    const std::vector<void (*)(Fragiles&, const Fragile&)> operations = {
        [](Fragiles& list, const Fragile& x) { list.append(x); },
        [](Fragiles& list, const Fragile& x) { list.insert(1, x); },
        [](Fragiles& list, const Fragile&) { list.append(list); },
        [](Fragiles& list, const Fragile& x) { list.resize(9, x); },
        [](Fragiles& list, const Fragile&) { list.remove(1); },
        [](Fragiles& list, const Fragile&) { list.pop_front(); },
        [](Fragiles& list, const Fragile&) { list.pop_back(); },
        [](Fragiles& list, const Fragile&) { list[0].value = 5; },
        [](Fragiles& list, const Fragile&) { list.reserve(100); },
        [](Fragiles& list, const Fragile& x) { list = Fragiles(4, x); },
    };
    for (std::size_t operation = 0; operation < operations.size(); ++operation) {
        int thrown = 0;
        for (const bool shared : {false, true}) {
            for (int point = 0; point < 12; ++point) {
                SCOPED_TRACE(testing::Message() << operation << ' ' << shared << ' ' << point);
                const Fragile extra(4);
                Fragiles list{Fragile(1), Fragile(2), Fragile(3)};
                const Fragiles before = shared ? list : Fragiles();
                Fragile::copiesUntilThrow = point;
                try {
                    operations[operation](list, extra);
                } catch (const std::runtime_error&) {
                    ++thrown;
                    EXPECT_TRUE(operation != 0 || list.size() == 3);
                }
                Fragile::copiesUntilThrow = -1;
                list.append(extra);
                EXPECT_EQ(std::as_const(list).last(), extra);
                EXPECT_EQ(before, shared ? Fragiles({Fragile(1), Fragile(2), Fragile(3)}) : before);
            }
        }
        EXPECT_GT(thrown, 0) << "operation " << operation << " copied nothing";
        EXPECT_EQ(Fragile::living, 0);
    }
}

TEST(Sequence, GrowsInLinearTime)
{
    constexpr int kCount = 5000;
    const Fragile one(1);
    const std::vector<void (*)(Fragiles&, const Fragile&)> steps = {
        [](Fragiles& list, const Fragile& x) { list.append(x); },
        [](Fragiles& list, const Fragile& x) { list.append(Fragiles(1, x)); },
        [](Fragiles& list, const Fragile& x) { list.resize(list.size() + 1, x); },
        // a queue that grows slowly
        [](Fragiles& list, const Fragile& x) { list.append(x), list.append(x), list.pop_front(); },
    };
    for (std::size_t i = 0; i < steps.size(); ++i) {
        Fragile::transfers = 0;
        Fragiles list;
        for (int k = 0; k < kCount; ++k) steps[i](list, one);
        EXPECT_EQ(list.size(), kCount);
        EXPECT_LT(Fragile::transfers, 8 * kCount) << "way " << i;
    }
}

}  // namespace
