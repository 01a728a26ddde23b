#include "toolkit/views/NSLayoutConstraint.h"

#include <cstdio>

#include "toolkit/services/NSLog.h"
#include "toolkit/views/ClassKeys.h"
#include "toolkit/views/NSView.h"

HN_CLASS_TABLE(NSLayoutConstraint, NSObjectTable,
               .key("constant", keys::get(&NSLayoutConstraint::constant), keys::set(&NSLayoutConstraint::setConstant)))

std::shared_ptr<NSLayoutConstraint> NSLayoutConstraint::constraintWithItem_attribute_relatedBy_toItem_attribute_multiplier_constant(
    const std::shared_ptr<NSView> &first, NSLayoutAttribute firstAttribute, NSLayoutRelation, const std::shared_ptr<NSView> &second,
    NSLayoutAttribute secondAttribute, double multiplier, double constant) {
    return tie(first, firstAttribute, second, secondAttribute, constant, multiplier);
}

std::shared_ptr<NSLayoutConstraint> NSLayoutConstraint::tie(const std::shared_ptr<NSView> &first, NSLayoutAttribute firstAttribute,
                                                            const std::shared_ptr<NSView> &second, NSLayoutAttribute secondAttribute,
                                                            double constant, double multiplier) {
    const auto constraint = make<NSLayoutConstraint>();
    constraint->first_ = first;
    constraint->firstAttribute_ = firstAttribute;
    constraint->second_ = second;
    constraint->hasSecond_ = second != nullptr;
    constraint->secondAttribute_ = secondAttribute;
    constraint->constant_ = constant;
    constraint->multiplier_ = multiplier;
    return constraint;
}

void NSLayoutConstraint::activateConstraints(const std::vector<std::shared_ptr<NSLayoutConstraint>> &constraints) {
    for (const auto &constraint : constraints)
        constraint->setActive(true);
}

void NSLayoutConstraint::deactivateConstraints(const std::vector<std::shared_ptr<NSLayoutConstraint>> &constraints) {
    for (const auto &constraint : constraints)
        constraint->setActive(false);
}

namespace {
// The views that place the constraint's items anew.
void layOutItems(const std::shared_ptr<NSView> &first, const std::shared_ptr<NSView> &second) {
    const auto above = first ? first->superview() : nullptr, beside = second ? second->superview() : nullptr;
    if (above)
        above->layout();
    if (beside && beside != above)
        beside->layout();
}
}  // namespace

void NSLayoutConstraint::setConstant(double constant) {
    assertMain("NSLayoutConstraint setConstant:");
    if (std::exchange(constant_, constant) != constant && isActive())
        layOutItems(firstItem(), secondItem());
}

void NSLayoutConstraint::setPriority(double priority) {
    assertMain("NSLayoutConstraint setPriority:");
    if (std::exchange(priority_, priority) != priority && isActive())
        layOutItems(firstItem(), secondItem());
}

void NSLayoutConstraint::setActive(bool active) {
    if (active == isActive())
        return;
    const auto self = selfOf(this);
    if (!active) {
        owner_.lock()->removeConstraint(self);
        return;
    }
    const auto first = firstItem(), second = secondItem();
    const auto owner = !first ? nullptr : second ? first->ancestorSharedWithView(second) : first;
    if (owner)
        owner->addConstraint(self);
    else
        NSLog("Layout: the views have no common ancestor: %@", description());
}

bool NSLayoutConstraint::names(const NSView &view) const { return firstItem().get() == &view || secondItem().get() == &view; }

NSString NSLayoutConstraint::description() const {
    static constexpr const char *kNames[] = {"", "left", "right", "top", "bottom", "leading", "trailing", "width", "height", "centerX", "centerY"};
    const auto item = [](const std::shared_ptr<NSView> &view, NSLayoutAttribute attribute) {
        const std::string name = !view ? "gone" : view->identifier().isEmpty() ? view->className().str() : view->identifier().str();
        return name + "." + kNames[static_cast<int>(attribute)];
    };
    char numbers[64];
    std::string text = item(firstItem(), firstAttribute_) + " =";
    if (hasSecond_) {
        std::snprintf(numbers, sizeof numbers, " * %g", multiplier_);
        text += " " + item(secondItem(), secondAttribute_) + (multiplier_ == 1 ? "" : numbers) + " +";
    }
    std::snprintf(numbers, sizeof numbers, " %g", constant_);
    return NSString(text + numbers);
}
