// Whether a contact holds a text in its name, a number or an e-mail, ignoring case: on the raw texts, none across two.
//
// Cost     a contact is folded once; each look-up compares its texts with those that were folded, so that a changed
//          contact is folded anew without anybody saying so.
// Threads  one at a time.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"

class ContactSearch {
public:
    // `text` is not empty.
    void setText(const NSString &text) { folded_ = text.folded(); }
    [[nodiscard]] bool matches(const ZpContactDataInfo &contact);
    // For records that have gone.
    void forgetAll() { known_.clear(); }

private:
    struct Folded {
        std::vector<NSString> sources;
        std::string text;   // of all sources, parted by a byte that no text has
    };
    NSString folded_;
    std::unordered_map<const ZpContactDataInfo *, Folded> known_;
};
