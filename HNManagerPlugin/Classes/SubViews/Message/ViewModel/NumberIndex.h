// Finds the contact of a number as a walk over all contacts and all their numbers would: the first contact in the list's order,
// one of whose numbers is, without U+00A0 and "-", exactly the number. No other normalisation takes place: a number with
// blanks or a country prefix does not match.
//
// Threads   immutable; any. The contacts are kept.
#pragma once

#include <unordered_map>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"

class NumberIndex {
public:
    explicit NumberIndex(const ContactList &contacts);
    // Null where no contact has the number.
    [[nodiscard]] const ZpContactDataInfo *contactOf(const NSString &number) const;

private:
    ContactList contacts_;
    std::unordered_map<NSString, const ZpContactDataInfo *> byNumber_;
};
