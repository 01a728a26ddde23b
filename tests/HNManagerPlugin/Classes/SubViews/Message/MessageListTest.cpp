// The list of threads: order, filter by the user's own numbers, search, selection, and what each shows of a conversation.
#include "tests/HNManagerPlugin/Classes/SubViews/Message/MessageCategory.h"
#include "toolkit/views/NSPopUpButton.h"

namespace {

class MessageList : public MessageCategory {
protected:
    // In the order of the parse: Bob (oldest), Ann (newest, +1 and +2), Team (+2).
    void openWithThree() {
        book_->add("Bob", {"8"});
        book_->add("Ann", {"7"});
        const auto team = chatOf(3, {"7", "8"}, {{.content = "t", .second = 50, .callerID = "+2"}});
        team->chatTitle = "Team";
        openWith({chatOf(1, {"8"}, {{"b", 10}}),
                  chatOf(2, {"7"}, {{.content = "a", .callerID = "+1"}, {.content = "aa", .second = 90, .callerID = "+2"},
                                    {.content = "aaa", .second = 90, .callerID = "+1"}}),
                  team});
    }
    [[nodiscard]] static std::string names(const NSArray &threads) {
        std::string text;
        for (const id &object : threads)
            text += (text.empty() ? "" : " ") + dynamic_cast<const HNMessageEntity &>(*object).contactName.str();
        return text;
    }
    [[nodiscard]] std::string names() const { return names(model_->contents->snapshot()); }
    [[nodiscard]] std::string namesOfAll() const { return names(model_->globalArray->snapshot()); }
    [[nodiscard]] std::string selected() const { return names(model_->arrayController.lock()->selectedObjects()); }
    void choose(const char *number) {
        tell(manager_->phoneComboBox, [&](NSComboBox &combo) {
            combo.setStringValue(number);
            combo.sendAction();
        });
    }
    [[nodiscard]] std::string comboItem(std::int64_t index) {
        return manager_->comboBox_objectValueForItemAtIndex(*manager_->phoneComboBox.lock(), index).str();
    }
};

TEST_F(MessageList, showsTheNewestThreadFirstAndKeepsTheOrderOfTheParseApart) {
    openWithThree();
    EXPECT_EQ(names(), "Ann Team Bob");
    EXPECT_EQ(namesOfAll(), "Bob Ann Team");
    EXPECT_EQ(status(), "Bottom_items_Format");
    EXPECT_EQ(model_->messageOwner.get(), "Ann");
    EXPECT_EQ(conversation(), "time|a|aa|aaa");
}

TEST_F(MessageList, theSelectedThreadShows) {
    openWithThree();
    select({1});
    EXPECT_EQ(conversation(), "time|t");
    EXPECT_EQ(model_->messageOwner.get(), "Team");
    EXPECT_EQ(model_->selectMessageIcon.get()->description(), "icon_list_user_more");
    EXPECT_TRUE(manager_->hasSelectedRow);
    EXPECT_EQ(status(), "Bottom_item_Format_Select");
    select({0, 2});
    EXPECT_EQ(status(), "Bottom_items_Format_Select");
    select({});
    EXPECT_FALSE(manager_->hasSelectedRow);
    EXPECT_EQ(status(), "Bottom_items_Format");
}

TEST_F(MessageList, aThreadWithoutRowsKeepsTheEarlierConversation) {
    openWith({chatOf(1, {"7"}, {{"x"}}), chatOf(2, {"8"}, {})});
    select({1});
    EXPECT_EQ(conversation(), "time|x");
    EXPECT_EQ(model_->messageOwner.get(), "8");
}

// ---------------------------------------------------------------- search

TEST_F(MessageList, searchLooksAtTitlesAndComesBackInTheOrderOfTheParse) {
    openWithThree();
    search("aN");
    EXPECT_EQ(names(), "Ann");
    search("b");
    EXPECT_EQ(names(), "Bob");
    EXPECT_EQ(conversation(), "time|b");
    search("aaa");   // a text of Ann's
    EXPECT_EQ(panel(), "no result");
    EXPECT_EQ(names(), "Bob");   // the old rows stay
    search("");
    EXPECT_EQ(panel(), "");
    EXPECT_EQ(names(), "Bob Ann Team");
}

TEST_F(MessageList, anEmptySearchWithoutAFilterTouchesNothing) {
    openWithThree();
    select({2});
    model_->selectInfoDic->removeAllObjects();
    search("");
    EXPECT_EQ(names(), "Ann Team Bob");
    EXPECT_EQ(selected(), "Bob");
}

TEST_F(MessageList, theSelectionSurvivesASearchByTheChatsIdentity) {
    openWithThree();
    select({0, 1});
    EXPECT_EQ(model_->selectInfoDic->allKeys(), (std::vector<NSString>{"2", "3"}));
    search("bob");
    EXPECT_EQ(selected(), "");
    EXPECT_EQ(manager_->headCheckBox->state(), NSOffState);
    search("");
    EXPECT_EQ(selected(), "Ann Team");
    EXPECT_EQ(manager_->headCheckBox->state(), NSMixedState);
}

TEST_F(MessageList, aTextInTheSearchFieldAppliesAfterTheLoad) {
    openWithThree();
    tell(manager_->searchField, [](NSTextField &box) { box.setStringValue("team"); });
    manager_->refreshButtonClick(nullptr);
    search("bob");   // nothing while it loads
    tell(manager_->searchField, [](NSTextField &box) { box.setStringValue("team"); });
    endBackup("/backup", 0);
    EXPECT_EQ(names(), "Team");
}

// ---------------------------------------------------------------- the user's own numbers

TEST_F(MessageList, theComboHasAllNumbersInTheOrderInWhichTheyWereSeen) {
    openWithThree();
    EXPECT_EQ(manager_->numberOfItemsInComboBox(*manager_->phoneComboBox.lock()), 3);
    EXPECT_EQ(comboItem(0), "All_PhoneNumber");
    EXPECT_EQ(comboItem(1), "+1");
    EXPECT_EQ(comboItem(2), "+2");
    EXPECT_EQ(comboItem(3), "");
    EXPECT_EQ(comboItem(-1), "");
    EXPECT_EQ(manager_->phoneLabel.lock()->stringValue(), "Phone: ");
    EXPECT_EQ(manager_->phoneComboBox.lock()->stringValue(), "All_PhoneNumber");
}

TEST_F(MessageList, withoutNumbersTheComboHasOneEmptyItem) {
    openWith({chatOf(1, {"7"}, {{"x"}})});
    EXPECT_EQ(manager_->numberOfItemsInComboBox(*manager_->phoneComboBox.lock()), 1);
    EXPECT_EQ(comboItem(0), "");
}

TEST_F(MessageList, aNumberShowsItsThreadsAndSearchStaysWithinThem) {
    openWithThree();
    choose("+2");
    EXPECT_EQ(names(), "Ann Team");
    EXPECT_EQ(namesOfAll(), "Ann Team");
    search("bob");
    EXPECT_EQ(panel(), "no result");
    search("");
    choose("+1");
    EXPECT_EQ(names(), "Ann");
    choose("");
    EXPECT_EQ(names(), "Ann");
    choose("All_PhoneNumber");
    EXPECT_EQ(names(), "Ann Team Bob");
    EXPECT_EQ(namesOfAll(), "Bob Ann Team");
}

TEST_F(MessageList, anUnknownNumberShowsNothing) {
    EventLog lines;
    openWithThree();
    world_.logLinesTo(lines, "HNMMessageViewManager");
    choose("+3");
    EXPECT_EQ(names(), "");
    EXPECT_EQ(manager_->tableView.lock()->numberOfRows(), 0);
    EXPECT_NE(lines.take().find(">>> Seleted PhoneNumber: +3"), std::string::npos);
}

TEST_F(MessageList, absentNumbersMakeNoFilterButEmptyOnesDo) {
    const auto chat = chatOf(1, {"7"}, {{.content = "x", .callerID = ""}, {"y"}});
    chat->messageCallerID.push_back(NSString());
    openWith({chat});
    EXPECT_EQ(model_->phoneNumbers.get(), std::vector<NSString>{""});
    EXPECT_EQ(model_->phoneNumberModels->allKeys(), (std::vector<NSString>{"", "All"}));
    EXPECT_EQ(model_->contents->at<HNMessageEntity>(0)->callerID.size(), 2U);
}

// ---------------------------------------------------------------- the nib

TEST_F(MessageList, theListShowsPictureTitleTimeAndLastMessage) {
    openWithThree();
    const auto cell = manager_->tableView.lock()->viewAtColumn_row_makeIfNecessary(1, 0, true);
    ASSERT_TRUE(cell);
    const auto text = [&](const char *identifier) {
        return std::dynamic_pointer_cast<NSTextField>(cell->viewWithIdentifier(identifier))->stringValue().str();
    };
    EXPECT_EQ(text("ThreadName"), "Ann");
    EXPECT_EQ(text("ThreadTime"), "2024-01-01 00:01:30");
    EXPECT_EQ(text("ThreadLast"), "aaa");
    EXPECT_EQ(manager_->tableView.lock()->tableColumns()[1]->title(), "MessageView_messageContent");
    EXPECT_EQ(manager_->tableView.lock()->tableColumns()[0]->identifier(), "CheckBoxCell");
}

TEST_F(MessageList, theExportButtonOffersBothShapesOfWhatIsSelected) {
    openWithThree();
    const auto button = std::dynamic_pointer_cast<NSPopUpButton>(controller_->view()->viewWithIdentifier("ExportButton"));
    EXPECT_FALSE(button->isEnabled());
    select({1});
    EXPECT_TRUE(button->isEnabled());
    std::string entries = button->itemArray().front()->title.str();   // its own title
    for (const auto &item : button->itemArray())
        if (!item->hidden)
            entries += "|" + item->title.str() + " " + (manager_->respondsToSelector(item->action) ? item->action : "?");
    EXPECT_EQ(entries, "FileManager_Export|Manager_Export_CSV exportMessage:|Manager_Export_HTML exportMessage2HTML:");
}

TEST_F(MessageList, refreshStaysWithinReachWhileAPanelShows) {
    open();
    const auto root = controller_->view();
    const auto button = root->viewWithIdentifier("RefreshButton");
    const NSPoint middle = button->convertPoint_toView({10, 10}, root);
    EXPECT_EQ(root->hitTest({root->frame().origin.x + middle.x, root->frame().origin.y + middle.y}), button);
    EXPECT_FALSE(manager_->noSearchField.lock()->isHidden());
}

TEST_F(MessageList, theConversationIsMountedBelowItsHead) {
    openWithThree();
    const NSRect area = manager_->messageContentView.lock()->bounds();
    const NSRect pane = model_->messageTableController->view()->frame();
    EXPECT_EQ(pane.size.width, area.size.width - 1);
    EXPECT_EQ(pane.size.height, area.size.height - 53);
    EXPECT_EQ(pane.minX(), 1);
    EXPECT_EQ(pane.minY(), 0);   // y counts up here
}

}   // namespace
