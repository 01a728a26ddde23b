// Whether a contact holds a text in its name, a number or an e-mail, ignoring case: on the raw texts, none across two.
//
// Use      setText, then `matches` for every contact of the list, from first to last.
// Cost     a contact is folded once, as long as the list keeps its order; each look-up compares its texts with those that
//          were folded, so that a changed contact is folded anew without anybody saying so.
// Threads  one at a time.
#pragma once

#include <string>
#include <vector>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"
#include "toolkit/lists/NSArray.h"

class ContactSearch {
public:
    // `text` is not empty.
    void setText(const NSString &text);
    [[nodiscard]] bool matches(const ZpContactDataInfo &contact);
    // Null for a row that is none.
    [[nodiscard]] static const ZpContactDataInfo *contactOf(const id &row);
    // Called before each `matches`, with the place of its row: most of a search is waiting for memory, so what the next rows
    // will ask for is fetched ahead.
    void fetchAhead(const NSArray &rows, std::size_t at) const;

private:
    struct Folded {
        const ZpContactDataInfo *contact = nullptr;
        std::vector<NSString> sources;
        std::string text;   // of all sources, parted by a byte that no text has
    };
    NSString folded_;
    // In the order of the walk: a look-up by key would cost more than the search itself.
    std::vector<Folded> known_;
    std::size_t next_ = 0;
};
