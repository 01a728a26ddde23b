// Owns a window that its nib makes when somebody first asks for it. Threads: main.
#pragma once

#include "toolkit/views/NibRegistry.h"

class NSWindowController : public NSResponder {
public:
    // Without a nib name the class's own name is taken.
    using NSObject::init;
    void init(NSString nibName) { initWithWindowNibName(std::move(nibName)); }
    void initWithWindowNibName(NSString nibName) { nibName_ = std::move(nibName); }
    void initWithWindow(const std::shared_ptr<NSWindow> &window) { setWindow(window); }
    void dealloc() override;

    [[nodiscard]] NSString windowNibName() const { return nibName_; }
    // Runs the nib once: builder, awakeFromNib, windowDidLoad. A controller that was given a window has no nib to run. Where it
    // conforms to NSWindowDelegate and the nib set no delegate, nothing is set: nibs connect the delegate.
    [[nodiscard]] std::shared_ptr<NSWindow> window();
    [[nodiscard]] bool isWindowLoaded() const { return isLoaded_; }
    void setWindow(const std::shared_ptr<NSWindow> &window);
    virtual void windowWillLoad() {}
    virtual void windowDidLoad() {}
    // Front and key.
    virtual void showWindow(const id &sender = nullptr);
    virtual void close();
    HN_DECLARE_CLASS_TABLE

private:
    void loadWindow();
    NSString nibName_;
    std::shared_ptr<NSWindow> window_;
    std::vector<id> topLevelObjects_;
    bool isLoaded_ = false;
};
