// Several views, one of them shown. Threads: main.
#pragma once

#include <vector>

#include "toolkit/views/NSView.h"

class NSTabView;

class NSTabViewDelegate {
public:
    virtual ~NSTabViewDelegate() = default;
    virtual bool tabView_shouldSelectTab(NSTabView &, std::int64_t /*index*/) { return true; }
    virtual void tabView_didSelectTab(NSTabView &, std::int64_t /*index*/) {}
};

class NSTabView : public NSView {
public:
    struct Tab {
        NSString identifier, label;
        std::shared_ptr<NSView> view;
    };
    [[nodiscard]] const std::vector<Tab> &tabs() const { return tabs_; }
    // The first one is selected at once, without asking the delegate.
    void addTab(NSString identifier, NSString label, const std::shared_ptr<NSView> &view);
    // -1 without tabs.
    [[nodiscard]] std::int64_t indexOfSelectedTab() const { return selected_; }
    // False out of range or where the delegate refuses.
    bool selectTabAtIndex(std::int64_t index);
    bool selectTabWithIdentifier(const NSString &identifier);
    template <class T> void setDelegate(const std::shared_ptr<T> &delegate) { delegate_ = std::shared_ptr<NSTabViewDelegate>(delegate); }
    [[nodiscard]] std::string describeContent() const override;
    HN_DECLARE_CLASS_TABLE

private:
    void show(std::int64_t index);
    std::vector<Tab> tabs_;
    std::weak_ptr<NSTabViewDelegate> delegate_;
    std::int64_t selected_ = -1;
};
