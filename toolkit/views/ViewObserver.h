// How a host learns of changes in the view tree, so that its mirror never polls.
//
// Observers are told on the main thread, after the change, from a copy of their list; a call may come from inside a
// view's own mutator. They are told of all views and windows and pick theirs.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "toolkit/NSGeometry.h"

class NSView;
class NSWindow;

class ViewObserver {
public:
    virtual ~ViewObserver() = default;
    virtual void frameChanged(NSView &) {}
    // Order or membership of the direct subviews.
    virtual void subviewsChanged(NSView &) {}
    // `rect` in the view's bounds.
    virtual void needsDisplay(NSView &, const NSRect & /*rect*/) {}
    // A key of the view's class table, such as "hidden", "stringValue", "enabled", "title".
    virtual void propertyChanged(NSView &, std::string_view /*key*/) {}
    // "title", "frame", "visible", "contentView", "firstResponder".
    virtual void windowChanged(NSWindow &, std::string_view /*key*/) {}

    // Held weakly.
    static void add(const std::shared_ptr<ViewObserver> &observer);
    static void remove(const std::shared_ptr<ViewObserver> &observer);
    // True while somebody listens.
    [[nodiscard]] static bool any();
    template <class Call> static void tellAll(Call &&call) {
        if (!any())
            return;
        for (const auto &observer : all())
            call(*observer);
    }

private:
    [[nodiscard]] static std::vector<std::shared_ptr<ViewObserver>> all();
};
