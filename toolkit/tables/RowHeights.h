// Where each row of a table stands, also for 100,000 rows whose heights are known only in part.
//
// Heights  each row has the estimated height until its own is set; both count in points, gaps between rows included.
// Cost     looking up a row or a point, setting a height, adding or removing the last rows: logarithmic. Inserting or
//          removing further up: linear.
#pragma once

#include <cstddef>
#include <vector>

#include "toolkit/lists/NSIndexSet.h"

class RowHeights {
public:
    // All rows forget their heights.
    void reset(std::size_t rows, double estimate);
    [[nodiscard]] std::size_t count() const { return heights_.size(); }
    [[nodiscard]] bool isKnown(std::size_t row) const { return known_[row]; }
    [[nodiscard]] double height(std::size_t row) const { return heights_[row]; }
    void set(std::size_t row, double height);
    void forget(std::size_t row);
    // As in ListChange: inserted rows count after the change, removed ones before.
    void insert(const NSIndexSet &rows);
    void remove(const NSIndexSet &rows);

    // The upper edge of a row, or the lower edge of all for the count of rows.
    [[nodiscard]] double top(std::size_t row) const;
    [[nodiscard]] double total() const { return top(count()); }
    // The row at a distance from the top; 0 above the first, the count below the last.
    [[nodiscard]] std::size_t rowAt(double y) const;

private:
    void append(double height, bool known);
    void rebuild();
    void put(std::size_t row, double height);

    double estimate_ = 0;
    std::vector<double> heights_;
    std::vector<bool> known_;
    std::vector<double> sums_;   // sums_[i] is the sum of the lowbit(i + 1) heights that end with row i
};
