// Looks for one text in many, ignoring case: the same answers as NSString::containsIgnoringCase without a folded copy of
// each text that is plain ASCII.
#pragma once

#include "toolkit/NSString.h"

namespace bookmarks {

class FoldedSearch {
public:
    explicit FoldedSearch(const NSString &text) : folded_(text.folded()) {}
    [[nodiscard]] bool isIn(const NSString &text) const;

private:
    NSString folded_;
};

}   // namespace bookmarks
