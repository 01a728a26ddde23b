#include "toolkit/views/LayoutEngine.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "toolkit/services/NSLog.h"
#include "toolkit/views/NSView.h"

namespace {

enum class Axis { horizontal, vertical };

Axis axisOf(NSLayoutAttribute attribute) {
    switch (attribute) {
    case NSLayoutAttribute::top:
    case NSLayoutAttribute::bottom:
    case NSLayoutAttribute::height:
    case NSLayoutAttribute::centerY:
        return Axis::vertical;
    default:
        return Axis::horizontal;
    }
}

// start * s + size * z + constant
struct Form {
    double start, size, constant;
};

Form formOf(NSLayoutAttribute attribute, double extent, bool mirrored) {
    switch (attribute) {
    case NSLayoutAttribute::width:
    case NSLayoutAttribute::height:
        return {0, 1, 0};
    case NSLayoutAttribute::right:
    case NSLayoutAttribute::bottom:
        return {1, 1, 0};
    case NSLayoutAttribute::centerX:
    case NSLayoutAttribute::centerY:
        return {1, 0.5, 0};
    case NSLayoutAttribute::leading:   // mirrored edges are distances from the right side
        return mirrored ? Form{-1, -1, extent} : Form{1, 0, 0};
    case NSLayoutAttribute::trailing:
        return mirrored ? Form{-1, 0, extent} : Form{1, 1, 0};
    default:
        return {1, 0, 0};
    }
}

struct Span {
    double start, size;
};

// Equations in reduced row form; each row owns one unknown.
class Equations {
public:
    enum class Outcome { taken, redundant, contradicts };
    explicit Equations(std::size_t unknowns) : unknowns_(unknowns) {}

    Outcome add(std::vector<double> row) {   // the last element is the right side
        for (const Row &held : rows_)
            subtract(row, held, row[held.pivot]);
        const auto end = row.begin() + static_cast<std::ptrdiff_t>(unknowns_);
        const auto largest = std::max_element(row.begin(), end, [](double a, double b) { return std::abs(a) < std::abs(b); });
        if (largest == end || std::abs(*largest) < kTiny)
            return std::abs(row.back()) < kSlack ? Outcome::redundant : Outcome::contradicts;
        Row fresh{std::move(row), 0};
        fresh.pivot = static_cast<std::size_t>(largest - fresh.values.begin());
        const double scale = fresh.values[fresh.pivot];
        for (double &value : fresh.values)
            value /= scale;
        for (Row &held : rows_)
            subtract(held.values, fresh, held.values[fresh.pivot]);
        rows_.push_back(std::move(fresh));
        return Outcome::taken;
    }

    // Every unknown is owned by a row by the time this is asked.
    [[nodiscard]] std::vector<double> solution() const {
        std::vector<double> values(unknowns_);
        for (const Row &row : rows_)
            values[row.pivot] = row.values.back();
        return values;
    }

private:
    static constexpr double kTiny = 1e-9, kSlack = 1e-4;
    struct Row {
        std::vector<double> values;
        std::size_t pivot;
    };
    static void subtract(std::vector<double> &row, const Row &other, double times) {
        if (times == 0)
            return;
        for (std::size_t i = 0; i < row.size(); ++i)
            row[i] -= times * other.values[i];
        row[other.pivot] = 0;
    }
    std::size_t unknowns_;
    std::vector<Row> rows_;
};

}  // namespace

// One parent, both axes.
class LayoutProblem {
public:
    explicit LayoutProblem(NSView &parent)
        : parent_(parent), mirrored_(NSView::userInterfaceLayoutDirection() == NSUserInterfaceLayoutDirection::rightToLeft) {
        for (const auto &child : parent.subviews())
            if (!child->translatesAutoresizingMaskIntoConstraints()) {
                index_[child.get()] = children_.size();
                children_.push_back(child);
            }
    }

    [[nodiscard]] bool isEmpty() const { return children_.empty(); }

    void collect(const std::vector<std::shared_ptr<NSLayoutConstraint>> &constraints) {
        for (const auto &constraint : constraints)
            if (isUnknown(constraint->firstItem().get()) || isUnknown(constraint->secondItem().get()))
                constraints_.push_back(constraint);
    }

    void collectAll() {
        collect(parent_.constraints());
        for (auto above = parent_.superview(); above; above = above->superview())
            collect(above->constraints());
        // A child's own size alone: how its subviews stand in it follows from its place, never the other way round.
        for (const auto &child : children_)
            for (const auto &constraint : child->constraints())
                if (constraint->firstItem() == child && (!constraint->hasSecond_ || constraint->secondItem() == child))
                    constraints_.push_back(constraint);
        std::ranges::stable_sort(constraints_, [](const auto &a, const auto &b) { return a->priority() > b->priority(); });
    }

    // The spans of the children; `ambiguous` becomes true where a place came from the old frame.
    std::vector<Span> solve(Axis axis, bool &ambiguous) {
        const std::size_t unknowns = 2 * children_.size();
        Equations equations(unknowns);
        for (const auto &constraint : constraints_)
            if (axisOf(constraint->firstAttribute()) == axis)
                addConstraint(equations, *constraint, axis, unknowns);
        for (std::size_t i = 0; i < children_.size(); ++i) {
            const NSSize natural = children_[i]->intrinsicContentSize();
            const double size = axis == Axis::horizontal ? natural.width : natural.height;
            if (size >= 0)
                fix(equations, 2 * i + 1, size, unknowns);
        }
        for (const std::size_t part : {1u, 0u})
            for (std::size_t i = 0; i < children_.size(); ++i) {
                const Span now = spanOf(*children_[i], axis);
                if (fix(equations, 2 * i + part, part ? now.size : now.start, unknowns) == Equations::Outcome::taken)
                    ambiguous = true;
            }
        const std::vector<double> values = equations.solution();
        std::vector<Span> spans;
        for (std::size_t i = 0; i < children_.size(); ++i)
            spans.push_back({values[2 * i], std::max(0.0, values[2 * i + 1])});
        return spans;
    }

    void place(Axis axis, const std::vector<Span> &spans) {
        const NSRect bounds = parent_.bounds();
        for (std::size_t i = 0; i < children_.size(); ++i) {
            NSRect frame = children_[i]->frame();
            const Span span = spans[i];
            if (axis == Axis::horizontal) {
                frame.origin.x = bounds.minX() + span.start;
                frame.size.width = span.size;
            } else {
                frame.origin.y = parent_.isFlipped() ? bounds.minY() + span.start : bounds.maxY() - span.start - span.size;
                frame.size.height = span.size;
            }
            children_[i]->setFrame(frame);
        }
    }

private:
    [[nodiscard]] bool isUnknown(const NSView *view) const { return index_.contains(view); }
    [[nodiscard]] double extent(Axis axis) const {
        return axis == Axis::horizontal ? parent_.frame().size.width : parent_.frame().size.height;
    }

    [[nodiscard]] Span spanOf(NSView &view, Axis axis) const {
        if (&view == &parent_)
            return {0, extent(axis)};
        NSRect place = view.placeInSuperview();
        if (view.superview().get() != &parent_)
            place = parent_.convertRect_fromView(view.bounds(), std::static_pointer_cast<NSView>(view.shared_from_this()));
        const NSRect bounds = parent_.bounds();
        if (axis == Axis::horizontal)
            return {place.minX() - bounds.minX(), place.size.width};
        return {parent_.isFlipped() ? place.minY() - bounds.minY() : bounds.maxY() - place.maxY(), place.size.height};
    }

    // Adds `times` times the attribute to the row's left side.
    void addItem(std::vector<double> &row, NSView &view, NSLayoutAttribute attribute, Axis axis, double times) const {
        const Form form = formOf(attribute, extent(axisOf(attribute)), mirrored_);
        row.back() -= times * form.constant;
        const auto found = index_.find(&view);
        if (found != index_.end() && axisOf(attribute) == axis) {
            row[2 * found->second] += times * form.start;
            row[2 * found->second + 1] += times * form.size;
            return;
        }
        const Span known = spanOf(view, axisOf(attribute));
        row.back() -= times * (form.start * known.start + form.size * known.size);
    }

    void addConstraint(Equations &equations, NSLayoutConstraint &constraint, Axis axis, std::size_t unknowns) const {
        const auto first = constraint.firstItem(), second = constraint.secondItem();
        if (!first || (constraint.hasSecond_ && !second))
            return;
        std::vector<double> row(unknowns + 1);
        row.back() = constraint.constant();
        addItem(row, *first, constraint.firstAttribute(), axis, 1);
        if (second && constraint.secondAttribute() != NSLayoutAttribute::notAnAttribute)
            addItem(row, *second, constraint.secondAttribute(), axis, -constraint.multiplier());
        if (!std::ranges::all_of(row, [](double value) { return std::isfinite(value); }))
            return;
        const bool contradicts = equations.add(std::move(row)) == Equations::Outcome::contradicts;
        if (contradicts && constraint.priority() >= NSLayoutConstraint::kRequired && !std::exchange(constraint.isLoggedUnmet_, true))
            NSLog("Layout: cannot be met together with the constraints before it: %@", constraint.description());
    }

    static Equations::Outcome fix(Equations &equations, std::size_t unknown, double value, std::size_t unknowns) {
        std::vector<double> row(unknowns + 1);
        row[unknown] = 1;
        row.back() = value;
        return equations.add(std::move(row));
    }

    NSView &parent_;
    bool mirrored_;
    NSView::List children_;
    std::unordered_map<const NSView *, std::size_t> index_;
    std::vector<std::shared_ptr<NSLayoutConstraint>> constraints_;
    friend class LayoutEngine;
};

void LayoutEngine::solve(NSView &parent) {
    LayoutProblem problem(parent);
    if (problem.isEmpty())
        return;
    problem.collectAll();
    bool ambiguous = false;
    problem.place(Axis::horizontal, problem.solve(Axis::horizontal, ambiguous));
    problem.place(Axis::vertical, problem.solve(Axis::vertical, ambiguous));
}

bool LayoutEngine::isAmbiguous(NSView &parent) {
    LayoutProblem problem(parent);
    problem.collectAll();
    bool ambiguous = false;
    (void)problem.solve(Axis::horizontal, ambiguous);
    (void)problem.solve(Axis::vertical, ambiguous);
    return ambiguous;
}
