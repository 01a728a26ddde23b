// Contacts as a CSV table in the vocabulary of our own CSV reader.
//
// Columns  the plain fields, then each kind of list as numbered groups ("Phone 1 - Type", "Phone 1 - Value", ...), as many
//          as the richest contact needs, at least one telephone number; a last column without texts closes the row, so
//          that neither the line end nor an odd quote of a value before it reaches the reader's repair of cut fields.
// Texts    quoted where they hold a comma or a quote. Backslashes are doubled; a line break is backslash-n in a plain field
//          and a blank in a group, whose reader takes them out. A group's type is never quoted, since the reader would
//          keep the quotes: commas, quotes and backslashes in it stand in full-width form. Of an instant message the part
//          that it lacks is backslash-n, since the reader drops what has an empty one.
// Lines    CRLF; one contact a line, the last one ended too. The reader cuts a line after each 102,399 bytes and refuses it where
//          that falls inside a character: such a contact is written all the same, for `isReadWhole` to tell, and a program
//          that looks at the file before the reader does can still take it.
// Left out pictures, completeName, country codes, list items without a value. Threads: any.
#pragma once

#include <string>
#include <string_view>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"
#include "device/contacts/TableColumns.h"

namespace device::contacts {

class TableText {
public:
    explicit TableText(const ContactList &contacts);

    void appendHeading(std::string &to) const;
    void appendRow(std::string &to, const ZpContactDataInfo &contact) const;
    // The reader's cuts of this row fall between characters, if anywhere.
    [[nodiscard]] static bool isReadWhole(std::string_view row);

private:
    GroupCounts most_{};
};

}  // namespace device::contacts
