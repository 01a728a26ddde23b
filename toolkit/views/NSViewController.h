// Owns a view that its nib makes when somebody first asks for it.
//
// Order     view(): loadView (nib builder, awakeFromNib), then viewDidLoad where the toolkit's version is 1343 or later.
// Owners    the controller owns the view and the nib's top-level objects. Threads: main.
#pragma once

#include "toolkit/services/NSBundle.h"
#include "toolkit/views/NibRegistry.h"

class NSViewController : public NSResponder {
public:
    // The first version of the toolkit that delivers viewDidLoad.
    static constexpr double kFirstVersionWithViewDidLoad = 1343;

    using NSObject::init;
    void init(NSString nibName, std::shared_ptr<NSBundle> bundle = nullptr) { initWithNibName_bundle(std::move(nibName), std::move(bundle)); }
    virtual void initWithNibName_bundle(NSString nibName, std::shared_ptr<NSBundle> bundle);
    void dealloc() override;

    [[nodiscard]] const NSString &nibName() const { return nibName_; }
    [[nodiscard]] const std::shared_ptr<NSBundle> &nibBundle() const { return bundle_; }
    [[nodiscard]] const NSString &title() const { return title_; }
    void setTitle(NSString title) { title_ = std::move(title); }
    [[nodiscard]] Value representedObject() const { return representedObject_; }
    void setRepresentedObject(Value object) { representedObject_ = std::move(object); }

    [[nodiscard]] const std::shared_ptr<NSView> &view();
    [[nodiscard]] bool isViewLoaded() const { return view_ != nullptr; }
    void setView(const std::shared_ptr<NSView> &view);
    // Without a nib name the class's own name is taken.
    virtual void loadView();
    virtual void viewDidLoad() {}
    HN_DECLARE_CLASS_TABLE

protected:
    [[nodiscard]] std::shared_ptr<NSResponder> defaultNextResponder() const override;

private:
    NSString nibName_, title_;
    std::shared_ptr<NSBundle> bundle_;
    Value representedObject_;
    std::shared_ptr<NSView> view_;
    std::vector<id> topLevelObjects_;
    bool isLoading_ = false;
};
