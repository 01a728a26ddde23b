// Points, sizes, rectangles. Units: points of the toolkit's own coordinate systems.
#pragma once

#include <algorithm>

struct NSPoint {
    double x = 0, y = 0;
    bool operator==(const NSPoint &) const = default;
};

struct NSSize {
    double width = 0, height = 0;
    bool operator==(const NSSize &) const = default;
};

struct NSRect {
    NSPoint origin;
    NSSize size;

    NSRect() = default;
    constexpr NSRect(NSPoint o, NSSize s) : origin(o), size(s) {}
    constexpr NSRect(double x, double y, double width, double height) : origin{x, y}, size{width, height} {}
    bool operator==(const NSRect &) const = default;

    [[nodiscard]] double minX() const { return origin.x; }
    [[nodiscard]] double minY() const { return origin.y; }
    [[nodiscard]] double maxX() const { return origin.x + size.width; }
    [[nodiscard]] double maxY() const { return origin.y + size.height; }
    [[nodiscard]] bool isEmpty() const { return size.width <= 0 || size.height <= 0; }
    // The left and top edges belong to a rectangle, the right and bottom ones do not.
    [[nodiscard]] bool contains(NSPoint p) const { return p.x >= minX() && p.x < maxX() && p.y >= minY() && p.y < maxY(); }
    [[nodiscard]] bool intersects(const NSRect &other) const {
        return minX() < other.maxX() && other.minX() < maxX() && minY() < other.maxY() && other.minY() < maxY();
    }
    [[nodiscard]] NSRect intersection(const NSRect &other) const {
        const double x = std::max(minX(), other.minX()), y = std::max(minY(), other.minY());
        const double right = std::min(maxX(), other.maxX()), bottom = std::min(maxY(), other.maxY());
        return right > x && bottom > y ? NSRect(x, y, right - x, bottom - y) : NSRect();
    }
    [[nodiscard]] NSRect offsetBy(double dx, double dy) const { return {origin.x + dx, origin.y + dy, size.width, size.height}; }
    [[nodiscard]] NSRect insetBy(double dx, double dy) const {
        return {origin.x + dx, origin.y + dy, size.width - 2 * dx, size.height - 2 * dy};
    }
};
