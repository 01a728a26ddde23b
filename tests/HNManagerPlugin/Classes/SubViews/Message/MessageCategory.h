// The message category in a window, on a backup that the test drives.
#pragma once

#include <gtest/gtest.h>

#include "HNManagerPlugin/Classes/SubItemViewController/HNMbaseViewController.h"
#include "HNManagerPlugin/Classes/SubViews/Message/ViewManager/HNMMessageViewManager.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/RStrategyActionEventRouter.h"
#include "tests/support/AnswerScript.h"
#include "tests/support/FakeDevice.h"
#include "tests/support/PluginWorld.h"
#include "tests/support/TempFolder.h"
#include "tests/support/fake/Backup.h"

class MessageCategory : public testing::Test {
protected:
    MessageCategory();
    ~MessageCategory() override;

    // Makes the view; the load begins. Modal dialogs are answered on the way.
    void open();
    // open, backup and parse of these chats.
    void openWith(std::vector<std::shared_ptr<MessageBackupChat>> chats);
    // Lets that much of the test's time pass, whatever still waits.
    static void advance(dispatch::Duration time = std::chrono::milliseconds(10));
    // The running backup ends, and all that follows from it happens.
    void endBackup(NSString path, std::uint32_t result);

    // "Ann 2024-01-01 00:00:00", a row each, "|" between.
    [[nodiscard]] static std::string rows(const NSMutableArray &list);
    [[nodiscard]] std::string shown() const { return rows(*model_->contents); }
    // The text of the panel over the list: loading or no data; "" while it is hidden, "no result" after a search.
    [[nodiscard]] std::string panel() const;
    // The rows of the conversation on show, "|" between.
    [[nodiscard]] std::string conversation() const;
    [[nodiscard]] std::string status() const { return manager_->tableRowInfoString.get().str(); }
    void search(const char *text);
    void select(std::vector<std::size_t> rows);

    PluginWorld world_;
    std::shared_ptr<EventLog> log_ = std::make_shared<EventLog>();
    TempFolder temporary_;
    const std::string folder_ = (temporary_.path() / "support").string();   // application support, not there yet
    std::shared_ptr<FakeBackupTask> shared_ = make<FakeBackupTask>(), parse_ = make<FakeBackupTask>();
    std::shared_ptr<FakeAddressBook> book_ = make<FakeAddressBook>();
    FakeDevice device_;
    std::shared_ptr<HNMbaseViewController> controller_;
    std::shared_ptr<NSWindow> window_;
    std::shared_ptr<HNMMessageViewManager> manager_;
    std::shared_ptr<HNMMessageViewModel> model_;
};
