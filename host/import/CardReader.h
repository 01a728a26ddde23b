// Reads the cards of any program: vCard 2.1, 3.0 and 4.0, and what is nearly one.
//
// Input    the bytes of a whole file: UTF-8, UTF-16 or UTF-32 with or without a mark, any charset by declaration per
//          property, else by how the letters lie.
// Result   one contact a card, in file order, through `visit`; what has no place in a contact stands in its `notCarried`.
//          What programs keep for themselves (UID, REV, ...) is counted instead, for one line at the end.
// Kept     a line that is none, text outside cards and a card whose end is missing before the next one are told; the rest
//          goes on.
// Errors   FatalParseFailure with file, line and reason: no card at all, or a file that ends within a card.
// Cost     one pass; beside the bytes one card (a file in UTF-16: also its text).
// Threads  one at a time.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/import/CardLines.h"
#include "host/import/CardProperty.h"
#include "host/import/Charset.h"
#include "host/import/ForeignContact.h"

namespace host::foreign {

class CardReader {
public:
    using Visit = std::function<void(ForeignContact &&)>;
    // A line of the file (0: the whole file) and what there is to say about it.
    using Tell = std::function<void(std::int64_t line, const std::string &text)>;

    // `file` only names it in a failure. The bytes must outlive this.
    CardReader(std::string_view bytes, std::string file, Tell tell);

    void read(const Visit &visit);

private:
    using Action = void (CardReader::*)(const CardProperty &);
    struct Row;
    static const Row kRows[];
    struct Item {   // what a label line may still name
        enum class List { phone, email, url, date, related, address, messenger } list;
        std::size_t index;
    };

    [[nodiscard]] std::string fallbackCharset() const;
    [[nodiscard]] std::string decode(std::string_view bytes, const std::optional<std::string> &charset);
    [[nodiscard]] std::string text(const CardProperty &p);
    [[nodiscard]] std::string trimmedText(const CardProperty &p) { return std::string(trimmed(text(p))); }
    [[nodiscard]] std::vector<std::string> parts(const CardProperty &p, char separator);

    // ---- cards
    bool isBegin(std::string_view line) const;
    bool isEnd(std::string_view line) const;
    void begin();
    void end(const Visit &visit);
    [[nodiscard]] bool isNested();
    void readLine();
    void dispatch(const CardProperty &p);
    void settleLabels();
    void settleNames();
    void settlePlaces();
    void leave(const std::string &what, std::string_view text) { contact_.leave(leftBehind(what, text)); }
    void note(const std::string &what);
    void noteParameters(const CardProperty &p);
    void tellCounted();

    // ---- properties
    [[nodiscard]] std::vector<std::string> typesOf(const CardProperty &p);
    [[nodiscard]] std::string labelOf(const CardProperty &p);
    void addItem(const CardProperty &p, Item::List list, std::size_t index);
    void setOnce(std::string &field, std::string value, const CardProperty &p);
    void addLabelled(std::vector<LabelledText> &list, Item::List kind, const CardProperty &p, std::string value);
    void addMessenger(const CardProperty &p, std::string service, std::string user);
    void addRelated(std::string label, std::string name);
    void addDate(std::string label, std::string date);
    void bookkeeping(const CardProperty &p) { note(p.name); }
    void version(const CardProperty &p);
    void name(const CardProperty &p);
    void formattedName(const CardProperty &p);
    void firstNameYomi(const CardProperty &p) { setOnce(contact_.firstNameYomi, trimmedText(p), p); }
    void lastNameYomi(const CardProperty &p) { setOnce(contact_.lastNameYomi, trimmedText(p), p); }
    void middleNameYomi(const CardProperty &p) { setOnce(contact_.middleNameYomi, trimmedText(p), p); }
    void nickname(const CardProperty &p);
    void organisation(const CardProperty &p);
    void department(const CardProperty &p) { setOnce(contact_.department, trimmedText(p), p); }
    void title(const CardProperty &p) { setOnce(contact_.jobTitle, trimmedText(p), p); }
    void role(const CardProperty &p);
    void birthday(const CardProperty &p);
    void noteText(const CardProperty &p);
    void photo(const CardProperty &p);
    void telephone(const CardProperty &p);
    void email(const CardProperty &p);
    void url(const CardProperty &p);
    void profile(const CardProperty &p);
    void address(const CardProperty &p);
    void addressLabel(const CardProperty &p);
    void messenger(const CardProperty &p);
    void ownMessenger(const CardProperty &p);
    void related(const CardProperty &p);
    void ownRelated(const CardProperty &p);
    void date(const CardProperty &p);
    void anniversary(const CardProperty &p);
    void ownItem(const CardProperty &p);
    void label(const CardProperty &p);
    void agent(const CardProperty &p);

    std::string_view bytes_;
    std::string whole_;   // a file in UTF-16, as UTF-8
    std::string file_;
    Tell tell_;
    Charsets charsets_;
    CardProperty::Decode decode_;
    mutable std::optional<std::string> fallback_;
    CardLines lines_{{}};

    bool isOpen_ = false, awaitsNested_ = false;
    int nested_ = 0;   // depth of cards within the card
    std::int64_t cards_ = 0;
    ForeignContact contact_;
    std::string formattedName_, role_;
    std::vector<LabelledText> addressLabels_;
    std::vector<PostalAddress> addresses_;
    std::set<std::string> nicknames_;
    std::map<std::string, std::vector<Item>> groups_;
    std::map<std::string, std::string> labels_;
    std::map<std::string, std::int64_t> counted_;
};

}  // namespace host::foreign
