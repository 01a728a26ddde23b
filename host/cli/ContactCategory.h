// The contact category on show, as commands ask it. Threads: main.
#pragma once

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"
#include "host/cli/Context.h"
#include "toolkit/lists/NSArray.h"

namespace host::cli {

class ContactCategory {
public:
    // Shows the category on the device and waits for its list. Throws CommandError where the device's address book cannot
    // be read.
    explicit ContactCategory(Context &context);

    [[nodiscard]] const CategoryTriple &triple() const { return triple_; }
    // The rows on show, in their order.
    [[nodiscard]] ContactList rows() const;
    [[nodiscard]] ContactGroupList groups() const;
    // The status line as it stands; absent before there was one.
    [[nodiscard]] NSString status() const;
    // Types into the search box. False where nothing matched: the rows stay as they were.
    [[nodiscard]] bool search(const std::string &text);
    // The device keeps its contacts in the cloud: tells the panel's title and steps, true then.
    [[nodiscard]] bool tellsOfCloud(Console &console) const;
    // The row with that pKey. Throws CommandError where none has it.
    [[nodiscard]] std::size_t rowOf(const std::string &key) const;
    // Selects the rows with these pKeys, or all. Throws CommandError where one is missing; then the selection stays.
    void select(const std::vector<std::string> &keys);
    void selectAll();

private:
    void select(const NSIndexSet &rows);
    Context &context_;
    CategoryTriple triple_;
};

// Contacts under a value that is a list or a shared array.
[[nodiscard]] NSArray objectsOf(const Value &list);
[[nodiscard]] ContactList contactsOf(const Value &list);
// KEY, name, first phone number, first e-mail address.
void printContacts(const ContactList &contacts, Console &console);

}  // namespace host::cli
