#include "HNManagerPlugin/HNCustomMethod.h"

#include <gtest/gtest.h>

#include "HNManagerPlugin/Classes/PublicProgressWindow/HNPhototDiolagWindowController.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindowController.h"
#include "tests/support/AnswerScript.h"
#include "tests/support/PluginWorld.h"
#include "toolkit/NSImage.h"
#include "toolkit/views/NSApplication.h"
#include "toolkit/views/NSImageView.h"

namespace {

struct Row {
    const char *name;
    std::function<std::int64_t(std::int64_t, std::int64_t)> show;
    // What is asked, with its buttons from the left, for 2 and 3, for 0 and 3, for 2 and 0.
    const char *mixed, *failed, *success;
};

template <auto Operation> std::int64_t longForm(std::int64_t s, std::int64_t f) { return Operation(s, f, "photos", "videos", "done", "lost", "T"); }
template <auto Operation> std::int64_t shortForm(std::int64_t s, std::int64_t f) { return Operation(s, f, "good", "bad", "T"); }

using M = HNCustomMethod;
class ResultDialog : public testing::TestWithParam<Row> {
protected:
    std::string ask(std::int64_t succeeded, std::int64_t failed) {
        EventLog log;
        AnswerScript answers(&log);
        answers.at("T").run([this] { icon_ = iconInFront(); }).closeByTitleBar();
        EXPECT_EQ(GetParam().show(succeeded, failed), -1000);
        const std::string asked = log.take();
        return asked.substr(0, asked.find("\ncloses"));
    }
    static std::string iconInFront() {
        const auto view = NSApp()->modalWindow()->contentView()->viewWithIdentifier("markImage");
        const auto image = std::dynamic_pointer_cast<NSImageView>(view)->image();
        return image ? image->name().str() : "none";
    }
    PluginWorld world_;
    std::string icon_;
};

TEST_P(ResultDialog, saysWhatHappenedWithItsOwnButtons) {
    EXPECT_EQ(ask(2, 3), GetParam().mixed);
    EXPECT_EQ(icon_, "icon_ok");
    EXPECT_EQ(ask(0, 3), GetParam().failed);
    EXPECT_EQ(icon_, "icon_exclamation");
    EXPECT_EQ(ask(2, 0), GetParam().success);
    EXPECT_EQ(icon_, "icon_ok");
    ask(0, 0);
    EXPECT_EQ(icon_, "icon_exclamation") << "nothing at all counts as failed";
}

#define LONG(name) longForm<&M::name##SucceededCount_FailedCount_SucceededStr_FailedStr_MessageSuccedded_MessageFailed_Title>
#define SHORT(name) shortForm<&M::name##SucceededCount_FailedCount_SucceededStr_FailedStr_Title>

INSTANTIATE_TEST_SUITE_P(
    Nine, ResultDialog,
    testing::Values(
        Row{"plain", LONG(showDialog), "asks T|2 photos done\n3 videos lost [OK]", "asks T|3 videos lost [OK]", "asks T|2 photos done [OK]"},
        Row{"New_plain", SHORT(New_showDialog), "asks T|good\nbad [OK]", "asks T|bad [OK]", "asks T|good [OK]"},
        Row{"twoButtons", LONG(showDialogHaveDoubleButton), "asks T|2 photos done\n3 videos lost [Open_Folder OK]",
            "asks T|3 videos lost [Open_Folder]", "asks T|2 photos done [OK Open_Folder]"},
        Row{"link", LONG(showDialogWithLink), "asks T|2 photos done\n3 videos lost|Why_failed_export_photo [OK]",
            "asks T|3 videos lost|Why_failed_export_photo [OK]", "asks T|2 photos done|Why_failed_export_photo [OK]"},
        Row{"twoButtonsAndLink", LONG(showDialogHaveDoubleButtonWithLinkURL),
            "asks T|2 photos done\n3 videos lost|Why_failed_export_photo [FileManager_OK Open_Folder]",
            "asks T|3 videos lost|Why_failed_export_photo [FileManager_OK]",
            "asks T|2 photos done|Why_failed_export_photo [OK Open_Folder]"},
        Row{"New_link", SHORT(New_showDialogWithLink), "asks T|good\nbad|Why_failed_export_photo [FileManager_OK]",
            "asks T|bad|Why_failed_export_photo [FileManager_OK]", "asks T|good|Why_failed_export_photo [FileManager_OK]"},
        Row{"New_twoButtons", SHORT(New_showDialogHaveDoubleButton), "asks T|good\nbad [FileManager_OK Open_Folder]",
            "asks T|bad [Open_Folder]", "asks T|good [FileManager_OK Open_Folder]"},
        Row{"New_twoButtonsAndLink", SHORT(New_showDialogHaveDoubleButtonWithLinkURL),
            "asks T|good\nbad|Why_failed_export_photo [FileManager_OK Open_Folder]", "asks T|bad|Why_failed_export_photo [FileManager_OK]",
            "asks T|good|Why_failed_export_photo [FileManager_OK Open_Folder]"},
        Row{"delete_link", SHORT(delete_showDialogWithLink), "asks T|good\nbad|Why_failed_delete_photo [FileManager_OK]",
            "asks T|bad|Why_failed_delete_photo [FileManager_OK]", "asks T|good|Why_failed_delete_photo [FileManager_OK]"}),
    [](const auto &row) { return std::string(row.param.name); });

}  // namespace
