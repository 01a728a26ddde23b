#include "host/window/PopUpMenu.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QMenu>

#include "toolkit/views/NSMenu.h"

namespace {

std::shared_ptr<NSMenuItem> entry(const std::shared_ptr<NSMenu> &menu, const char *title, const char *action) {
    auto item = make<NSMenuItem>(NSString(title), action);
    menu->addItem(item);
    return item;
}

std::string titles(const QMenu &menu) {
    std::string text;
    for (const QAction *action : menu.actions())
        text += (text.empty() ? "" : "|") + (action->isSeparator() ? "-" : action->text().toStdString());
    return text;
}

QMenu *opened(QAction *action) {
    QMenu *menu = action->menu();
    emit menu->aboutToShow();
    return menu;
}

TEST(PopUpMenu, anEntryWithASubmenuAndAnActionCanBeChosenInsideIt) {
    const auto menu = make<NSMenu>(), folders = make<NSMenu>(), inside = make<NSMenu>();
    entry(menu, "Edit", "edit");
    entry(menu, "Move", "")->setSubmenu(folders);
    const auto recipes = entry(folders, "Recipes & more", "move");
    recipes->setSubmenu(inside);
    const auto soups = entry(inside, "Soups", "move");

    QMenu native;
    std::vector<std::shared_ptr<NSMenuItem>> entries;
    host::fillMenu(native, *menu, entries);
    EXPECT_EQ(titles(native), "Edit|Move");
    QMenu *const move = opened(native.actions()[1]);
    EXPECT_EQ(titles(*move), "Recipes && more");
    QMenu *const below = opened(move->actions()[0]);
    ASSERT_EQ(titles(*below), "Recipes && more|-|Soups");
    EXPECT_EQ(entries.at(below->actions()[0]->data().toULongLong()), recipes);
    EXPECT_EQ(entries.at(below->actions()[2]->data().toULongLong()), soups);
    EXPECT_EQ(titles(*opened(move->actions()[0])), "Recipes && more|-|Soups");   // opened again: the same once
}

TEST(PopUpMenu, aTextFromLeftToRightKeepsItsDotsAtItsEndFromRightToLeft) {
    const auto menu = make<NSMenu>();
    for (const char *title : {"Edit\u2026", "\u062A\u062D\u0631\u064A\u0631\u2026"})
        entry(menu, title, "edit");
    QMenu native;
    std::vector<std::shared_ptr<NSMenuItem>> entries;
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    host::fillMenu(native, *menu, entries);
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    EXPECT_EQ(titles(native), "\u200EEdit\u2026\u200E|\u062A\u062D\u0631\u064A\u0631\u2026");
}

TEST(PopUpMenu, tenThousandLevelsAreNotMadeBeforeTheyOpen) {
    const auto top = make<NSMenu>();
    auto menu = top;
    for (int level = 0; level < 10'000; ++level) {
        const auto below = make<NSMenu>();
        entry(menu, "level", "move")->setSubmenu(below);
        menu = below;
    }
    QMenu native;
    std::vector<std::shared_ptr<NSMenuItem>> entries;
    host::fillMenu(native, *top, entries);
    EXPECT_EQ(entries.size(), 1u);
    EXPECT_EQ(titles(*opened(native.actions()[0])), "level|-|level");
}

}  // namespace
