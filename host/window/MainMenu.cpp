#include "host/window/MainMenu.h"

#include <QApplication>
#include <QMenuBar>

#include "host/window/Categories.h"
#include "host/window/QtText.h"
#include "host/window/Shell.h"
#include "toolkit/dispatch/Guard.h"

namespace host {

MainMenu::MainMenu(Shell &shell) : shell_(shell), bar_(new QMenuBar) {
    const auto add = [](QMenu *menu, const QString &text, const QKeySequence &key, std::function<void()> body) {
        QAction *action = menu->addAction(inOwnDirection(text));
        action->setShortcut(key);
        QObject::connect(action, &QAction::triggered, action, [body = std::move(body)] { dispatch::guarded("a menu entry", body); });
        return action;
    };
    QMenu *file = bar_->addMenu(QObject::tr("&File"));
    add(file, QObject::tr("&Open Device…"), QKeySequence::Open, [this] { shell_.askForDevice(); });
    recent_ = file->addMenu(QObject::tr("Open &Recent"));
    QObject::connect(recent_, &QMenu::aboutToShow, recent_, [this] { fillRecent(); });
    file->addSeparator();
    add(file, QObject::tr("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q), [this] { shell_.window()->performClose(); });

    QMenu *edit = bar_->addMenu(QObject::tr("&Edit"));
    add(edit, QObject::tr("&Find"), QKeySequence::Find, [this] { shell_.find(); });
    add(edit, QObject::tr("Select &All"), QKeySequence::SelectAll, [this] { shell_.selectAll(); });
    add(edit, QObject::tr("&Delete"), QKeySequence(Qt::Key_Delete), [this] { shell_.press("DeleteButton"); });

    QMenu *view = bar_->addMenu(QObject::tr("&View"));
    addCategories(*view);
    view->addSeparator();
    add(view, QObject::tr("&Refresh"), QKeySequence(Qt::Key_F5), [this] { shell_.press("RefreshButton"); });
}

// Ctrl+1 to Ctrl+9 are the first nine categories, Ctrl+0 the tenth.
void MainMenu::addCategories(QMenu &menu) {
    for (std::size_t index = 0; index < kCategories.size(); ++index) {
        QAction *action = menu.addAction(QObject::tr(kCategories[index].title));
        action->setShortcut(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_0 + (index + 1) % 10)));
        QObject::connect(action, &QAction::triggered, action, [this, index] {
            dispatch::guarded("a choice of a category", [&] { shell_.choose(static_cast<std::int64_t>(index)); });
        });
    }
}

void MainMenu::fillRecent() {
    recent_->clear();
    for (const std::string &folder : shell_.recentDevices()) {
        QAction *action = recent_->addAction(QString::fromStdString(folder).replace(u'&', QStringLiteral("&&")));
        QObject::connect(action, &QAction::triggered, action, [this, folder] { shell_.openDevice(folder); });
    }
    if (recent_->isEmpty())
        recent_->addAction(QObject::tr("None yet"))->setEnabled(false);
}

}  // namespace host
