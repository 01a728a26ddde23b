// Menus of the toolkit as native ones. Threads: main.
#pragma once

#include <QPoint>

#include <memory>
#include <vector>

class NSMenu;
class NSMenuItem;
class QMenu;
class QWidget;

namespace host {

// Fills a native menu with the entries; each action carries its entry's place in `entries`, which must outlive the menu. A
// submenu is filled as it opens: folders of strangers' phones may be nested ten thousand deep.
void fillMenu(QMenu &native, const NSMenu &menu, std::vector<std::shared_ptr<NSMenuItem>> &entries);
// Shows the menu and returns what the person chose; null for none. The main queue goes on meanwhile.
[[nodiscard]] std::shared_ptr<NSMenuItem> popUp(const std::shared_ptr<NSMenu> &menu, const QPoint &globalPlace, QWidget *owner, int leastWidth = 0);

}  // namespace host
