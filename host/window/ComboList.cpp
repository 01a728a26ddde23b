#include "host/window/ComboList.h"

#include <QPointer>

#include "host/window/PopUpMenu.h"
#include "host/window/ViewSurface.h"
#include "toolkit/dispatch/Guard.h"
#include "toolkit/views/NSComboBox.h"
#include "toolkit/views/NSMenu.h"

namespace host {

void popUpComboList(ViewSurface &surface, const std::shared_ptr<NSComboBox> &combo, const QRectF &place) {
    const auto menu = make<NSMenu>();
    for (std::int64_t index = 0; index < combo->numberOfItems(); ++index) {
        const auto item = make<NSMenuItem>(combo->itemObjectValueAtIndex(index));
        item->state = index == combo->indexOfSelectedItem() ? 1 : 0;
        menu->addItem(item);
    }
    if (const auto chosen = popUp(menu, surface.mapToGlobal(place.bottomLeft().toPoint()), &surface, static_cast<int>(place.width())))
        dispatch::guarded("a combo box", [&] { combo->chooseItemAtIndex(menu->indexOfItem(chosen)); });
}

}  // namespace host
