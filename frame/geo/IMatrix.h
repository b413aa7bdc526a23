#pragma once

#include "tavrel/IObject.h"
#include "tavrel/Ref.h"

namespace geo
{

/// A matrix of doubles, rows and columns counted from 0. A new matrix is 0 x 0.
class IMatrix : public tav::InterfaceOf<IMatrix>
{
public:
    static constexpr const char* kInterfaceName = "IMatrix";

    /// Slot 6. Becomes n x n, every element `value`. A negative n counts as 0.
    virtual void initSquare(int n, double value) = 0;
    virtual void reserved7() = 0;
    virtual void reserved8() = 0;
    /// Slot 9. Becomes rows x columns, every element 0. Negative sizes count as 0.
    virtual void resize(int rows, int columns) = 0;
    virtual void reserved10() = 0;
    virtual void reserved11() = 0;
    virtual void reserved12() = 0;
    /// Slot 13.
    virtual int rowCount() = 0;
    /// Slot 14.
    virtual int columnCount() = 0;
    virtual void reserved15() = 0;
    /// Slot 16. Stores an element; outside the matrix nothing happens.
    virtual void setValue(int row, int column, double value) = 0;
    /// Slot 17. An element; 0 outside the matrix.
    virtual double value(int row, int column) = 0;
    virtual void reserved18() = 0;
    virtual void reserved19() = 0;
    virtual void reserved20() = 0;
    virtual void reserved21() = 0;
    virtual void reserved22() = 0;
    virtual void reserved23() = 0;
    virtual void reserved24() = 0;
    virtual void reserved25() = 0;
    virtual void reserved26() = 0;
    virtual void reserved27() = 0;
    virtual void reserved28() = 0;
    virtual void reserved29() = 0;
    virtual void reserved30() = 0;
    virtual void reserved31() = 0;
    virtual void reserved32() = 0;
    virtual void reserved33() = 0;
    /// Slot 34. `result` becomes left x right. `result` may be one of the factors. Null matrices or
    /// inner sizes that differ: nothing happens.
    virtual void multiply(IMatrix* result, IMatrix* left, IMatrix* right) = 0;
    virtual void reserved35() = 0;
    virtual void reserved36() = 0;
    virtual void reserved37() = 0;
    /// Slot 38. Called on an n x 1 right-hand side: becomes x with coefficients * x = right-hand
    /// side. Without a unique solution the right-hand side stays as it was. The coefficients are
    /// never changed.
    virtual void solveInPlace(IMatrix* coefficients) = 0;
    /// Slot 39. As slot 38; false when there is no unique solution.
    virtual bool solve(IMatrix* coefficients) = 0;
};

using MatrixRef = tav::Ref<IMatrix>;

}  // namespace geo
