#include "HNManagerPlugin/Classes/SubViews/Contacts/NewContactWindow/NewContactViewModel.h"

#include <algorithm>

HN_CLASS_TABLE(NewContactViewModel, NSObjectTable)

namespace {

template <class Visit>
void visitSections(const NewContactViewModel &model, Visit &&visit) {
    for (const auto &section : {model.nameGroup, model.phoneGroup, model.emailGroup, model.noteGroup})
        tell(section, visit);
}

}   // namespace

void NewContactViewModel::setContact(const std::shared_ptr<ZpContactDataInfo> &contact) {
    visitSections(*this, [&](ContactInfoView &section) {
        section.contactEntity = contact;
        section.delegate = weakOf(this);
        section.reload();
    });
}

void NewContactViewModel::setEditing(const std::weak_ptr<ContactInfoViewEditing> &editing) {
    visitSections(*this, [&](ContactInfoView &section) { section.editing = editing; });
}

bool NewContactViewModel::holdsText() const {
    bool holds = false;
    visitSections(*this, [&](ContactInfoView &section) { holds = holds || section.textFieldEdited; });
    return holds;
}

// ---------------------------------------------------------------- heights

void NewContactViewModel::changeHeight(ContactInfoView &section, double by) {
    const NSRect before = section.frame();
    section.setFrameSize({before.size.width, std::max(0.0, before.size.height + by)});
    const double moved = section.frame().size.height - before.size.height;
    tell(container, [&](NSView &all) {
        for (const auto &view : all.subviews())
            if (const NSRect frame = view->frame(); std::dynamic_pointer_cast<ContactInfoView>(view) && frame.origin.y > before.origin.y)
                view->setFrameOrigin({frame.origin.x, frame.origin.y + moved});
    });
}

void NewContactViewModel::ContactInfoView_viewIndex_selectRow(ContactInfoView &view, std::int64_t, std::int64_t) {
    changeHeight(view, -kItemHeight);
}

void NewContactViewModel::onSectionButton(ContactInfoView &section) {
    changeHeight(section, kItemHeight);
    section.addItem("xxxx");
}
