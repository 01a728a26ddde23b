#include "toolkit/tables/RowHeights.h"

#include <algorithm>
#include <bit>

namespace {

std::size_t lowBit(std::size_t i) { return i & (~i + 1); }

}  // namespace

void RowHeights::reset(std::size_t rows, double estimate) {
    estimate_ = estimate;
    heights_.assign(rows, estimate);
    known_.assign(rows, false);
    rebuild();
}

void RowHeights::rebuild() {
    sums_ = heights_;
    for (std::size_t i = 1; i <= sums_.size(); ++i)
        if (const std::size_t above = i + lowBit(i); above <= sums_.size())
            sums_[above - 1] += sums_[i - 1];
}

void RowHeights::append(double height, bool known) {
    heights_.push_back(height);
    known_.push_back(known);
    const std::size_t i = heights_.size();
    double sum = height;
    for (std::size_t part = 1; part < lowBit(i); part <<= 1)
        sum += sums_[i - part - 1];
    sums_.push_back(sum);
}

void RowHeights::put(std::size_t row, double height) {
    const double difference = height - heights_[row];
    if (difference == 0)
        return;
    heights_[row] = height;
    for (std::size_t i = row + 1; i <= sums_.size(); i += lowBit(i))
        sums_[i - 1] += difference;
}

void RowHeights::set(std::size_t row, double height) {
    put(row, height);
    known_[row] = true;
}

void RowHeights::forget(std::size_t row) {
    put(row, estimate_);
    known_[row] = false;
}

void RowHeights::insert(const NSIndexSet &rows) {
    if (rows.isEmpty())
        return;
    if (rows.firstIndex() >= count()) {
        for (std::size_t i = 0; i < rows.count(); ++i)
            append(estimate_, false);
        return;
    }
    std::vector<double> heights;
    std::vector<bool> known;
    std::size_t old = 0;
    for (const NSRange &range : rows.ranges()) {
        for (; heights.size() < range.location && old < count(); ++old) {
            heights.push_back(heights_[old]);
            known.push_back(known_[old]);
        }
        heights.insert(heights.end(), range.length, estimate_);
        known.insert(known.end(), range.length, false);
    }
    for (; old < count(); ++old) {
        heights.push_back(heights_[old]);
        known.push_back(known_[old]);
    }
    heights_ = std::move(heights);
    known_ = std::move(known);
    rebuild();
}

void RowHeights::remove(const NSIndexSet &rows) {
    const NSIndexSet valid = rows.clippedTo(count());
    if (valid.isEmpty())
        return;
    if (valid.firstIndex() + valid.count() == count()) {   // no sum reaches behind its own row
        heights_.resize(valid.firstIndex());
        known_.resize(valid.firstIndex());
        sums_.resize(valid.firstIndex());
        return;
    }
    std::size_t to = valid.firstIndex();
    for (std::size_t from = to; from < count(); ++from)
        if (!valid.containsIndex(from)) {
            heights_[to] = heights_[from];
            known_[to++] = known_[from];
        }
    heights_.resize(to);
    known_.resize(to);
    rebuild();
}

double RowHeights::top(std::size_t row) const {
    double sum = 0;
    for (std::size_t i = std::min(row, count()); i > 0; i -= lowBit(i))
        sum += sums_[i - 1];
    return sum;
}

std::size_t RowHeights::rowAt(double y) const {
    if (y < 0)
        return 0;
    std::size_t row = 0;
    for (std::size_t step = std::bit_floor(count()); step > 0; step >>= 1)
        if (row + step <= count() && sums_[row + step - 1] <= y) {
            row += step;
            y -= sums_[row - 1];
        }
    return row;
}
