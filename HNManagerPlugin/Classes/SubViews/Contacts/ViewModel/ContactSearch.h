// Which contacts of a list hold a text in their name, a number or an e-mail, ignoring case: on the raw texts, none across two.
//
// Cost     a contact is folded once, as long as the list stays the same; each search compares its texts with those that
//          were folded, so that a changed contact is folded anew without anybody saying so.
// Threads  one at a time.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"
#include "toolkit/lists/NSArray.h"

class ContactSearch {
public:
    // By the place of the row; false for a row that is no contact. `text` is not empty.
    [[nodiscard]] std::vector<bool> matching(const NSString &text, const NSArray &rows);

private:
    struct Folded {
        const NSObject *row = nullptr;
        const ZpContactDataInfo *contact = nullptr;   // the same one; null where it is none
        std::size_t place = 0;
        std::vector<NSString> sources;
        std::string text;   // of all sources, parted by a byte that no text has
    };
    void meet(const NSArray::Items &rows);
    void fetchAhead(std::size_t at) const;
    // In the order in which the records lie in memory: a search is mostly waiting for it.
    std::vector<Folded> known_;
};
