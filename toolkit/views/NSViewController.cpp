#include "toolkit/views/NSViewController.h"

#include <cmath>

#include "toolkit/views/ClassKeys.h"
#include "toolkit/views/NSApplication.h"

HN_CLASS_TABLE(NSViewController, NSResponder, .key("nibName", &NSViewController::nibName)
                   .key("title", keys::get(&NSViewController::title), keys::set(&NSViewController::setTitle))
                   .key("representedObject", keys::get(&NSViewController::representedObject), keys::set(&NSViewController::setRepresentedObject))
                   .key("view", [](NSObject &o) { return Value(static_cast<NSViewController &>(o).view()); }))

void NSViewController::initWithNibName_bundle(NSString nibName, std::shared_ptr<NSBundle> bundle) {
    nibName_ = std::move(nibName);
    bundle_ = std::move(bundle);
}

void NSViewController::dealloc() {
    if (view_)
        view_->controller_.reset();
    topLevelObjects_.clear();
    view_ = nullptr;
    NSResponder::dealloc();
}

std::shared_ptr<NSResponder> NSViewController::defaultNextResponder() const {
    if (!view_)
        return nullptr;
    if (const auto above = view_->superview())
        return above;
    return std::static_pointer_cast<NSResponder>(view_->window());
}

const std::shared_ptr<NSView> &NSViewController::view() {
    if (view_ || isLoading_)
        return view_;
    assertMain("NSViewController view");
    const auto self = selfOf(this);
    isLoading_ = true;
    loadView();
    isLoading_ = false;
    if (std::floor(NSAppKitVersionNumber()) >= kFirstVersionWithViewDidLoad)
        viewDidLoad();
    return view_;
}

void NSViewController::setView(const std::shared_ptr<NSView> &view) {
    assertMain("NSViewController setView:");
    if (view_)
        view_->controller_.reset();
    view_ = view;
    if (view_)
        view_->controller_ = std::static_pointer_cast<NSResponder>(shared_from_this());
}

void NSViewController::loadView() {
    const auto self = selfOf(this);
    Nib nib(nibName_.isEmpty() ? className() : nibName_, self);
    const bool isKnown = NibRegistry::build(nib);
    topLevelObjects_ = nib.objects();
    setView(isKnown && nib.view() ? nib.view() : NibRegistry::missingView(nib.name()));
    NibRegistry::awaken(nib, self);
}
