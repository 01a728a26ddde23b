#include "host/window/Notices.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QTextEdit>

#include <algorithm>
#include <utility>
#include <vector>

#include "toolkit/dispatch/Queue.h"
#include "toolkit/views/NSApplication.h"
#include "toolkit/views/NSWindow.h"

namespace host {

namespace {

std::vector<std::function<void()>> &waiting() {
    static std::vector<std::function<void()>> actions;
    return actions;
}

Qt::Alignment leadingSide() { return QGuiApplication::layoutDirection() == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft; }

constexpr QLatin1String kNotice("Notice");

// Another notice is no owner: it would take this one along.
QWidget *windowInFront() {
    QWidget *active = QApplication::activeWindow();
    if (qobject_cast<QMessageBox *>(active))
        return active->parentWidget();
    if (active && active->isVisible() && active->windowType() != Qt::Popup)
        return active;
    for (QWidget *window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->windowType() == Qt::Window)
            return window;
    return nullptr;
}

}  // namespace

void showNotice(QWidget *owner, const QString &what, const QString &advice, const QString &details) {
    auto *box = new QMessageBox(QMessageBox::Warning, QObject::tr("Manager"), what, QMessageBox::Ok, owner ? owner : windowInFront());
    box->setObjectName(kNotice);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);   // reasons quote names from other people's files
    box->setInformativeText(advice);
    if (!details.isEmpty()) {
        constexpr int kWidth = 560, kHeight = 240;   // its own is too small to read in
        box->setDetailedText(details);
        if (auto *text = box->findChild<QTextEdit *>())
            text->setMinimumSize(kWidth, kHeight);
    }
    for (QLabel *label : box->findChildren<QLabel *>())
        label->setAlignment(Qt::AlignAbsolute | Qt::AlignTop | leadingSide());   // whatever direction the text itself has
    box->open();
}

namespace {

// A flow's window stands before its modal run begins, and serves the main queue already.
bool isQuiet() {
    constexpr int kProgramsOwn = 1;
    const auto windows = NSApp()->orderedWindows();
    return !NSApp()->modalWindow() && std::ranges::count_if(windows, [](const auto &window) { return window->isVisible(); }) <= kProgramsOwn;
}

}  // namespace

void whenQuiet(std::function<void()> action) {
    waiting().push_back(std::move(action));
    noteWindowEnded();
}

void noteWindowOpens() {
    for (QWidget *window : QApplication::topLevelWidgets()) {
        const QPointer<QMessageBox> box(qobject_cast<QMessageBox *>(window));
        if (!box || box->objectName() != kNotice || !box->isVisible())
            continue;
        box->hide();
        whenQuiet([box] {
            if (box)
                box->open();
        });
    }
}

void noteWindowEnded() {
    if (waiting().empty())
        return;
    dispatch::async(dispatch::main(), [] {
        if (!isQuiet())
            return;
        for (const auto &action : std::exchange(waiting(), {}))
            action();
    });
}

}  // namespace host
