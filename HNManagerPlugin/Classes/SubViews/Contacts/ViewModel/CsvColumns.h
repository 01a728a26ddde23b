// What the columns of a CSV file of contacts mean, by their headings. Threads: values.
#pragma once

#include <string_view>
#include <vector>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"

class CsvColumns {
public:
    enum class Kind { phone, email, address, website, im, relation, event, plain, ignored };
    struct Entry {
        Kind kind = Kind::ignored;
        std::size_t column = 0;   // the first one
        std::size_t width = 1;
        void (ZpContactDataInfo::*set)(NSString) = nullptr;   // of a plain one
    };

    // `headingLine` without its line end.
    explicit CsvColumns(std::string_view headingLine);

    [[nodiscard]] std::size_t count() const { return headings_.size(); }
    [[nodiscard]] const std::vector<NSString> &headings() const { return headings_; }
    // Columns that something is read from, ascending; of equal headings the last.
    [[nodiscard]] const std::vector<Entry> &entries() const { return entries_; }
    // A group in the last columns needs columns that are not there.
    [[nodiscard]] bool runsPastTheEnd() const { return runsPastTheEnd_; }

private:
    std::vector<NSString> headings_;
    std::vector<Entry> entries_;
    bool runsPastTheEnd_ = false;
};
