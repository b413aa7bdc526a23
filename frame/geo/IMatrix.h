#pragma once

#include "tavrel/IObject.h"
#include "tavrel/Ref.h"

namespace geo {

/// A matrix of doubles, rows and columns counted from 0. A new matrix is 0 x 0.
///
/// One object is used from one thread at a time. Matrices handed in are read during the call only;
/// no reference to them is kept. The reserved slots do nothing.
class IMatrix : public tav::InterfaceOf<IMatrix> {
public:
    static constexpr const char* kInterfaceName = "IMatrix";

    /// Elements that a matrix can hold.
    static constexpr int kLargestMatrix = 1 << 26;

    /// Slot 6. Becomes n x n, every element `value`. A negative n counts as 0; more than
    /// kLargestMatrix elements give a 0 x 0 matrix.
    virtual void initSquare(int n, double value) = 0;
    virtual void reserved7() = 0;
    virtual void reserved8() = 0;
    /// Slot 9. Becomes rows x columns, every element 0. Negative sizes count as 0; more than
    /// kLargestMatrix elements give a 0 x 0 matrix.
    virtual void resize(int rows, int columns) = 0;
    virtual void reserved10() = 0;
    virtual void reserved11() = 0;
    virtual void reserved12() = 0;
    /// Slot 13. Number of rows.
    virtual int rowCount() = 0;
    /// Slot 14. Number of columns.
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
    /// Slot 34. `result` becomes left x right; called on any matrix, by custom on the result.
    /// `result` may be one of the factors. Null matrices or inner sizes that differ: nothing
    /// happens.
    virtual void multiply(IMatrix* result, IMatrix* left, IMatrix* right) = 0;
    virtual void reserved35() = 0;
    virtual void reserved36() = 0;
    virtual void reserved37() = 0;
    /// Slot 38. Called on an n x 1 right-hand side: becomes x with coefficients * x = right-hand
    /// side. As slot 39, without its answer.
    virtual void solveInPlace(IMatrix* coefficients) = 0;
    /// Slot 39. Called on an n x 1 right-hand side: becomes x with coefficients * x = right-hand
    /// side, true. The coefficients are never changed.
    ///
    /// False, and the right-hand side stays as it was, for sizes that do not fit and for a system
    /// without a unique finite solution. A system is called singular by the size of its own rows,
    /// never by an absolute pivot: rows of 1e-6 may stand next to rows of 1. An unknown that stands
    /// alone in a row with right-hand side 0 comes out as exactly 0.
    virtual bool solve(IMatrix* coefficients) = 0;
};

using MatrixRef = tav::Ref<IMatrix>;

}  // namespace geo
