#include "HNManagerPlugin/Classes/SubViews/Contacts/NewContactWindow/NewContactDialogWindow.h"

#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIButton.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUICheckBox.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindow.h"
#include "HNManagerPlugin/contracts/RVUIKit/UIThemeColor.h"
#include "toolkit/views/NSApplication.h"

namespace {

using Owner = std::shared_ptr<NewContactDialogWindow>;
using Section = ContactInfoView;
using C = ZpContactDataInfo;

constexpr double kWidth = 480, kHeight = 560, kMargin = 20, kPicture = 96, kField = 30, kType = 70;
constexpr double kInner = kWidth - 2 * kMargin;

// A press outside the list of groups closes it, whatever lies there: the press itself goes on to that.
class EditorContent : public NSView {
public:
    std::weak_ptr<NewContactDialogWindow> editor;
    std::weak_ptr<NSView> groupList;
    [[nodiscard]] bool isFlipped() const override { return true; }
    [[nodiscard]] std::shared_ptr<NSView> hitTest(NSPoint point) override {
        const auto &event = NSApp()->currentEvent();
        const auto list = groupList.lock();
        if (event && event->type == NSEventType::leftMouseDown && list && !list->frame().contains(convertPoint_fromView(event->locationInWindow, nullptr)))
            tell(editor, [](NewContactDialogWindow &window) { window.closeGroupList(); });
        return NSView::hitTest(point);
    }
};

std::shared_ptr<NSTextField> field(const char *identifier, const char *hint, const NSRect &frame) {
    auto made = make<NSTextField>(frame);
    made->setIdentifier(identifier);
    if (hint)
        made->setPlaceholderString(localized(hint));
    return made;
}

std::shared_ptr<Section> section(Nib &nib, const std::shared_ptr<NSView> &root, std::int64_t index, Section::Rows rows,
                                 const NSRect &frame) {
    const auto made = nib.make<Section>(frame);
    made->index = index;
    made->rows = rows;
    root->addSubview(made);
    return made;
}

std::shared_ptr<NSTableView> rowsTable(Nib &nib, const std::shared_ptr<Section> &owner, double width, double height, ReuseQueue::Maker maker) {
    const auto table = nib.make<NSTableView>(NSRect(0, 0, width, height));
    table->setHeaderView(nullptr);
    table->setEnabled(false);   // its rows are for their controls, not to be chosen
    const auto column = make<NSTableColumn>(NSString("row"));
    column->setWidth(width - 3);
    column->setEditable(false);
    table->addTableColumn(column);
    table->registerMaker_forIdentifier(std::move(maker), "row");
    owner->tableView = table;
    return table;
}

std::shared_ptr<NSView> textRow() {
    const auto cell = make<NSTableCellView>(NSRect(0, 0, kInner, kField));
    cell->setIdentifier("row");
    const auto type = NSTextField::labelWithString("");
    type->setIdentifier("Type");
    type->setFrame({0, 4, kType - 8, 22});
    cell->addSubview(type);
    const auto text = field("row", nullptr, {kType, 2, kInner - kType - 6, 26});
    cell->addSubview(text);
    cell->setTextField(text);
    return cell;
}

std::shared_ptr<Section> listSection(Nib &nib, const std::shared_ptr<NSView> &root, std::int64_t index, Section::Rows rows,
                                     const char *name, double top) {
    constexpr double kSectionHeight = 2 * (kField + 2);
    const auto made = section(nib, root, index, rows, {kMargin, top, kInner, kSectionHeight});
    const auto table = rowsTable(nib, made, kInner, kSectionHeight, textRow);
    table->setRowHeight(kField);
    table->setIdentifier(name);
    table->setAccessibilityName(localized(name));
    made->addSubview(table);
    table->setDelegate(made);
    table->setDataSource(made);
    return made;
}

std::shared_ptr<NSView> nameSection(Nib &nib, const Owner &owner, const std::shared_ptr<NSView> &root) {
    constexpr double kLeft = kMargin + kPicture + 16, kNames = kWidth - kLeft - kMargin;
    const auto made = section(nib, root, 0, Section::Rows::none, {kLeft, kMargin, kNames, 3 * kField + 6});
    const auto add = [&](const char *identifier, const char *hint, double top, Section::Read read, Section::Write write) {
        const auto text = field(identifier, hint, {0, top, kNames, 26});
        made->addSubview(text);
        made->bindField(text, read, write);
        return text;
    };
    const auto first = add("first", "ContactView_FirstName", 0, &C::first_name, &C::setFirst_name);
    made->textField_1 = first;
    made->textField_2 = add("last", "ContactView_LastName", kField + 3, &C::last_name, &C::setLast_name);
    made->textField_3 = add("company", "ContactView_Company", 2 * (kField + 3), &C::company_name, &C::setCompany_name);
    owner->viewModel->nameGroup = made;
    return first;
}

void noteSection(Nib &nib, const Owner &owner, const std::shared_ptr<NSView> &root, double top) {
    const auto made = section(nib, root, 3, Section::Rows::none, {kMargin, top, kInner, 80});
    const auto text = field("note", "ContactView_note", {0, 0, kInner, 80});
    made->addSubview(text);
    made->bindField(text, &C::notes, &C::setNotes);
    made->textField_1 = text;
    owner->viewModel->noteGroup = made;
}

void picture(Nib &nib, const Owner &owner, const std::shared_ptr<NSView> &root) {
    const auto view = nib.make<HNContactPhotoView>(NSRect(kMargin, kMargin, kPicture, kPicture));
    view->setIdentifier("Picture");
    view->setAccessibilityName(localized("ContactView_PictureName"));
    const auto photo = nib.make<NSImageView>(NSRect(3, 3, kPicture - 6, kPicture - 6));
    const auto hint = NSTextField::labelWithString(localized("ContactView_ChoosePicture"));
    hint->setFrame({0, 4, kPicture, 18});
    hint->setAlignment(NSTextAlignment::center);
    hint->setHidden(true);
    view->addSubview(photo);
    view->addSubview(hint);
    view->photo = photo;
    view->text = hint;
    view->addTrackingArea(make<NSTrackingArea>(NSRect(), view));
    root->addSubview(view);
    owner->photoView = view;
}

void groupSection(Nib &nib, const Owner &owner, const std::shared_ptr<EditorContent> &root, double top) {
    constexpr double kMost = 140;
    const auto holder = nib.make<EditorContent>(NSRect(kMargin, top, kInner, kMost));
    const auto button = nib.make<NSButton>(NSRect(0, 4, 22, 22));
    button->setIdentifier("GroupList");
    button->setBordered(false);
    button->setImagePosition(NSCellImagePosition::imageOnly);
    button->setAccessibilityName(localized("ContactView_Group"));
    button->connect(owner, "expandGroupInfoView");
    const auto title = NSTextField::labelWithString(localized("ContactView_OnDevice"));
    title->setFont(NSFont::fontWithName_size("HelveticaNeue", 13.0));
    title->setFrame({28, 4, kInner - 28, 22});
    const auto rows = nib.make<Section>(NSRect(0, 0, NewContactDialogWindow::kGroupWidth, kMost));
    rows->index = 4;
    rows->rows = Section::Rows::groups;
    const auto table = rowsTable(nib, rows, NewContactDialogWindow::kGroupWidth, kMost, [target = std::weak_ptr(rows)] {
        const auto cell = make<NSTableCellView>(NSRect(0, 0, NewContactDialogWindow::kGroupWidth, 30));
        cell->setIdentifier("row");
        const auto box = make<RUICheckBox>(NSRect(8, 5, NewContactDialogWindow::kGroupWidth - 16, 20));
        box->setIdentifier("Group");
        box->connect(target.lock(), "onGroupCheckBox:");
        cell->addSubview(box);
        return cell;
    });
    table->setRowHeight(NewContactDialogWindow::kGroupHeight - 2);
    table->setIdentifier("Groups");
    table->setAccessibilityName(localized("ContactView_Group"));
    table->setDelegate(rows);
    table->setDataSource(rows);
    const auto scroll = nib.make<NSScrollView>(NSRect(0, NewContactDialogWindow::kClosedHeight, NewContactDialogWindow::kGroupWidth, 0));
    scroll->setDocumentView(table);
    scroll->setHasVerticalScroller(true);
    for (const std::shared_ptr<NSView> &view : NSView::List{button, title, scroll})
        holder->addSubview(view);
    root->addSubview(holder);
    root->editor = owner;
    root->groupList = holder;
    owner->groupButton = button;
    owner->contactGroup = rows;
    owner->groupContainer = scroll;
}

void build(Nib &nib) {
    const auto owner = nib.owner<NewContactDialogWindow>();
    const auto window = nib.make<RUIDialogWindow>(NSRect(0, 0, kWidth, kHeight));
    const auto root = nib.make<EditorContent>(NSRect(0, 0, kWidth, kHeight));
    window->setContentView(root);
    owner->viewModel->container = root;
    picture(nib, owner, root);
    window->setInitialFirstResponder(nameSection(nib, owner, root));
    constexpr double kPhones = kMargin + kPicture + 16, kEmails = kPhones + 76, kNote = kEmails + 76, kGroups = kNote + 92;
    owner->viewModel->phoneGroup = listSection(nib, root, 1, Section::Rows::phones, "ContactView_Phone_Number", kPhones);
    owner->viewModel->emailGroup = listSection(nib, root, 2, Section::Rows::emails, "ContactView_Email", kEmails);
    noteSection(nib, owner, root, kNote);
    groupSection(nib, owner, root, kGroups);
    const auto button = [&](double x, const char *identifier, const char *key, const char *action) {
        const auto made = nib.make<RUIButton>(NSRect(x, kHeight - 42, 104, 28));
        made->setIdentifier(identifier);
        made->setKeyEquivalent(key);
        made->connect(owner, action);
        root->addSubview(made);
        return made;
    };
    const auto cancel = button(kWidth - kMargin - 220, "Cancel", "\x1b", "cancelEditContact:");
    cancel->setBorderColor(UIThemeColor());
    owner->cancelButton = cancel;
    const auto save = button(kWidth - kMargin - 104, "Save", "\r", "saveContact:");
    owner->saveButton = save;
    owner->saveEnabled.observe([link = std::weak_ptr(save)](const bool &enabled) {
        tell(link, [enabled](NSButton &b) { b.setEnabled(enabled); });
    });
    window->center();
    nib.setWindow(window);
}

const NibRegistry::Entry entry("NewContactDialogWindow", build);

}   // namespace
