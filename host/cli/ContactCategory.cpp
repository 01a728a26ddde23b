#include "host/cli/ContactCategory.h"

#include <unordered_map>

#include "host/cli/Ending.h"
#include "toolkit/lists/NSArrayController.h"
#include "toolkit/lists/NSMutableArray.h"
#include "toolkit/views/NSTextField.h"

namespace host::cli {

namespace {

template <class T> std::vector<std::shared_ptr<T>> only(const NSArray &objects) {
    std::vector<std::shared_ptr<T>> found;
    for (const id &object : objects)
        if (auto record = std::dynamic_pointer_cast<T>(object))
            found.push_back(std::move(record));
    return found;
}

bool isOnShow(const Value &view) {
    const auto shown = std::dynamic_pointer_cast<NSView>(view.object());
    return shown && !shown->isHiddenOrHasHiddenAncestor();
}

}  // namespace

NSArray objectsOf(const Value &list) {
    if (list.isList())
        return NSArray::fromList(list.list());
    const auto array = std::dynamic_pointer_cast<NSMutableArray>(list.object());
    return array ? array->snapshot() : NSArray();
}

ContactList contactsOf(const Value &list) { return only<ZpContactDataInfo>(objectsOf(list)); }

ContactCategory::ContactCategory(Context &context) : context_(context) {
    PluginSession &plugin = context.plugin();
    context.run([&] { triple_ = plugin.choose(kContactsPlace); });
    if (const auto reason = context.counts().reason)
        throw CommandError(kNotOpened, reason->text);
    if (!triple_.viewModel)
        throw CommandError(kFailed, "");   // told by the guard
}

ContactList ContactCategory::rows() const { return contactsOf(triple_.viewModel->valueForKey("contents")); }
ContactGroupList ContactCategory::groups() const {
    return only<ContactGroupInfo>(objectsOf(triple_.viewModel->valueForKey("contactGroup")));
}
NSString ContactCategory::status() const { return triple_.viewManager->valueForKey("tableRowInfoString").text(); }

bool ContactCategory::search(const std::string &text) {
    const auto box = std::dynamic_pointer_cast<NSTextField>(triple_.viewManager->valueForKey("searchField").object());
    context_.run([&] {
        if (box)
            box->typeText(NSString(text));
        triple_.viewManager->perform("searchField:", {Value(box)});
    });
    const bool panelSaysSo = !triple_.viewManager->valueForKeyPath("noSearchResultViewCtrl.hiddenNoSearchFieldInfo").boolValue();
    return !(panelSaysSo && isOnShow(triple_.viewManager->valueForKey("noSearchField")));
}

bool ContactCategory::tellsOfCloud(Console &console) const {
    if (!isOnShow(triple_.viewManager->valueForKey("disable_iCloudView")))
        return false;
    for (const char *key : {"close_iCloud_title", "close_iCloud_Step_1", "close_iCloud_Step_2", "close_iCloud_Step_3"})
        if (const NSString text = triple_.viewManager->valueForKey(key).text(); !text.isEmpty())
            console.message(text.str());
    return true;
}

std::size_t ContactCategory::rowOf(const std::string &key) const {
    const ContactList all = rows();
    for (std::size_t row = 0; row < all.size(); ++row)
        if (all[row]->pKey() == NSString(key))
            return row;
    throw CommandError(kFailed, "no contact has the KEY " + key);
}

void ContactCategory::select(const NSIndexSet &rows) {
    const auto controller = std::dynamic_pointer_cast<NSArrayController>(triple_.viewModel->valueForKey("arrayController").object());
    context_.run([&] {
        if (controller)
            controller->setSelectionIndexes(rows);
    });
}

void ContactCategory::select(const std::vector<std::string> &keys) {
    std::unordered_map<NSString, std::size_t> places;
    const ContactList all = rows();
    for (std::size_t row = 0; row < all.size(); ++row)
        places.try_emplace(all[row]->pKey(), row);
    NSMutableIndexSet chosen;
    for (const std::string &key : keys) {
        const auto place = places.find(NSString(key));
        if (place == places.end())
            throw CommandError(kFailed, "no contact has the KEY " + key);
        chosen.addIndex(place->second);
    }
    select(chosen);
}

void ContactCategory::selectAll() {
    NSMutableIndexSet all;
    for (std::size_t row = 0, count = rows().size(); row < count; ++row)
        all.addIndex(row);
    select(all);
}

void printContacts(const ContactList &contacts, Console &console) {
    std::vector<std::vector<std::string>> rows;
    for (const auto &contact : contacts) {
        const auto &phones = contact->phone_numbers();
        const auto &emails = contact->emails();
        rows.push_back({forPeople(contact->pKey()), forPeople(contact->completeName()),
                        phones.empty() ? "" : forPeople(phones.front().phone_number),
                        emails.empty() ? "" : forPeople(emails.front().email)});
    }
    console.table(rows);
}

}  // namespace host::cli
