// One contact as the merge window shows it, or what a group becomes. Threads: main.
#pragma once

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"

class ContactCellData : public NSObject {
public:
    HN_DECLARE_CLASS_TABLE

    std::shared_ptr<ZpContactDataInfo> rawInfo;
    std::int64_t indexTag = 0;
    std::vector<NSString> names;
    std::vector<ZpPhoneNumberDataInfo> phoneNumbers;   // with a number
    std::vector<ZpEmailDataInfo> emails;               // with an address

    // Points: a place for the name and a line for each number and e-mail, or one empty line.
    [[nodiscard]] double height() const;
    // The lines in the order on show.
    [[nodiscard]] std::size_t lineCount() const { return phoneNumbers.size() + emails.size(); }
    void removeLine(std::size_t line);
};
