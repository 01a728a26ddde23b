// The text functions of the CSV readers: quotes and the two placeholders, with all that a file written for them counts on.
//
// Units    bytes of UTF-8; a quote, a comma and a line break are one byte each and never part of another character.
// Marks    "&^HJ" stands for a backslash, "&^DouHao" for a comma inside quotes. Both are plain text of the record until the
//          last stage, so a file that holds them is changed; kept.
// Errors   OutOfRange where a function would read a character that is not there.
// Cost     one pass each. Threads: any.
#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

namespace csvText {

class OutOfRange : public std::exception {
public:
    explicit OutOfRange(const char *reason) : reason_(reason) {}
    ~OutOfRange() override;
    [[nodiscard]] const char *what() const noexcept override { return reason_; }

private:
    const char *reason_;
};

// Two backslashes become the mark of one, backslash-n and backslash-r the character.
[[nodiscard]] std::string replaceBackslashes(std::string_view text);
// Marks the commas inside quotes. The last character is never looked at. An empty text is out of range.
[[nodiscard]] std::string replaceCommaSymbol(std::string_view text);
[[nodiscard]] std::size_t countDoubleQuotationMarks(std::string_view text);
// Without the outer quotes, each pair inside as one. A text of one quote is out of range.
[[nodiscard]] std::string replaceDoubleQuotationMarkString(std::string_view text);
// Without line feeds and carriage returns; a quote goes unless another one stands behind it (at the end: before it), and
// whatever follows one that went is not looked at. A text of one quote is out of range.
[[nodiscard]] std::string deleteDoubleQuotationMarkString(std::string_view text);
// The marks back into a backslash and a comma.
[[nodiscard]] std::string changeCSVData(std::string_view text);

// A text cut at its commas, repaired (`combineDoubleQuotationMarkString:`): a field that starts with a quote takes on the
// fields behind it while these have four quotes or another even number above, and is closed by one that has an odd number
// and a quote at its end; one with an odd number and none there is dropped. A field with two quotes or none behind an open
// one ends it all: the fields then stand as they were cut. Without a close the field is added with what it took on, and the
// walk goes on at the one behind the opener.
class Fields {
public:
    // Keeps the places of at most `limit` fields; the text must outlive this.
    Fields(std::string_view text, std::size_t limit);
    [[nodiscard]] std::size_t count() const { return count_; }
    // False where the field surely has more than one byte.
    [[nodiscard]] bool isShort(std::size_t index) const { return spans_[index].end - spans_[index].begin <= 1; }
    // A field below `limit` and `count`; put together anew at each call.
    [[nodiscard]] std::string at(std::size_t index) const;

private:
    struct Span {
        std::size_t begin, end;   // the opener or the only field
        std::size_t behind;       // where the walk went on; `end` for a single field
    };
    bool combine();
    void cut();
    void add(const Span &span) {
        if (spans_.size() < limit_)
            spans_.push_back(span);
        ++count_;
    }
    [[nodiscard]] std::string_view fieldAt(std::size_t begin) const;

    std::string_view text_;
    std::size_t limit_, count_ = 0;
    std::vector<Span> spans_;
};

}   // namespace csvText
