#include "toolkit/views/NSTabView.h"

#include <algorithm>

#include "toolkit/views/ClassKeys.h"

HN_CLASS_TABLE(NSTabView, NSView, .key("indexOfSelectedTab", &NSTabView::indexOfSelectedTab))

void NSTabView::addTab(NSString identifier, NSString label, const std::shared_ptr<NSView> &view) {
    assertMain("NSTabView addTab");
    tabs_.push_back({std::move(identifier), std::move(label), view});
    noteChanged("tabs");
    if (selected_ < 0)
        show(0);
}

void NSTabView::show(std::int64_t index) {
    if (selected_ >= 0)
        tabs_[static_cast<std::size_t>(selected_)].view->removeFromSuperview();
    selected_ = index;
    const auto &view = tabs_[static_cast<std::size_t>(index)].view;
    addSubview(view);
    pinEdgesOf(view);
    noteChanged("indexOfSelectedTab");
}

bool NSTabView::selectTabAtIndex(std::int64_t index) {
    if (index < 0 || index >= static_cast<std::int64_t>(tabs_.size()))
        return false;
    if (index == selected_)
        return true;
    const auto self = selfOf(this);
    const auto delegate = delegate_.lock();
    if (delegate && !delegate->tabView_shouldSelectTab(*this, index))
        return false;
    show(index);
    if (delegate)
        delegate->tabView_didSelectTab(*this, index);
    return true;
}

bool NSTabView::selectTabWithIdentifier(const NSString &identifier) {
    const auto found = std::ranges::find_if(tabs_, [&](const Tab &tab) { return tab.identifier == identifier; });
    return found != tabs_.end() && selectTabAtIndex(found - tabs_.begin());
}

std::string NSTabView::describeContent() const {
    return selected_ < 0 ? "no tabs" : "\"" + tabs_[static_cast<std::size_t>(selected_)].label.str() + "\" of " + std::to_string(tabs_.size());
}
