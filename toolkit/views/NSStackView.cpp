#include "toolkit/views/NSStackView.h"

#include <algorithm>
#include <numeric>

#include "toolkit/views/ClassKeys.h"

HN_CLASS_TABLE(NSStackView, NSView, .key("spacing", keys::get(&NSStackView::spacing), keys::set(&NSStackView::setSpacing)))

std::shared_ptr<NSStackView> NSStackView::stackViewWithViews(const List &views, NSUserInterfaceLayoutOrientation orientation) {
    const auto stack = make<NSStackView>();
    stack->orientation_ = orientation;
    for (const auto &view : views)
        stack->addArrangedSubview(view);
    return stack;
}

void NSStackView::insertArrangedSubview_atIndex(const std::shared_ptr<NSView> &view, std::size_t index) {
    assertMain("NSStackView insertArrangedSubview:atIndex:");
    if (!view || isDescendantOf(*view))
        return;
    std::erase(arranged_, view);
    sizeWhenArranged_.try_emplace(view.get(), view->frame().size);
    if (view->superview().get() != this)
        addSubview(view);
    arranged_.insert(arranged_.begin() + static_cast<std::ptrdiff_t>(std::min(index, arranged_.size())), view);
    changed();
}

void NSStackView::removeArrangedSubview(const std::shared_ptr<NSView> &view) {
    std::erase(arranged_, view);
    sizeWhenArranged_.erase(view.get());
    changed();
}

void NSStackView::willRemoveSubview(NSView &view) {
    sizeWhenArranged_.erase(&view);
    if (std::erase_if(arranged_, [&](const auto &held) { return held.get() == &view; }))
        changed();
}

void NSStackView::setOrientation(NSUserInterfaceLayoutOrientation orientation) {
    orientation_ = orientation;
    changed();
}
void NSStackView::setSpacing(double spacing) {
    spacing_ = spacing;
    changed();
}
void NSStackView::setEdgeInsets(const NSEdgeInsets &insets) {
    insets_ = insets;
    changed();
}
void NSStackView::setAlignment(NSStackAlignment alignment) {
    alignment_ = alignment;
    changed();
}
void NSStackView::setFillsWithLast(bool fills) {
    fillsWithLast_ = fills;
    changed();
}

void NSStackView::changed() {
    assertMain("NSStackView");
    invalidateIntrinsicContentSize();
    layout();
}

void NSStackView::subviewDidChangeIntrinsicSize(NSView &) {
    if (!isArranging_)
        changed();
}

NSView::List NSStackView::shown() const {
    List views;
    std::ranges::copy_if(arranged_, std::back_inserter(views), [](const auto &view) { return !view->isHidden(); });
    return views;
}

NSSize NSStackView::naturalSizeOf(const NSView &view) const {
    NSSize size = view.intrinsicContentSize();
    const auto found = sizeWhenArranged_.find(&view);
    const NSSize before = found == sizeWhenArranged_.end() ? view.frame().size : found->second;
    size = {size.width >= 0 ? size.width : before.width, size.height >= 0 ? size.height : before.height};
    for (const auto &constraint : view.constraints()) {
        if (constraint->firstItem().get() != &view || constraint->secondAttribute() != NSLayoutAttribute::notAnAttribute)
            continue;
        if (constraint->firstAttribute() == NSLayoutAttribute::width)
            size.width = constraint->constant();
        else if (constraint->firstAttribute() == NSLayoutAttribute::height)
            size.height = constraint->constant();
    }
    return size;
}

NSSize NSStackView::intrinsicContentSize() const {
    double along = 0, across = 0;
    const List views = shown();
    for (const auto &view : views) {
        const NSSize size = naturalSizeOf(*view);
        along += isRow() ? size.width : size.height;
        across = std::max(across, isRow() ? size.height : size.width);
    }
    along += views.empty() ? 0 : spacing_ * static_cast<double>(views.size() - 1);
    const NSSize inside = isRow() ? NSSize{along, across} : NSSize{across, along};
    return {inside.width + insets_.left + insets_.right, inside.height + insets_.top + insets_.bottom};
}

void NSStackView::layout() {
    NSView::layout();
    if (std::exchange(isArranging_, true))
        return;
    arrange();
    isArranging_ = false;
}

namespace {

// Spreads `left` (taken away where negative) over the lengths: the elastic ones first, then from the end.
void spread(std::vector<double> &lengths, const std::vector<bool> &isElastic, double left, bool fillsWithLast) {
    const auto elastic = static_cast<double>(std::ranges::count(isElastic, true));
    if (left > 0 && elastic == 0) {
        if (fillsWithLast && !lengths.empty())
            lengths.back() += left;
        return;
    }
    if (left > 0) {
        for (std::size_t i = 0; i < lengths.size(); ++i)
            lengths[i] += isElastic[i] ? left / elastic : 0;
        return;
    }
    for (const bool pass : {true, false})
        for (std::size_t i = lengths.size(); i-- > 0 && left < 0;)
            if (isElastic[i] == pass) {
                const double taken = std::min(lengths[i], -left);
                lengths[i] -= taken;
                left += taken;
            }
}

}  // namespace

void NSStackView::arrange() {
    const List views = shown();
    const NSRect area = bounds();
    const NSRect inside(area.minX() + insets_.left, area.minY() + (isFlipped() ? insets_.top : insets_.bottom),
                        std::max(0.0, area.size.width - insets_.left - insets_.right),
                        std::max(0.0, area.size.height - insets_.top - insets_.bottom));
    const double room = isRow() ? inside.size.width : inside.size.height, depth = isRow() ? inside.size.height : inside.size.width;
    std::vector<double> lengths;
    std::vector<bool> isElastic;
    for (const auto &view : views) {
        const NSSize size = naturalSizeOf(*view);
        lengths.push_back(isRow() ? size.width : size.height);
        isElastic.push_back(view->contentHuggingPriority() < 250);
    }
    const double gaps = views.empty() ? 0 : spacing_ * static_cast<double>(views.size() - 1);
    spread(lengths, isElastic, room - gaps - std::accumulate(lengths.begin(), lengths.end(), 0.0), fillsWithLast_);

    const bool mirrored = userInterfaceLayoutDirection() == NSUserInterfaceLayoutDirection::rightToLeft;
    double at = 0;
    for (std::size_t i = 0; i < views.size(); ++i) {
        const NSSize natural = naturalSizeOf(*views[i]);
        const double own = isRow() ? natural.height : natural.width;
        const double breadth = alignment_ == NSStackAlignment::fill ? depth : std::min(own, depth);
        double side = alignment_ == NSStackAlignment::center ? (depth - breadth) / 2
                      : alignment_ == NSStackAlignment::trailing ? depth - breadth : 0;
        if (isRow()) {   // leading across a row is the top
            const double x = mirrored ? inside.maxX() - at - lengths[i] : inside.minX() + at;
            views[i]->setFrame({x, isFlipped() ? inside.minY() + side : inside.maxY() - side - breadth, lengths[i], breadth});
        } else {
            side = mirrored ? depth - breadth - side : side;
            const double y = isFlipped() ? inside.minY() + at : inside.maxY() - at - lengths[i];
            views[i]->setFrame({inside.minX() + side, y, breadth, lengths[i]});
        }
        at += lengths[i] + spacing_;
    }
}
