// The words by which files tell the kinds of a number or an address apart, to the device's own.
//
// Words    "Home", "Work", "Mobile", "HomeFAX", ...; a person's own word stays as it stands. Empty: nothing tells.
// Threads  any.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host::foreign {

// From the type words of a card's property. `unused` gets the words that the label does not tell, without those that tell
// nothing ("VOICE", "INTERNET").
[[nodiscard]] std::string labelOfTypes(const std::vector<std::string> &types, std::vector<std::string> *unused = nullptr);
// From one text, as tables and label lines have it: "_$!<Mobile>!$_", "* Work", "workFax", "privat".
[[nodiscard]] std::string labelOfText(std::string_view text);
// A word that a card's TYPE may have; others are a person's own.
[[nodiscard]] bool isTypeWord(std::string_view word);

}  // namespace host::foreign
