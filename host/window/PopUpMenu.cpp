#include "host/window/PopUpMenu.h"

#include <QGuiApplication>
#include <QMenu>
#include <QPointer>

#include "host/window/PictureCache.h"
#include "host/window/QtText.h"
#include "toolkit/views/NSMenu.h"

namespace host {

namespace {

QIcon iconOf(const NSMenuItem &item, double ratio) {
    constexpr double kEdge = 16;
    return item.image ? QIcon(PictureCache::shared().pixmap(item.image, item.image->crop(), {kEdge, kEdge}, ratio)) : QIcon();
}

// A native entry with a submenu cannot be chosen itself; where the toolkit's can, it stands once more on top of its submenu.
void addOwnEntry(QMenu &submenu, const QAction &owner) {
    QAction *own = submenu.addAction(owner.text());
    own->setIcon(owner.icon());
    own->setData(owner.data());
    submenu.addSeparator();
}

}  // namespace

void fillMenu(QMenu &native, const NSMenu &menu, std::vector<std::shared_ptr<NSMenuItem>> &entries) {
    for (const auto &item : menu.itemArray()) {
        if (item->hidden)
            continue;
        if (item->isSeparator()) {
            native.addSeparator();
            continue;
        }
        const QString title = inOwnDirection(qtString(item->title).replace(u'&', QStringLiteral("&&")));
        QAction *action = item->hasSubmenu() ? native.addMenu(title)->menuAction() : native.addAction(title);
        action->setIcon(iconOf(*item, native.devicePixelRatioF()));
        action->setEnabled(item->enabled);
        action->setCheckable(item->state != 0);
        action->setChecked(item->state != 0);
        action->setToolTip(qtString(item->toolTip));
        action->setData(static_cast<qulonglong>(entries.size()));
        entries.push_back(item);
        if (!item->hasSubmenu())
            continue;
        QObject::connect(action->menu(), &QMenu::aboutToShow, action->menu(), [action, item, &entries] {
            if (!action->menu()->isEmpty())
                return;
            if (!item->action.empty())
                addOwnEntry(*action->menu(), *action);
            fillMenu(*action->menu(), *item->submenu(), entries);
        });
    }
}

std::shared_ptr<NSMenuItem> popUp(const std::shared_ptr<NSMenu> &menu, const QPoint &globalPlace, QWidget *owner, int leastWidth) {
    // Its owner may go while it is open, and takes it along.
    const QPointer<QMenu> native(new QMenu(owner));
    std::vector<std::shared_ptr<NSMenuItem>> entries;
    fillMenu(*native, *menu, entries);
    native->setLayoutDirection(QGuiApplication::layoutDirection());   // its owner's is another one
    native->setMinimumWidth(leastWidth);
    const QAction *chosen = native->exec(globalPlace);
    const std::size_t index = chosen ? static_cast<std::size_t>(chosen->data().toULongLong()) : entries.size();
    if (native)
        native->deleteLater();
    return index < entries.size() ? entries[index] : nullptr;
}

}  // namespace host
