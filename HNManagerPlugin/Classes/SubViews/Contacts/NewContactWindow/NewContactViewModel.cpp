#include "HNManagerPlugin/Classes/SubViews/Contacts/NewContactWindow/NewContactViewModel.h"

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
        section.reload();
    });
}

void NewContactViewModel::setDelegate(const std::weak_ptr<ContactInfoViewDelegate> &delegate) {
    visitSections(*this, [&](ContactInfoView &section) { section.delegate = delegate; });
}

bool NewContactViewModel::holdsText() const {
    bool holds = false;
    visitSections(*this, [&](ContactInfoView &section) { holds = holds || section.textFieldEdited; });
    return holds;
}
