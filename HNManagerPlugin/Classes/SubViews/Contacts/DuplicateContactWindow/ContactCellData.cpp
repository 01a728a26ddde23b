#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/ContactCellData.h"

HN_CLASS_TABLE(ContactCellData, NSObjectTable, .key("rawInfo", &ContactCellData::rawInfo))

double ContactCellData::height() const {
    constexpr double kName = 45.0, kLine = 24.0, kGap = 2.0;
    const auto lines = static_cast<double>(lineCount());
    return lines == 0 ? kName + kLine : kName + kLine * lines + kGap * lines;
}

void ContactCellData::removeLine(std::size_t line) {
    if (line < phoneNumbers.size())
        phoneNumbers.erase(phoneNumbers.begin() + static_cast<std::ptrdiff_t>(line));
    else if (line < lineCount())
        emails.erase(emails.begin() + static_cast<std::ptrdiff_t>(line - phoneNumbers.size()));
}
