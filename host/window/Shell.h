// The program's own window: the plug-in's view, the menu bar, devices, drops, the notice when a device goes away.
//
// Categories  the shell knows none of them: it chooses by outer index and finds buttons, boxes and lists of whatever is on
//             show by their identifiers and outlets.
// Life        one per process; close() lets the plug-in go. Threads: main.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "host/services/Services.h"
#include "host/window/QtPresenter.h"
#include "toolkit/views/NSViewController.h"
#include "toolkit/views/NSWindow.h"

class NSButton;
class NSTextField;
class NSTableView;

namespace host {

class FailureNotices;
class MainMenu;
class RepeatNotices;

class Shell : public NSObject, public NSWindowDelegate {
public:
    static constexpr double kWidth = 1240, kHeight = 720, kLeastWidth = 980, kLeastHeight = 420;

    Shell();
    ~Shell() override;
    // The plug-in is loaded and shown; throws PluginError.
    void start(Services &services, const std::shared_ptr<QtPresenter> &presenter);
    // Where the device that is open lies, for the list of the last ones; openDevice tells it by itself.
    void deviceIsIn(const std::filesystem::path &folder);
    // Dialogs that the plug-in left open go, then its objects.
    void close();
    [[nodiscard]] bool isClosed() const { return isClosed_; }

    // Outer index, 0 to 9.
    void choose(std::int64_t index);
    // The category on show has its list, or shows why it has none.
    [[nodiscard]] bool hasLoaded() const;
    [[nodiscard]] const std::shared_ptr<NSWindow> &window() const { return window_; }

    // Another device, from a folder. False where it cannot be opened: the person was told, the device before stays.
    bool openDevice(const std::filesystem::path &folder);
    void askForDevice();
    // Newest first, at most ten.
    [[nodiscard]] std::vector<std::string> recentDevices() const;

    // ------------------------------------------------------------ what is on show
    // "RefreshButton", "DeleteButton", "ImportButton": the category's own names of its actions differ. Null where it has no
    // such button that is visible and enabled.
    [[nodiscard]] std::shared_ptr<NSButton> buttonNamed(std::string_view identifier) const;
    [[nodiscard]] std::shared_ptr<NSTextField> searchField() const;
    [[nodiscard]] std::shared_ptr<NSTableView> list() const;
    // Presses it; nothing where there is none.
    void press(std::string_view identifier);
    void find();
    void selectAll();
    // As a press on the import button whose panel is answered with the files. False where nothing takes them.
    bool dropFiles(const std::shared_ptr<NSView> &view, const QStringList &files);
    [[nodiscard]] bool takesFiles(const std::shared_ptr<NSView> &view) const;

    bool windowShouldClose(NSWindow &window) override;
    void windowWillClose(NSWindow &window) override;
    HN_DECLARE_CLASS_TABLE

private:
    [[nodiscard]] std::shared_ptr<NSView> categoryView() const;
    [[nodiscard]] id categoryManager() const;
    [[nodiscard]] id categoryModel() const;
    void makeWindow();
    bool endSearch();
    void showDevice();
    void rememberDevice(const std::filesystem::path &folder);
    void deviceWentAway();

    Services *services_ = nullptr;
    std::shared_ptr<QtPresenter> presenter_;
    std::shared_ptr<RVBasePluginObject> principal_;
    std::shared_ptr<NSViewController> main_;
    std::shared_ptr<NSWindow> window_;
    std::unique_ptr<MainMenu> menu_;
    std::shared_ptr<FailureNotices> failures_;
    std::shared_ptr<RepeatNotices> repeats_;
    std::filesystem::path folder_;
    std::int64_t chosen_ = 0;
    bool isClosed_ = false;
};

}  // namespace host
