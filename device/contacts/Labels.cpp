#include "device/contacts/Labels.h"

namespace device::contacts {

namespace {

constexpr std::string_view kOpen = "_$!<", kClose = ">!$_";

constexpr std::string_view kOwnWords[] = {
    "Home",   "Work",   "Mobile", "Main",    "HomeFAX", "WorkFAX", "Pager",  "Other",   "HomePage",  "Anniversary", "Father",
    "Mother", "Parent", "Brother", "Sister", "Child",   "Friend",  "Spouse", "Partner", "Assistant", "Manager",
};

char lowered(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

bool isSameWord(std::string_view left, std::string_view right) {
    if (left.size() != right.size())
        return false;
    for (std::size_t i = 0; i < left.size(); ++i)
        if (lowered(left[i]) != lowered(right[i]))
            return false;
    return true;
}

}  // namespace

NSString typeOfLabel(const NSString &label) {
    if (label.isNil())
        return kNoLabel;
    std::string_view word = label.view();
    if (word.starts_with(kOpen))
        word.remove_prefix(kOpen.size());
    if (word.ends_with(kClose))
        word.remove_suffix(kClose.size());
    return word;
}

NSString labelOfType(const NSString &type) {
    for (const std::string_view word : kOwnWords)
        if (isSameWord(type.view(), word))
            return std::string(kOpen) + std::string(word) + std::string(kClose);
    return type;
}

}  // namespace device::contacts
