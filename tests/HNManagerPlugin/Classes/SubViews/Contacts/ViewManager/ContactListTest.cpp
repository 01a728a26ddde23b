#include "tests/HNManagerPlugin/Classes/SubViews/Contacts/ContactCategory.h"
#include "toolkit/services/NSNotificationCenter.h"

namespace {

class ContactListing : public ContactCategory {};

TEST_F(ContactListing, sortsByNameAndPutsMarksAndNamelessBehindInTheirOrder) {
    openWith({"Zoe", "(b)", "", "\xEF\xBC\x81x", "Ann", "'q", "-dash", "\"x", "_u", "\\y", "9", NSString(),
              "\xE2\x80\x94z", "\xC3\x84", "(a)", "%p", "\xE2\x80\x99r", "]"});
    EXPECT_EQ(rows(),
              "\"x %p -dash 9 Ann Zoe \\y _u \xC3\x84 \xE2\x80\x99r - - 'q (a) (b) ] \xE2\x80\x94z \xEF\xBC\x81x");
    EXPECT_EQ(rows(*model_->globalArray), rows());
}

TEST_F(ContactListing, aHeaderSortPutsThemBehindToo) {
    openWith({"Ann", "(b)", "Bob", ""});
    const auto column = table_->tableColumnWithIdentifier("completeName");
    for (int click = 0; click < 2; ++click) {
        manager_->tableView_mouseDownInHeaderOfTableColumn(*table_, column);
        table_->setSortDescriptors({NSSortDescriptor("completeName", click == 0)});
    }
    EXPECT_EQ(rows(), "Bob Ann (b) -");
    EXPECT_EQ(model_->selectedEntity->name.get(), "Bob");
    // sorted at the load alone, its rows moved by where those on show stood: twice, "Ann Bob - (b)" lost an end to its back
    EXPECT_EQ(rows(*model_->globalArray), "- (b) Ann Bob");
}

TEST_F(ContactListing, givesContactsWithoutPictureTheDefaultOne) {
    const auto own = NSImage::withData(NSData::of("x"));
    add("Ann")->setImage_data(own);
    openWith({"Bob"});
    EXPECT_EQ(device_->stored[0]->image_data(), own);
    ASSERT_TRUE(device_->stored[1]->image_data());
    EXPECT_EQ(device_->stored[1]->image_data()->name(), "icon_list_user");
}

TEST_F(ContactListing, showsRowNoughtAndTheTotalAfterTheLoad) {
    openWith({"Bob", "Ann"});
    EXPECT_EQ(model_->selectedEntity->name.get(), "Ann");
    EXPECT_EQ(manager_->tableRowInfoString.get(), "Bottom_items_Format");
    EXPECT_TRUE(isTableShown());
    EXPECT_EQ(table_->numberOfRows(), 2);
    EXPECT_TRUE(table_->isConsistent());
}

TEST_F(ContactListing, anEmptyDeviceShowsTheNoDataPanelInTheTablesPlace) {
    openWith({});
    EXPECT_FALSE(isTableShown());
    const auto panel = manager_->noSearchResultViewCtrl;
    EXPECT_FALSE(panel->view()->isHidden());
    EXPECT_EQ(panel->remindString.lock()->stringValue(), "FileManager_NoContacts");
}

TEST_F(ContactListing, cloudContactsShowThePanelAreNeverReadAndLeaveTheListWithARefresh) {
    device_->cloud = 3;
    add("Ann");
    open();
    world_.settle();
    EXPECT_EQ(device_->log.take(), "");
    EXPECT_FALSE(isTableShown());
    EXPECT_FALSE(manager_->disable_iCloudView.lock()->isHidden());
    device_->cloud = 0;
    press("RetryButton");
    EXPECT_EQ(rows(), "Ann");
    EXPECT_TRUE(isTableShown());
    EXPECT_TRUE(manager_->disable_iCloudView.lock()->isHidden());
    device_->cloud = 1;
    press("RefreshButton");
    EXPECT_EQ(rows(), "");
    EXPECT_FALSE(isTableShown());
    EXPECT_FALSE(manager_->loadingFinished);
}

TEST_F(ContactListing, aRefreshReadsAnewAndDropsTheSearch) {
    openWith({"Ann", "Bob"});
    search("bob");
    add("Cid");
    press("RefreshButton");
    EXPECT_EQ(rows(), "Ann Bob Cid");
    EXPECT_EQ(rows(*model_->globalArray), "Ann Bob Cid");
    EXPECT_EQ(manager_->searchField.lock()->stringValue(), "");
}

TEST_F(ContactListing, theSelectionDrivesDetailsEditingAndStatus) {
    openWith({"Ann", "Bob", "Cid"});
    table_->selectRowIndexes_byExtendingSelection({1}, false);
    EXPECT_EQ(model_->selectedEntity->name.get(), "Bob");
    EXPECT_TRUE(manager_->editEnabled);
    EXPECT_EQ(manager_->tableRowInfoString.get(), "Bottom_item_Format_Select");
    table_->selectRowIndexes_byExtendingSelection({2}, true);
    EXPECT_FALSE(manager_->editEnabled);
    EXPECT_EQ(model_->selectedEntity->name.get(), "Cid");
    table_->deselectAll();
    EXPECT_FALSE(manager_->editEnabled);
    EXPECT_EQ(model_->selectedEntity->name.get(), "Cid");   // no row: the panel stays
    EXPECT_EQ(manager_->headCheckBox->state(), NSOffState);
}

TEST_F(ContactListing, rowsThatDoNotExistLeaveTheDetailsAlone) {
    openWith({"Ann", "Bob"});
    for (const std::int64_t row :
         {std::int64_t{2}, std::int64_t{3}, std::int64_t{-1}, std::numeric_limits<std::int64_t>::max()})
        manager_->showSelectedContactInfoAtRow(row);
    EXPECT_EQ(model_->selectedEntity->name.get(), "Ann");
    manager_->showSelectedContactInfoAtRow(1);
    EXPECT_EQ(model_->selectedEntity->name.get(), "Bob");
}

TEST_F(ContactListing, theDetailsStandInTheirOrder) {
    add("Ann", "notes=note; company=Acme; department=; job=; birthday=1990; im(home)=AIM/joe; related(Spouse)=Bob; "
               "date(Day)=2001; "
               "adr(work)=1 Main St,~,~,~,US; url(other)=u; email(home)=a@b; email(~)=~; tel(cell)=1; tel(fax)=2");
    openWith({});
    EXPECT_EQ(details(),
              "cell: 1\nfax: 2\nhome: a@b\n~: ~\nother: u\nwork: US   1 Main St  \nbirthday: 1990\nDay: 2001\n"
              "Spouse: Bob\nAIM: joe\nDepartment: \nCompany Name: Acme\nNote: note\n");
    EXPECT_EQ(manager_->detailTableView.lock()->numberOfRows(), 13);
}

TEST_F(ContactListing, rowHeights) {
    add("Ann", "birthday=1990; department=; notes=a\nb; company=" + std::string(30, 'a') + " " +
                   std::string(30, 'b'));   // 30 letters are 195 wide
    openWith({});
    EXPECT_EQ(table_->rectOfRow(0).size.height - table_->intercellSpacing().height, 52.0);
    const auto details = manager_->detailTableView.lock();
    const auto height = [&](std::int64_t row) { return manager_->tableView_heightOfRow(*details, row); };
    EXPECT_EQ(height(0), 68.0);   // one line of 17 points
    EXPECT_EQ(height(1), 50.0);   // no text
    EXPECT_EQ(height(2), 91.0);   // two lines of one paragraph, 5.5 between them
    EXPECT_EQ(height(3), 86.0);   // two paragraphs
}

// ---------------------------------------------------------------- search

struct Search {
    const char *text, *rows;
    bool tableShows;
};

TEST_F(ContactListing, searchesNamesNumbersAndEmailsAsTheyStand) {
    add("Ann", "tel()=555-1; tel()=~");
    add("Bob", "email()=XÄ@b.org");
    openWith({"Cid"});
    constexpr Search kSearches[] = {{"b.", "Bob", true},    {" ANN ", "Ann", true},      {"555-1", "Ann", true},
                                    {"5551", "Ann", false}, {"x\xC3\xA4@", "Bob", true}, {"nn555", "Bob", false},
                                    {"i", "Cid", true},     {"", "Ann Bob Cid", true}};
    for (const Search &search : kSearches) {
        EXPECT_EQ(this->search(search.text), search.tableShows) << search.text;
        EXPECT_EQ(rows(), search.rows) << search.text;
    }
}

TEST_F(ContactListing, findsAContactByItsNewNumber) {
    openWith({"Ann", "Bob"});
    EXPECT_FALSE(search("77"));
    device_->stored[1]->mutable_phone_numbers().push_back({"", "77"});
    EXPECT_TRUE(search("77"));
    EXPECT_EQ(rows(), "Bob");
    device_->stored[1]->mutable_phone_numbers()[0].phone_number = "88";
    EXPECT_FALSE(search("77"));
}

TEST_F(ContactListing, theSelectionOutlivesASearch) {
    openWith({"Ann", "Bob", "Cid"});
    table_->selectRowIndexes_byExtendingSelection({0, 2}, false);
    search("b");
    EXPECT_EQ(manager_->headCheckBox->state(), NSOffState);
    EXPECT_EQ(model_->selectedEntity->name.get(), "Bob");
    table_->selectRowIndexes_byExtendingSelection({0}, false);
    search("");
    EXPECT_EQ(table_->selectedRowIndexes(), (NSIndexSet{0, 1, 2}));
}

TEST_F(ContactListing, aLostDeviceIsRemembered) {
    openWith({"Ann"});
    NSNotificationCenter::defaultCenter().postNotificationName_object(NMobileDeviceDisConnectionDidChangeNotification);
    EXPECT_TRUE(model_->deviceDisconnected);
    EXPECT_TRUE(manager_->deviceDisconnected);
    EXPECT_TRUE(search("ann"));
}

}   // namespace
