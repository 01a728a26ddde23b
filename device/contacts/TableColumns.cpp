#include "device/contacts/TableColumns.h"

namespace device::contacts {

void appendHeadings(std::string &to, const GroupCounts &counts) {
    for (const std::string_view heading : kPlainHeadings)
        to.append(heading).append(",");
    for (std::size_t group = 0; group < counts.size(); ++group)
        for (std::size_t number = 1; number <= counts[group]; ++number) {
            const std::string front = std::string(kGroupHeadings[group].word) + " " + std::to_string(number) + " - ";
            to.append(front).append("Type,");
            for (const std::string_view part : kGroupHeadings[group].parts)
                to.append(front).append(part).append(",");
        }
}

std::size_t lineBreakAt(std::string_view text, std::size_t at) {
    const char c = text[at];
    if (c >= '\n' && c <= '\r')
        return 1;
    if (c == '\xC2')
        return text.substr(at).starts_with("\xC2\x85") ? 2 : 0;
    return c == '\xE2' && (text.substr(at).starts_with("\xE2\x80\xA8") || text.substr(at).starts_with("\xE2\x80\xA9")) ? 3 : 0;
}

}  // namespace device::contacts
