// Interface ids, records, plain and counted objects, references, slots of the sibling module.
#include <gmock/gmock.h>

#include <utility>
#include <vector>

#include "calcora/calcora.h"
#include "geo/geometry.h"
#include "tavrel/core.h"
#include "tests/support/slots.h"

namespace {

struct IProbe : tav::InterfaceOf<IProbe> {
    static constexpr const char* kInterfaceName = "IProbe";
    virtual unsigned capacity() = 0;
};

int livingProbes = 0;

struct CProbe : tav::PlainObject<CProbe, IProbe> {
    static constexpr const char* kClassName = "CProbe";
    explicit CProbe(unsigned capacity) : capacity_(capacity) { ++livingProbes; }
    ~CProbe() override { --livingProbes; }
    unsigned capacity() override { return capacity_; }
    unsigned capacity_;
};

TEST(InterfaceId, IsTheKnownValueOfEachName)
{
    const std::tuple<const char*, long, long> ids[] = {
        {"IObject", tav::IObject::staticInterfaceId(), -1295247072},
        {"IcommonFunc", IcommonFunc::staticInterfaceId(), -2098603842},
        {"IPointCollection", geo::IPointCollection::staticInterfaceId(), -540241025},
        {"IMatrix", geo::IMatrix::staticInterfaceId(), -1374330050},
        {"IGeometric", IGeometric::staticInterfaceId(), 296195176},
        {"IPath", geo::IPath::staticInterfaceId(), 89556758},
        {"IGeoSetUp", IGeoSetUp::staticInterfaceId(), 628893333},
        {"IDataGeo", IDataGeo::staticInterfaceId(), -1142176994},
        {"IUnit", IUnit::staticInterfaceId(), 89750249},
        {"ICRTree", ICRTree::staticInterfaceId(), -1784622930},
        {"", 0, 0},
        {nullptr, 0, 0},
        {"\xff", -1, -1},  // bytes count as signed
        {"a\x80", 97 * 33 - 128, 97 * 33 - 128},
    };
    for (const auto& [name, declared, id] : ids) {
        EXPECT_EQ(tav::interfaceId(name), id) << name;
        EXPECT_EQ(declared, id) << name;
    }
}

TEST(ClassInfo, WalksItsBasesUpToTheFirstNull)
{
    tav::ClassInfo root("root", 1, nullptr);
    tav::ClassInfo left("left", 2, &root);
    tav::ClassInfo right("right", 3, &root);
    tav::ClassInfo joined("joined", 4, &left);
    joined.bases.append(&right);
    tav::ClassInfo cut("cut", 5, nullptr);
    cut.bases.append(&right);
    for (const long id : {1, 2, 3, 4}) EXPECT_TRUE(joined.inherits(id)) << id;
    EXPECT_FALSE(joined.inherits(5));
    EXPECT_TRUE(cut.inherits(5));
    EXPECT_FALSE(cut.inherits(3)) << "the null base ends the walk";
}

/// The names and ids from a record up its first bases; a null base ends the chain.
std::vector<std::pair<std::string, long>> chain(const tav::ClassInfo* info)
{
    std::vector<std::pair<std::string, long>> result;
    for (; info; info = info->bases.at(0)) {
        EXPECT_EQ(info->bases.size(), 1);
        result.emplace_back(info->name.c_str(), info->id);
    }
    return result;
}

TEST(PlainObject, CountsNothingAndOffersNothing)
{
    CProbe probe(3);
    void* out = nullptr;
    EXPECT_EQ(probe.addRef(), 1);
    EXPECT_EQ(probe.release(), 1);
    EXPECT_FALSE(probe.queryInterface(IProbe::staticInterfaceId(), &out));
    EXPECT_EQ(out, static_cast<IProbe*>(&probe)) << "the object is stored all the same";
    EXPECT_FALSE(probe.queryInterface(IProbe::staticInterfaceId(), nullptr));
    EXPECT_EQ(probe.className(), tav::DString());
    EXPECT_THAT(chain(probe.classInfo()),
                testing::ElementsAre(std::pair("CProbe", tav::kConcreteClassId),
                                     std::pair("IProbe", tav::interfaceId("IProbe")),
                                     std::pair("IObject", tav::interfaceId("IObject"))));
    EXPECT_EQ(probe.IObject::classInfo(), tav::IObject::staticInfo());
    EXPECT_EQ(probe.classInfo(), CProbe::staticInfo()) << "one record per class";
}

TEST(NormalObject, IsCreatedCountedAndQueriedByInterface)
{
    const long own = IProbe::staticInterfaceId();
    const long root = tav::IObject::staticInterfaceId();
    for (const long id : {own, root}) {
        EXPECT_TRUE(tav::supportsInterface<CProbe>(id));
        tav::IObject* object = tav::createInstance<CProbe>(id);
        ASSERT_NE(object, nullptr);
        EXPECT_EQ(static_cast<IProbe*>(object)->capacity(), 2000u);
        EXPECT_EQ(object->className(), tav::DString("cprobe"));
        EXPECT_EQ(object->classInfo(), CProbe::staticInfo());
        EXPECT_EQ(object->addRef(), 2);
        void* out = nullptr;
        EXPECT_TRUE(object->queryInterface(own, &out));
        EXPECT_EQ(out, static_cast<IProbe*>(object));
        EXPECT_EQ(object->release(), 2);
        EXPECT_FALSE(object->queryInterface(tav::kConcreteClassId, &out));
        EXPECT_EQ(out, static_cast<IProbe*>(object)) << "left alone";
        EXPECT_FALSE(object->queryInterface(own, nullptr));
        EXPECT_EQ(object->release(), 1);
        EXPECT_EQ(livingProbes, 1);
        EXPECT_EQ(object->release(), 0);
        EXPECT_EQ(livingProbes, 0);
    }
    for (const long id : {tav::kConcreteClassId, IUnit::staticInterfaceId(), 0L}) {
        EXPECT_FALSE(tav::supportsInterface<CProbe>(id));
        EXPECT_EQ(tav::createInstance<CProbe>(id), nullptr);
        EXPECT_EQ(livingProbes, 0);
    }
}

TEST(Ref, HoldsOneReferenceThroughEveryMove)
{
    using Probe = tav::Ref<IProbe>;
    const auto create = [] {
        return Probe::adopt(
            static_cast<IProbe*>(tav::createInstance<CProbe>(IProbe::staticInterfaceId())));
    };
    const auto count = [](const Probe& ref) {
        ref->addRef();
        return ref->release();
    };
    {
        Probe first = create();
        Probe second = first;
        EXPECT_EQ(count(first), 2);
        second = create();
        EXPECT_EQ(livingProbes, 2);
        second = first;
        EXPECT_EQ(livingProbes, 1);
        second = *&second;
        Probe third = std::move(second);
        EXPECT_FALSE(second);
        EXPECT_EQ(count(third), 2);
        const auto object = third.query<tav::IObject>();
        EXPECT_EQ(count(third), 3);
        EXPECT_FALSE(third.query<IUnit>());
        EXPECT_FALSE(second.query<IUnit>()) << "an empty reference offers nothing";
        const Probe shared(third.get());
        EXPECT_EQ(count(third), 4);
        first = nullptr;
        EXPECT_EQ(count(third), 3);
    }
    EXPECT_EQ(livingProbes, 0);
}

template <class... Members>
std::vector<int> slotsOf(Members... members)
{
    return {test_support::slotOf(members)...};
}

/// How many slots I takes; those of the root come first.
template <class I>
int slotCount()
{
    struct Longer : I {
        virtual void next() {}
    };
    EXPECT_EQ(slotsOf(&I::classInfo, &I::addRef, &I::release, &I::queryInterface, &I::className),
              (std::vector<int>{0, 2, 3, 4, 5}));
    return test_support::slotOf(&Longer::next);
}

TEST(Slots, GeometryPlugin)
{
    using P = geo::IPointCollection;
    EXPECT_THAT(slotsOf(&P::addPoint, &P::pointCount, &P::pointAt, &P::addArcRecord, &P::arcRecords,
                        &P::firstPoint, &P::closingPoint),
                testing::ElementsAre(6, 7, 8, 13, 14, 15, 16));
    using M = geo::IMatrix;
    EXPECT_THAT(slotsOf(&M::initSquare, &M::resize, &M::rowCount, &M::columnCount, &M::setValue,
                        &M::value, &M::multiply, &M::solveInPlace, &M::solve),
                testing::ElementsAre(6, 9, 13, 14, 16, 17, 34, 38, 39));
    using R = geo::IPathReceiver;
    EXPECT_THAT(slotsOf(&R::pieceCount, &R::addPiece, &R::pieceAt), testing::ElementsAre(6, 7, 8));
    EXPECT_EQ(slotCount<P>(), 17);
    EXPECT_EQ(slotCount<M>(), 40);
    EXPECT_EQ(slotCount<R>(), 9);
    EXPECT_EQ(slotCount<geo::IPath>(), 6);
}

}  // namespace
