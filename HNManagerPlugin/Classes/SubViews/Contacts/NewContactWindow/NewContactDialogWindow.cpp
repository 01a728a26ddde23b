#include "HNManagerPlugin/Classes/SubViews/Contacts/NewContactWindow/NewContactDialogWindow.h"

#include <algorithm>

#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVFoundation/RVMFileManager.h"
#include "toolkit/dispatch/Queue.h"
#include "toolkit/services/NSBundle.h"
#include "toolkit/views/NSApplication.h"

HN_CLASS_TABLE(NewContactDialogWindow, NSWindowController,
               .key("contact", &NewContactDialogWindow::contact)
                   .key("saveEnabled", &NewContactDialogWindow::saveEnabled)
                   .key("group", &NewContactDialogWindow::group)
                   .selector("saveContact:", &NewContactDialogWindow::saveContact)
                   .selector("cancelEditContact:", &NewContactDialogWindow::cancelEditContact)
                   .selector("expandGroupInfoView", &NewContactDialogWindow::expandGroupInfoView))

void NewContactDialogWindow::initWithWindowNibName_contact_contactGroup(const NSString &nibName,
                                                                        const std::shared_ptr<ZpContactDataInfo> &edited, const id &) {
    initWithWindowNibName(nibName);
    contact = edited;
    groupInfo = make<NSMutableArray>();
    viewModel = make<NewContactViewModel>();
}

void NewContactDialogWindow::setGroupInfo(const std::shared_ptr<NSMutableArray> &groups) {
    groupInfo = groups;
    tell(contactGroup, [&](ContactInfoView &section) {
        section.groups = groups;
        section.reload();
    });
}

// ---------------------------------------------------------------- start

void NewContactDialogWindow::initContactofWindow() {
    if (!contact) {
        contact = make<ZpContactDataInfo>();
        contact->mutable_phone_numbers() = {{"Home", NSString()}, {"Work", NSString()}};
        contact->mutable_emails() = {{"Home", NSString()}, {"Work", NSString()}};
    }
    while (contact->phone_numbers().size() < ContactInfoView::kRows)
        contact->mutable_phone_numbers().push_back({"Home", NSString()});
    while (contact->emails().size() < ContactInfoView::kRows)
        contact->mutable_emails().push_back({"Home", NSString()});
}

void NewContactDialogWindow::awakeFromNib() {
    NSWindowController::awakeFromNib();
    initContactofWindow();
    viewModel->setEditing(weakOf(this));
    viewModel->setContact(contact);
    tell(contactGroup, [this](ContactInfoView &section) {
        section.groups = groupInfo;
        section.delegate = viewModel;
        section.reload();
    });
    showGroupList(false);
    tell(cancelButton, [](NSButton &button) { button.setTitle(localized("FileManager_Cancel")); });
    tell(saveButton, [](NSButton &button) { button.setTitle(localized("FileManager_Save")); });
    tell(photoView, [this](HNContactPhotoView &view) {
        view.delegate = weakOf(this);
        view.setPhoto(contact->image_data());
    });
    group = localized("ContactView_Group");
    // The rows exist only after the tables have loaded.
    dispatch::async(dispatch::main(), [model = viewModel] {
        tell(model->phoneGroup, [](ContactInfoView &section) { section.setRowHint(localized("ContactView_Phone_Number")); });
        tell(model->emailGroup, [](ContactInfoView &section) { section.setRowHint(localized("ContactView_Email")); });
    });
}

// ---------------------------------------------------------------- editing

// Two hops, so that every section has taken the text before it is asked.
void NewContactDialogWindow::sectionTextDidChange(ContactInfoView &) {
    dispatch::async(dispatch::global(), [weak = weakOf(this)]() mutable {
        dispatch::async(dispatch::main(), [weak = std::move(weak)] {
            tell(weak, [](NewContactDialogWindow &self) { self.saveEnabled = self.viewModel->holdsText(); });
        });
    });
}

// A panel without a choice takes the picture away.
void NewContactDialogWindow::setPictureView(HNContactPhotoView &view) {
    const auto paths = RVMFileManager::openPanelWithFileType_directory_allowMutiSelect({"jpg", "png", "jpeg"},
                                                                                       RVMFileManager::photoPath(), false);
    const NSString path = paths.empty() ? NSString() : paths.front();
    const auto image = path.isEmpty() ? nullptr : NSImage::withContentsOfFile(path);
    view.setPhoto(image);
    contact->setImage_data(image);
    contact->setImagePath(path);
}

void NewContactDialogWindow::end(std::int64_t code) {
    NSApp()->stopModalWithCode(code);
    close();
}

void NewContactDialogWindow::saveContact(const id &) { end(kSave); }
void NewContactDialogWindow::cancelEditContact(const id &) { end(kCancel); }

// ---------------------------------------------------------------- groups

void NewContactDialogWindow::showGroupList(bool open) {
    isGroupListOpen_ = open;
    const double list = kGroupHeight * static_cast<double>(groupInfo->count());
    tell(groupContainer, [&](NSScrollView &container) {
        const NSRect frame = container.frame();
        const double height = open ? std::min(list, container.superview()->bounds().size.height - kClosedHeight) : 0;
        container.setHidden(!open);
        container.setFrame({frame.origin.x, kClosedHeight, kGroupWidth, height});
    });
    tell(contactGroup, [&](ContactInfoView &section) { section.setFrameSize({kGroupWidth, list + kClosedHeight}); });
    tell(groupButton, [&](NSButton &button) {
        button.setImage(NSBundle::bundleForClass()->imageForResource_ofType(open ? "icon_Dropdown_arrow" : "icon_arrow1", "png"));
    });
}

void NewContactDialogWindow::expandGroupInfoView() { showGroupList(!isGroupListOpen_); }

void NewContactDialogWindow::closeGroupList() {
    if (isGroupListOpen_)
        showGroupList(false);
}
