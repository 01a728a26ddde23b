// The native widgets that lie on a surface where a view takes native input, found by the nearest base class of the view.
//
// Life     a surface makes a part when it meets the view, places it anew after each change, and drops it when the view has
//          gone, is hidden or no longer wants one. Threads: main.
#pragma once

#include <QRectF>

#include <memory>
#include <string_view>

#include "toolkit/views/NSView.h"

class QWidget;

namespace host {

class ViewSurface;

class NativePart {
public:
    virtual ~NativePart() = default;
    // `rect` is the view's place on the surface, `visible` what no ancestor cuts off of it.
    virtual void place(const QRectF &rect, const QRectF &visible) = 0;
    // A key of the view or of a view that belongs to it changed.
    virtual void viewChanged(std::string_view /*key*/) {}
    // The widget that gets the keyboard while the view has the focus; null for none.
    [[nodiscard]] virtual QWidget *focusWidget() { return nullptr; }
    // A click of the person on the view, before the part stood there: puts the caret where it hit.
    virtual void clickedAt(const QPointF & /*surfacePoint*/) {}
};

struct NativeKind {
    const ClassTable &base;
    // A text field has its editor only while it has the focus.
    bool (*isWanted)(NSView &view);
    std::unique_ptr<NativePart> (*make)(ViewSurface &surface, const std::shared_ptr<NSView> &view);
};

// Null for a view that is only painted.
[[nodiscard]] const NativeKind *nativeKindOf(NSView &view);

// Gives the widget its place, and cuts off what an ancestor hides.
void placeWidget(QWidget &widget, const QRectF &rect, const QRectF &visible);

}  // namespace host
