#include "host/import/TableCells.h"

#include <algorithm>

#include "HNManagerPlugin/contracts/RVFoundation/FatalParseFailure.h"

namespace host::foreign {

TableCells::TableCells(std::string_view text, char separator, std::string file) : text_(text), separator_(separator), file_(std::move(file)) {}

std::string_view TableCells::cell(std::size_t index) const {
    if (index >= ends_.size())
        return {};
    const std::size_t begin = index == 0 ? 0 : ends_[index - 1];
    return std::string_view(row_).substr(begin, ends_[index] - begin);
}

bool TableCells::next() {
    if (at_ >= text_.size())
        return false;
    row_.clear();
    ends_.clear();
    line_ = ++taken_;
    for (;;) {
        if (at_ < text_.size() && text_[at_] == '"')
            takeQuoted();
        takePlain();
        ends_.push_back(row_.size());
        if (at_ >= text_.size() || takeLineEnd())
            return true;
        ++at_;   // the separator
    }
}

void TableCells::takeQuoted() {
    const std::int64_t opened = taken_;
    for (++at_;;) {
        const std::size_t quote = text_.find('"', at_);
        if (quote == std::string_view::npos)
            throw FatalParseFailure(file_, opened, "a quote that opens a cell here is never closed");
        const std::string_view piece = text_.substr(at_, quote - at_);
        row_.append(piece);
        taken_ += std::ranges::count(piece, '\n');
        at_ = quote + 1;
        if (at_ >= text_.size() || text_[at_] != '"')
            return;
        row_ += '"';
        ++at_;
    }
}

void TableCells::takePlain() {
    const char ends[] = {separator_, '\n', '\r'};
    const std::size_t end = std::min(text_.find_first_of(std::string_view(ends, sizeof ends), at_), text_.size());
    const std::string_view piece = text_.substr(at_, end - at_);
    isStrict_ = isStrict_ && (piece.empty() || (piece.find('"') == std::string_view::npos && (at_ == 0 || text_[at_ - 1] != '"')));
    row_.append(piece);
    at_ = end;
}

bool TableCells::takeLineEnd() {
    if (text_[at_] == separator_)
        return false;
    at_ += text_.substr(at_).starts_with("\r\n") ? 2 : 1;
    return true;
}

char separatorOf(std::string_view text) {
    std::size_t counts[3] = {};
    constexpr std::string_view kSeparators = ",;\t";
    bool isQuoted = false;
    for (const char c : text) {
        if (!isQuoted && (c == '\n' || c == '\r'))
            break;
        isQuoted = c == '"' ? !isQuoted : isQuoted;
        if (const std::size_t which = kSeparators.find(c); !isQuoted && which != std::string_view::npos)
            ++counts[which];
    }
    return kSeparators[static_cast<std::size_t>(std::ranges::max_element(counts) - counts)];
}

}  // namespace host::foreign
