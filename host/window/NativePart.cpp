#include "host/window/NativePart.h"

#include <QRegion>
#include <QWidget>

#include "host/window/FieldPart.h"
#include "host/window/ScrollPart.h"
#include "toolkit/views/NSScrollView.h"
#include "toolkit/views/NSTextField.h"
#include "toolkit/views/NSTextView.h"

namespace host {

const NativeKind *nativeKindOf(NSView &view) {
    static const NativeKind kinds[] = {
        {NSScrollView::sharedTable(), [](NSView &) { return true; }, ScrollPart::make},
        {NSTextField::sharedTable(), FieldPart::isWanted, FieldPart::make},
        {NSTextView::sharedTable(), TextPart::isWanted, TextPart::make},
    };
    for (const ClassTable *table = &view.classTable(); table; table = table->base())
        for (const NativeKind &kind : kinds)
            if (&kind.base == table)
                return &kind;
    return nullptr;
}

void placeWidget(QWidget &widget, const QRectF &rect, const QRectF &visible) {
    const QRect place = rect.toRect();
    widget.setGeometry(place);
    const QRect shown = visible.toAlignedRect() & place;
    if (shown.isEmpty()) {
        widget.hide();
        return;
    }
    if (shown == place)
        widget.clearMask();
    else
        widget.setMask(QRegion(shown.translated(-place.topLeft())));
    widget.show();
}

}  // namespace host
