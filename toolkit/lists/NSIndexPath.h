// The way to a node of a tree: at each level the number of the child. The root has the empty path, which also stands
// for "no path" where one is asked for.
#pragma once

#include <compare>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <vector>

class NSIndexPath {
public:
    NSIndexPath() = default;
    NSIndexPath(std::initializer_list<std::size_t> indexes) : indexes_(indexes) {}
    explicit NSIndexPath(std::vector<std::size_t> indexes) : indexes_(std::move(indexes)) {}
    [[nodiscard]] static NSIndexPath indexPathWithIndex(std::size_t index) { return {index}; }

    [[nodiscard]] std::size_t length() const { return indexes_.size(); }
    [[nodiscard]] bool isEmpty() const { return indexes_.empty(); }
    // NSNotFound beyond the end.
    [[nodiscard]] std::size_t indexAtPosition(std::size_t position) const;
    [[nodiscard]] std::size_t lastIndex() const;
    [[nodiscard]] NSIndexPath indexPathByAddingIndex(std::size_t index) const;
    [[nodiscard]] NSIndexPath indexPathByRemovingLastIndex() const;
    [[nodiscard]] const std::vector<std::size_t> &indexes() const { return indexes_; }

    // In the order in which an outline shows the nodes: a parent before its children.
    auto operator<=>(const NSIndexPath &other) const = default;
    // "0.2.1"
    [[nodiscard]] std::string toString() const;

private:
    std::vector<std::size_t> indexes_;
};
