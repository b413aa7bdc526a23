// The operations of the sibling module's interfaces stay in their slots.
#include <gmock/gmock.h>

#include <numeric>
#include <vector>

#include "geo/geometry.h"
#include "tests/support/slots.h"

namespace {

using test_support::slotOf;

template <class... Members>
std::vector<int> slotsOf(Members... members)
{
    return {slotOf(members)...};
}

/// The given members are all operations of I beyond those of the root, from slot 6 on.
template <class I>
void expectSlots(const std::vector<int>& slots)
{
    struct Longer : I {
        virtual void next() {}
    };
    std::vector<int> expected(slots.size());
    std::iota(expected.begin(), expected.end(), 6);
    EXPECT_EQ(slots, expected);
    EXPECT_EQ(slotOf(&Longer::next), 6 + static_cast<int>(slots.size()));
    EXPECT_EQ(slotsOf(&I::classInfo, &I::addRef, &I::release, &I::queryInterface, &I::className),
              (std::vector<int>{0, 2, 3, 4, 5}));
}

TEST(Slots, GeometryPlugin)
{
    using P = geo::IPointCollection;
    expectSlots<P>(slotsOf(&P::addPoint, &P::pointCount, &P::pointAt, &P::reserved9, &P::reserved10,
                           &P::reserved11, &P::reserved12, &P::addArcRecord, &P::arcRecords,
                           &P::firstPoint, &P::closingPoint));
    using M = geo::IMatrix;
    expectSlots<M>(slotsOf(&M::initSquare, &M::reserved7, &M::reserved8, &M::resize, &M::reserved10,
                           &M::reserved11, &M::reserved12, &M::rowCount, &M::columnCount,
                           &M::reserved15, &M::setValue, &M::value, &M::reserved18, &M::reserved19,
                           &M::reserved20, &M::reserved21, &M::reserved22, &M::reserved23,
                           &M::reserved24, &M::reserved25, &M::reserved26, &M::reserved27,
                           &M::reserved28, &M::reserved29, &M::reserved30, &M::reserved31,
                           &M::reserved32, &M::reserved33, &M::multiply, &M::reserved35,
                           &M::reserved36, &M::reserved37, &M::solveInPlace, &M::solve));
    expectSlots<geo::IPath>({});
    using R = geo::IPathReceiver;
    expectSlots<R>(slotsOf(&R::pieceCount, &R::addPiece, &R::pieceAt));
}

}  // namespace
