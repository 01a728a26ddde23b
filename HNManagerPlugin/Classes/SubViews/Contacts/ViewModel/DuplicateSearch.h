// Finds groups of contacts that repeat one another.
//
// Rule     W is the list. While it has two contacts: its first one opens. First stage: of the others come those whose
//          items agree with the opener's (ContactRules.h, the opener at the right) and whose name agrees, or, where both
//          have telephone numbers, one of them is the opener's too (label and number), or, where not both have but both
//          have e-mails, one of these. Closure stage, over and over: of what is left come those whose items agree with
//          one that came last, whose name does not, and that share a number or e-mail that is not empty. A contact that
//          agrees with one of these by its name brings nobody in; kept: people know the groups so. What stays makes up W.
// Result   groups of two and more, in the order of their openers, the opener last in each.
// Lists    nothing of the contacts changes; the plain rule sorts lists for good, which nobody relies on here.
// Cost     grows with the number of contacts and of their numbers: a contact is met by key, never pair by pair.
// Threads  one search on one queue; the contacts must not change meanwhile. `isStopped` and `log` run inside.
#pragma once

#include <functional>
#include <string_view>

#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/DupContactGroupModel.h"

class DuplicateSearch {
public:
    // True ends the search at once, with the groups that are finished.
    using IsStopped = std::function<bool()>;
    using Log = std::function<void(std::string_view)>;

    [[nodiscard]] static DupContactGroups groupsOf(const ContactList &contacts, const IsStopped &isStopped = {},
                                                   const Log &log = {});
};
