// The contact editor, for a new contact and for one of the list.
//
//     const auto editor = make<NewContactDialogWindow>();
//     editor->initWithWindowNibName_contact_contactGroup("NewContactDialogWindow", contact, nullptr);
//     editor->setGroupInfo(groups);
//     if (NSApp()->runModalForWindow(editor->window()) == 1) ... editor->contact ...
//
// Record   is edited itself, not a copy: what was typed before a cancel stays in memory, and so do the empty numbers and
//          e-mails that fill it up to two rows each.
// Save     is off at first, whatever the fields hold; after each change it is on where one of the four sections holds text
//          that somebody has typed in or beside.
// Codes    1 save, 0 cancel. Threads: main.
#pragma once

#include "HNManagerPlugin/Classes/SubViews/Contacts/NewContactWindow/HNContactPhotoView.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/NewContactWindow/NewContactViewModel.h"
#include "toolkit/Property.h"
#include "toolkit/views/NSScrollView.h"
#include "toolkit/views/NSWindowController.h"

class NewContactDialogWindow : public NSWindowController, public ContactInfoViewEditing, public HNContactPhotoViewDelegate {
public:
    HN_DECLARE_CLASS_TABLE
    static constexpr std::int64_t kSave = 1, kCancel = 0;
    static constexpr double kGroupWidth = 320, kGroupHeight = 32, kClosedHeight = 30;

    std::shared_ptr<ZpContactDataInfo> contact;
    std::shared_ptr<NSMutableArray> groupInfo;   // of ContactGroupInfo
    Property<NSString> group;
    Property<bool> saveEnabled;
    std::shared_ptr<NewContactViewModel> viewModel;

    // nib outlets
    std::weak_ptr<ContactInfoView> contactGroup;
    std::weak_ptr<NSScrollView> groupContainer;
    std::weak_ptr<NSButton> groupButton, cancelButton, saveButton;
    std::weak_ptr<HNContactPhotoView> photoView;

    void initWithWindowNibName_contact_contactGroup(const NSString &nibName, const std::shared_ptr<ZpContactDataInfo> &edited,
                                                    const id &unused);
    void setGroupInfo(const std::shared_ptr<NSMutableArray> &groups);
    void awakeFromNib() override;

    void saveContact(const id &sender);
    void cancelEditContact(const id &sender);
    void setPictureView(HNContactPhotoView &view) override;
    // Opens and closes the list of groups.
    void expandGroupInfoView();
    [[nodiscard]] bool isGroupListOpen() const { return isGroupListOpen_; }
    void closeGroupList();

    void sectionTextDidChange(ContactInfoView &section) override;
    void sectionDidBeginEditing(ContactInfoView &) override { closeGroupList(); }

private:
    void initContactofWindow();
    void showGroupList(bool open);
    void end(std::int64_t code);
    bool isGroupListOpen_ = false;
};
