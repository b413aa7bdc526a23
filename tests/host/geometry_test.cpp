// The sibling geometry plugin, loaded as a host loads it and reached through createObject.
#include "geo/geometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <random>

#include "tavrel/PluginHost.h"

namespace {

using geo::IPath;
using geo::IPointCollection;
using geo::MatrixRef;
using tav::Point3DF;
using tav::Ref;
using Rows = std::vector<std::vector<double>>;

class GeometryPlugin : public testing::Test {
protected:
    std::unique_ptr<tav::Plugin> plugin = tav::Plugin::load(CALCORA_GEOMETRY_PLUGIN);
    std::mt19937 random{11};
};

MatrixRef matrix(const Rows& rows)
{
    const MatrixRef m = MatrixRef::create();
    m->resize(static_cast<int>(rows.size()), static_cast<int>(rows[0].size()));
    for (int i = 0; i < m->rowCount(); ++i)
        for (int j = 0; j < m->columnCount(); ++j)
            m->setValue(i, j, rows[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)]);
    return m;
}

TEST_F(GeometryPlugin, PathAnswersBothInterfacesWithOneCount)
{
    EXPECT_EQ(plugin->create("tavrel_geometry.path", tav::kConcreteClassId), nullptr);
    EXPECT_TRUE(Ref<IPointCollection>::create().query<IPath>());
    const auto path = geo::PathRef::create();
    const auto points = path.query<IPointCollection>();
    ASSERT_TRUE(points);
    EXPECT_EQ(path->addRef(), 3);
    EXPECT_EQ(points->release(), 2);
    EXPECT_EQ(points.query<IPath>(), path) << "the address of the asked base comes back";
    EXPECT_EQ(points.query<tav::IObject>(), path.query<tav::IObject>()) << "one identity";
    void* none = nullptr;
    EXPECT_FALSE(points->queryInterface(geo::IMatrix::staticInterfaceId(), &none) || none);
    EXPECT_TRUE(path->classInfo()->inherits(IPointCollection::staticInterfaceId()));
    EXPECT_EQ(path->className(), tav::DString("path"));
}

TEST_F(GeometryPlugin, CollectionAndReceiverKeepWhatTheyAreGiven)
{
    const auto points = Ref<IPointCollection>::create();
    points->addPoint({1, 2, 3});
    points->addPoint({4, 5, 6});
    EXPECT_TRUE(points->pointAt(2) == Point3DF() && points->pointAt(-1) == Point3DF());
    EXPECT_EQ(points->closingPoint(), Point3DF(1, 2, 3));
    points->addArcRecord(tav::Radian{0, {7, 8, 9}});
    const auto before = points->arcRecords(IPointCollection::kArcRecords);
    points->addArcRecord(tav::Radian{5, {}});
    ASSERT_EQ(before.size(), 1) << "a copy";
    EXPECT_EQ(before.at(0).toRadian(), (tav::Radian{0, {7, 8, 9}}));
    EXPECT_TRUE(points->arcRecords(1).isEmpty());

    const auto receiver = Ref<geo::IPathReceiver>::create();
    for (const geo::PathRef& piece : {points.query<IPath>(), {}}) receiver->addPiece(piece);
    EXPECT_EQ(receiver->pieceCount(), 1) << "the empty one is not kept";
    EXPECT_FALSE(receiver->pieceAt(1));
}

TEST_F(GeometryPlugin, MatrixShapesAndProducts)
{
    const auto m = MatrixRef::create();
    m->initSquare(2, 7.0);
    m->setValue(2, 0, 1.0);
    EXPECT_TRUE(m->value(1, 1) == 7.0 && m->value(2, 0) == 0.0);
    m->initSquare(1 << 30, 1.0);
    EXPECT_EQ(m->rowCount(), 0);
    const auto left = matrix({{1, 2, 3}, {4, 5, 6}}), right = matrix({{1, 0}, {0, 1}, {1, 1}});
    left->multiply(left.get(), left.get(), right.get());
    EXPECT_EQ(left->columnCount(), 2);
    EXPECT_EQ(left->value(1, 0) * left->value(1, 1), 110);
    right->multiply(right.get(), right.get(), right.get());
    EXPECT_EQ(right->rowCount(), 3) << "sizes that do not fit change nothing";
}

TEST_F(GeometryPlugin, SolvesRowsOfAnySize)
{
    std::uniform_real_distribution<double> uniform(-1, 1);
    for (int round = 0; round < 500; ++round) {
        // The unknown alone in its row comes out as exactly 0; it may be any of the three.
        const std::size_t alone = static_cast<std::size_t>(round) % 3;
        double wanted[3] = {uniform(random), uniform(random), uniform(random)};
        wanted[alone] = 0;
        Rows rows(3), right(3);
        for (std::size_t i = 0; i < 3; ++i) {
            const double size = std::pow(10.0, 12 * uniform(random));
            for (std::size_t j = 0; j < 3; ++j)
                rows[i].push_back((i == 1) == (j == alone) ? uniform(random) * size : 0);
            right[i] = {rows[i][0] * wanted[0] + rows[i][1] * wanted[1] + rows[i][2] * wanted[2]};
        }
        const auto coefficients = matrix(rows), x = matrix(right);
        ASSERT_TRUE(x->solve(coefficients.get()));
        for (int i = 0; i < 3; ++i) EXPECT_NEAR(x->value(i, 0), wanted[i], 1e-9);
        EXPECT_EQ(x->value(static_cast<int>(alone), 0), 0.0);
        EXPECT_EQ(coefficients->value(2, 1), rows[2][1]) << "coefficients stay";
    }
}

TEST_F(GeometryPlugin, ReportsSystemsWithoutAUniqueSolution)
{
    const Rows cases[] = {
        {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}},
        {{0.1, 0.2, 0.3}, {0.3, 0.6, 0.9}, {1, 0, 0}},
        {{1e-8, 2e-8, 0}, {2e-8, 4e-8, 0}, {0, 0, 1}},
        {{std::nan(""), 0, 0}, {0, 1, 0}, {0, 0, 1}},
        {{1e-200, 0, 0}, {0, 1, 0}, {0, 0, 1}},
        {{1, 0}, {0, 1}},
    };
    for (const Rows& rows : cases) {
        const auto right = matrix({{1e200}, {2}, {3}});
        EXPECT_FALSE(right->solve(matrix(rows).get())) << testing::PrintToString(rows);
        EXPECT_TRUE(right->value(0, 0) == 1e200 && right->value(2, 0) == 3) << "it stays";
    }
    EXPECT_FALSE(matrix({{1}})->solve(nullptr));
    EXPECT_FALSE(matrix({{1, 2}})->solve(matrix({{1}}).get())) << "two right-hand sides";
}

}  // namespace
