// The program's window with the plug-in in it, on a sample device of the test's own, with the contacts on show.
#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <filesystem>
#include <fstream>

#include "device/sample/Sample.h"
#include "host/window/Categories.h"
#include "host/window/Shell.h"
#include "host/window/ViewSurface.h"
#include "tests/window/WindowWorld.h"
#include "toolkit/dispatch/MainLoop.h"
#include "toolkit/tables/NSTableView.h"
#include "toolkit/views/NSApplication.h"
#include "toolkit/views/NSButton.h"
#include "toolkit/views/NSTextField.h"

// The user's folders of this process lie in a folder of the test's own.
class PrivateFolders {
public:
    PrivateFolders() {
        for (const char *name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME"})
            qputenv(name, (folder_.path() + u'/' + name).toUtf8());
    }
    [[nodiscard]] std::filesystem::path path() const { return folder_.path().toStdString(); }

private:
    QTemporaryDir folder_;
};

class ShellTest : public testing::Test {
protected:
    void SetUp() override {
        // A window that nobody answers fails its test instead of hanging it.
        QObject::connect(&hung, &QTimer::timeout, &hung, [] {
            ADD_FAILURE() << "nobody answered " << (NSApp()->modalWindow() ? NSApp()->modalWindow()->toString() : "the window");
            NSApp()->abortModal();
        });
        hung.start(std::chrono::seconds(40));
        device::sample::createSampleImage(image());
        open();
    }
    void TearDown() override { close(); }

    // Starts the window as the program does, and ends it.
    void open() {
        services = std::make_unique<host::Services>([](const std::string &) {}, [](device::AccessError::Kind, const std::string &) {});
        services->openDevice(image());
        shell = make<host::Shell>();
        shell->start(*services, std::static_pointer_cast<host::QtPresenter>(Presenter::current()));
        shell->deviceIsIn(image());
        surface = &world.surfaceOf(*shell->window()->contentView());
        ASSERT_TRUE(QTest::qWaitForWindowExposed(surface->parentWidget()));
        show(host::kContactsCategory);
        ASSERT_NE(shell->list(), nullptr);
    }
    void close() {
        if (!shell)
            return;
        shell->close();
        shell = nullptr;
        world.serve();
        services.reset();
    }
    void show(std::int64_t category) {
        shell->choose(category);
        settle();
    }
    // The category on show has its list and nothing waits.
    void settle() {
        world.until([&] { return shell->hasLoaded() && dispatch::waitingMainBlocks() == 0; }, "a category that has loaded");
        world.serve();
    }
    [[nodiscard]] std::filesystem::path image() const { return folders.path() / "phone"; }
    void picture(const char *name) {
        world.serve();
        world.picture(*surface->parentWidget(), name);
    }
    // Of the modal window in front, visible ones alone; null where it has none.
    static std::shared_ptr<NSButton> modalButton(const char *identifier) {
        const auto window = NSApp()->modalWindow();
        const auto button = window && window->contentView() ? std::dynamic_pointer_cast<NSButton>(window->contentView()->viewWithIdentifier(identifier)) : nullptr;
        return button && !button->isHiddenOrHasHiddenAncestor() && button->isEnabled() ? button : nullptr;
    }
    // The button of a progress window that is done; null while it works.
    static std::shared_ptr<NSButton> doneButton() {
        constexpr std::int64_t kDoneTag = 15;
        const auto button = modalButton("borderButton");
        return button && button->tag() == kDoneTag ? button : nullptr;
    }
    void pictureOfModal(const char *name) {
        world.serve();
        world.picture(*world.presenter().mirrorOf(*NSApp()->modalWindow()), name);
    }
    void keyInModal(Qt::Key key) { QTest::keyClick(&world.presenter().mirrorOf(*NSApp()->modalWindow())->surface(), key); }
    // A card file of so many new people.
    std::filesystem::path cards(int count) {
        const std::filesystem::path file = folders.path() / ("cards-" + std::to_string(count) + ".vcf");
        std::ofstream text(file);
        for (int i = 0; i < count; ++i)
            text << "BEGIN:VCARD\r\nVERSION:3.0\r\nN:Zuse" << i << ";Konrad;;;\r\nFN:Konrad Zuse" << i << "\r\nTEL;type=CELL:+49 30 " << 100000 + i
                 << "\r\nEND:VCARD\r\n";
        return file;
    }
    std::string cell(std::int64_t row, std::int64_t column = 1) {
        const auto shown = std::dynamic_pointer_cast<NSTableCellView>(shell->list()->viewAtColumn_row_makeIfNecessary(column, row, true));
        return shown && shown->textField() ? shown->textField()->stringValue().str() : "";
    }
    NSPoint inRow(std::int64_t row, double x = 200) {
        const NSRect rect = shell->list()->rectOfRow(row);
        return {rect.minX() + x, rect.minY() + rect.size.height / 2};
    }

    PrivateFolders folders;
    WindowWorld world;
    QTimer hung;
    std::unique_ptr<host::Services> services;
    std::shared_ptr<host::Shell> shell;
    host::ViewSurface *surface = nullptr;
};
