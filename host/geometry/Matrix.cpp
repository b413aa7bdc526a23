#include "host/geometry/Matrix.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace tavrel_geometry {

namespace {

/// Share of a row's own terms below which a pivot is taken for the rounding of its elimination, so
/// that the system has no unique solution.
constexpr double kSingularShare = 2 * std::numeric_limits<double>::epsilon();

/// One row of the system during elimination.
struct Row {
    std::vector<double> values;
    double right = 0.0;
    double scale = 0.0;  ///< largest coefficient as given
    double terms = 0.0;  ///< bound of the terms that its coefficients were summed from
};

double largestSize(const std::vector<double>& values)
{
    double largest = 0.0;
    for (const double value : values) largest = std::max(largest, std::fabs(value));
    return largest;
}

/// Index of the row from `first` on whose coefficient in `column` is largest against its own scale.
std::size_t pivotRow(const std::vector<Row>& rows, std::size_t first, std::size_t column)
{
    std::size_t best = first;
    double bestShare = 0.0;
    for (std::size_t i = first; i < rows.size(); ++i) {
        const double share = std::fabs(rows[i].values[column]) / rows[i].scale;
        if (share > bestShare) {
            best = i;
            bestShare = share;
        }
    }
    return best;
}

/// Takes `pivot` out of the column of `row`. Zero coefficients leave the row to the bit.
void eliminate(Row& row, const Row& pivot, std::size_t column)
{
    const double factor = row.values[column] / pivot.values[column];
    if (factor == 0) return;
    for (std::size_t j = column; j < row.values.size(); ++j)
        row.values[j] -= factor * pivot.values[j];
    row.right -= factor * pivot.right;
    row.terms += std::fabs(factor) * pivot.terms;
}

/// The solution of the square system, or nothing when it has no unique finite one.
///
/// Elimination with the pivot chosen by its share of its row, so that rows of any size stand side
/// by side; a pivot no larger than the rounding of its own row's terms makes the system singular.
std::optional<std::vector<double>> solveSystem(std::vector<Row> rows)
{
    const std::size_t n = rows.size();
    for (Row& row : rows) row.terms = row.scale = largestSize(row.values);
    for (std::size_t column = 0; column < n; ++column) {
        std::swap(rows[column], rows[pivotRow(rows, column, column)]);
        const Row& pivot = rows[column];
        const double size = std::fabs(pivot.values[column]);
        if (!(size > kSingularShare * pivot.terms && std::isfinite(size))) return std::nullopt;
        for (std::size_t i = column + 1; i < n; ++i) eliminate(rows[i], pivot, column);
    }
    std::vector<double> solution(n);
    for (std::size_t i = n; i-- > 0;) {
        double sum = rows[i].right;
        for (std::size_t j = i + 1; j < n; ++j)
            if (rows[i].values[j] != 0) sum -= rows[i].values[j] * solution[j];
        solution[i] = sum / rows[i].values[i];
        if (!std::isfinite(solution[i])) return std::nullopt;
    }
    return solution;
}

}  // namespace

void Matrix::reshape(int rows, int columns, double value)
{
    rows_ = std::max(rows, 0);
    columns_ = std::max(columns, 0);
    const auto count = static_cast<std::size_t>(rows_) * static_cast<std::size_t>(columns_);
    if (count > static_cast<std::size_t>(kLargestMatrix)) rows_ = columns_ = 0;
    values_.assign(rows_ == 0 ? 0 : count, value);
}

bool Matrix::holds(int row, int column) const
{
    return 0 <= row && row < rows_ && 0 <= column && column < columns_;
}

std::size_t Matrix::place(int row, int column) const
{
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
           static_cast<std::size_t>(column);
}

void Matrix::setValue(int row, int column, double value)
{
    if (holds(row, column)) values_[place(row, column)] = value;
}

double Matrix::value(int row, int column)
{
    return holds(row, column) ? values_[place(row, column)] : 0.0;
}

void Matrix::multiply(geo::IMatrix* result, geo::IMatrix* left, geo::IMatrix* right)
{
    if (!result || !left || !right || left->columnCount() != right->rowCount()) return;
    const int rows = left->rowCount();
    const int columns = right->columnCount();
    const int inner = left->columnCount();
    Matrix product;
    product.resize(rows, columns);
    for (int i = 0; i < product.rows_; ++i)
        for (int j = 0; j < product.columns_; ++j) {
            double sum = 0.0;
            for (int k = 0; k < inner; ++k) sum += left->value(i, k) * right->value(k, j);
            product.values_[product.place(i, j)] = sum;
        }
    result->resize(rows, columns);
    for (int i = 0; i < product.rows_; ++i)
        for (int j = 0; j < product.columns_; ++j) result->setValue(i, j, product.value(i, j));
}

bool Matrix::solve(geo::IMatrix* coefficients)
{
    if (!coefficients || columns_ != 1 || rows_ == 0) return false;
    if (coefficients->rowCount() != rows_ || coefficients->columnCount() != rows_) return false;
    std::vector<Row> rows(static_cast<std::size_t>(rows_));
    for (int i = 0; i < rows_; ++i) {
        Row& row = rows[static_cast<std::size_t>(i)];
        for (int j = 0; j < rows_; ++j) row.values.push_back(coefficients->value(i, j));
        row.right = value(i, 0);
    }
    const auto solution = solveSystem(std::move(rows));
    if (solution) values_ = *solution;
    return solution.has_value();
}

}  // namespace tavrel_geometry
