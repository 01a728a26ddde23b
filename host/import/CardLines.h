// The logical lines of a card file: folded lines, soft breaks of quoted-printable and base64 over several lines joined.
//
// Input    bytes of any charset whose line ends and ASCII are those of ASCII. Lines end at LF, with any number of CR before
//          it; at CR in a file without LF.
// Folding  a line that begins with a blank or a tab goes on; that one character is left out (RFC 2426, RFC 6350). vCard 2.1
//          folds where a blank stands, so there one stays (`keepsBlank`).
// Breaks   a quoted-printable line that ends with "=" goes on below, unless a card ends there. Base64 goes on over lines of
//          base64, indented or not.
// Cost     one pass; a line is held once.
// Threads  one at a time.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace host::foreign {

class CardLines {
public:
    // The bytes must outlive this.
    explicit CardLines(std::string_view bytes);

    // The next line that is not blank; false at the end. `line` is valid until the next call.
    [[nodiscard]] bool next();
    [[nodiscard]] std::string_view line() const { return line_; }
    // Of its first physical line, from 1.
    [[nodiscard]] std::int64_t number() const { return number_; }
    void keepBlanks(bool keeps) { keepsBlank_ = keeps; }

private:
    [[nodiscard]] bool atEnd() const { return at_ >= bytes_.size(); }
    [[nodiscard]] std::string_view peek() const;
    std::string_view take();
    void noteHead();
    [[nodiscard]] bool appendNext();
    void appendFolded(std::string_view line);

    std::string_view bytes_;
    char lineEnd_ = '\n';
    std::size_t at_ = 0;
    std::int64_t taken_ = 0, number_ = 0;
    bool keepsBlank_ = false;
    std::string line_;
    bool hasHead_ = false, isQuotedPrintable_ = false, isBase64_ = false;
};

}  // namespace host::foreign
