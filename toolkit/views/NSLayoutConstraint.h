// first.attribute = second.attribute * multiplier + constant, between views of one tree.
//
// Units    points; positive constants lead right and down, or away from the leading edge for leading and trailing.
// Mirrored leading is the left edge, the right one where the application runs from right to left.
// Solving  see NSView::layout: higher priorities first, then the natural size, then the frame as it stands. What cannot
//          be met together with what stands before it is left out, logged once per constraint when it was required.
// Threads  main. Views are held weakly; the view that a constraint is installed on holds the constraint.
#pragma once

#include <memory>
#include <vector>

#include "toolkit/NSObject.h"

class NSView;

enum class NSLayoutAttribute { notAnAttribute, left, right, top, bottom, leading, trailing, width, height, centerX, centerY };
enum class NSLayoutRelation { equal };

class NSLayoutConstraint : public NSObject {
public:
    static constexpr double kRequired = 1000;

    // `second` is null with notAnAttribute where the attribute is a constant. The constraint is not yet active.
    [[nodiscard]] static std::shared_ptr<NSLayoutConstraint> constraintWithItem_attribute_relatedBy_toItem_attribute_multiplier_constant(
        const std::shared_ptr<NSView> &first, NSLayoutAttribute firstAttribute, NSLayoutRelation relation,
        const std::shared_ptr<NSView> &second, NSLayoutAttribute secondAttribute, double multiplier, double constant);
    // The same in short.
    [[nodiscard]] static std::shared_ptr<NSLayoutConstraint> tie(const std::shared_ptr<NSView> &first, NSLayoutAttribute firstAttribute,
                                                                 const std::shared_ptr<NSView> &second,
                                                                 NSLayoutAttribute secondAttribute, double constant = 0,
                                                                 double multiplier = 1);
    static void activateConstraints(const std::vector<std::shared_ptr<NSLayoutConstraint>> &constraints);
    static void deactivateConstraints(const std::vector<std::shared_ptr<NSLayoutConstraint>> &constraints);

    [[nodiscard]] std::shared_ptr<NSView> firstItem() const { return first_.lock(); }
    [[nodiscard]] std::shared_ptr<NSView> secondItem() const { return second_.lock(); }
    [[nodiscard]] NSLayoutAttribute firstAttribute() const { return firstAttribute_; }
    [[nodiscard]] NSLayoutAttribute secondAttribute() const { return secondAttribute_; }
    [[nodiscard]] double multiplier() const { return multiplier_; }
    [[nodiscard]] double constant() const { return constant_; }
    [[nodiscard]] double priority() const { return priority_; }
    // Active while it stands in some view's constraints.
    [[nodiscard]] bool isActive() const { return !owner_.expired(); }

    // Both lay out anew at once where the constraint is active.
    void setConstant(double constant);
    void setPriority(double priority);
    // Installs it on the nearest common ancestor of its views, or takes it away from wherever it stands. Views without a
    // common ancestor leave it inactive, logged.
    void setActive(bool active);

    [[nodiscard]] bool names(const NSView &view) const;
    [[nodiscard]] NSString description() const override;
    HN_DECLARE_CLASS_TABLE

private:
    friend class NSView;
    friend class LayoutProblem;
    std::weak_ptr<NSView> first_, second_, owner_;
    // A constraint whose view has gone says nothing any more; one without a second view from the start is a constant.
    bool hasSecond_ = false;
    NSLayoutAttribute firstAttribute_ = NSLayoutAttribute::notAnAttribute, secondAttribute_ = NSLayoutAttribute::notAnAttribute;
    double multiplier_ = 1, constant_ = 0, priority_ = kRequired;
    bool isLoggedUnmet_ = false;
};
