// The columns of our own CSV table: the plain fields, then each kind of list as numbered groups ("Phone 1 - Type",
// "Phone 1 - Value", "Phone 2 - Type", ...).
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace device::contacts {

inline constexpr std::string_view kPlainHeadings[] = {
    "Given Name",  "Given Name Yomi", "Additional Name", "Additional Name Yomi", "Family Name", "Family Name Yomi", "Nickname", "Name Prefix",
    "Name Suffix", "Birthday", "Notes", "Organization 1 - Name", "Organization 1 - Department", "Organization 1 - Title",
};

inline constexpr std::string_view kValuePart[] = {"Value"};
inline constexpr std::string_view kAddressParts[] = {"Postal Code", "Country", "Region", "City", "Street"};
inline constexpr std::string_view kMessengerParts[] = {"Service", "Value"};
struct GroupHeading {
    std::string_view word;
    std::span<const std::string_view> parts;   // behind the type
};
inline constexpr GroupHeading kGroupHeadings[] = {
    {"Phone", kValuePart},        {"E-mail", kValuePart},   {"Address", kAddressParts}, {"Website", kValuePart},
    {"IM", kMessengerParts}, {"Relation", kValuePart}, {"Event", kValuePart},
};

// How many groups of each kind a table has.
using GroupCounts = std::array<std::size_t, std::size(kGroupHeadings)>;

// A comma behind each.
void appendHeadings(std::string &to, const GroupCounts &counts);

// Bytes of a line break at `at`: those at which a line of the table would end for some reader; 0 without one.
std::size_t lineBreakAt(std::string_view text, std::size_t at);

}  // namespace device::contacts
