// Contacts as the table that the plug-in's readers take whole.
//
// Form     two columns in front that nobody reads: a cell in quotes and an empty one, behind which the readers' repair of cut
//          cells does nothing; one at the end, since the last character of a row is never looked at. A plain text has its line
//          breaks as backslash-n; where the readers take no quote or line break, others stand for them, which is told.
// Limits   see fits(): the readers take lines piece by piece, and may cut a character at the end of one.
// Threads  one at a time.
#pragma once

#include <cstdint>
#include <string>

#include "device/contacts/TableColumns.h"
#include "host/import/ForeignContact.h"

namespace host::foreign {

class TableWriter {
public:
    // All contacts come here once before the heading is written.
    void measure(const ForeignContact &contact);
    // The table would come in whole, and is not much larger than `bytes`. Else the contacts go over as cards.
    [[nodiscard]] bool fits(std::size_t bytes) const;

    void appendHeading(std::string &to) const;
    // Adds to `contact.notCarried` what the dialect changes.
    void appendRow(std::string &to, ForeignContact &contact) const;

private:
    device::contacts::GroupCounts most_{};
    std::size_t longest_ = 0, rows_ = 0;
    bool hasPicture_ = false;
};

}  // namespace host::foreign
