// A dense matrix with a solver for small linear systems.
#pragma once

#include <vector>

#include "geo/IMatrix.h"
#include "tavrel/PlainObject.h"

namespace tavrel_geometry {

class Matrix : public tav::PlainObject<Matrix, geo::IMatrix> {
public:
    static constexpr const char* kClassName = "Matrix";

    void initSquare(int n, double value) override { reshape(n, n, value); }
    void resize(int rows, int columns) override { reshape(rows, columns, 0.0); }
    int rowCount() override { return rows_; }
    int columnCount() override { return columns_; }
    void setValue(int row, int column, double value) override;
    double value(int row, int column) override;
    void multiply(geo::IMatrix* result, geo::IMatrix* left, geo::IMatrix* right) override;
    void solveInPlace(geo::IMatrix* coefficients) override { solve(coefficients); }
    bool solve(geo::IMatrix* coefficients) override;

    void reserved7() override {}
    void reserved8() override {}
    void reserved10() override {}
    void reserved11() override {}
    void reserved12() override {}
    void reserved15() override {}
    void reserved18() override {}
    void reserved19() override {}
    void reserved20() override {}
    void reserved21() override {}
    void reserved22() override {}
    void reserved23() override {}
    void reserved24() override {}
    void reserved25() override {}
    void reserved26() override {}
    void reserved27() override {}
    void reserved28() override {}
    void reserved29() override {}
    void reserved30() override {}
    void reserved31() override {}
    void reserved32() override {}
    void reserved33() override {}
    void reserved35() override {}
    void reserved36() override {}
    void reserved37() override {}

private:
    void reshape(int rows, int columns, double value);
    bool holds(int row, int column) const;
    std::size_t place(int row, int column) const;

    int rows_ = 0;
    int columns_ = 0;
    std::vector<double> values_;  // row by row
};

}  // namespace tavrel_geometry
