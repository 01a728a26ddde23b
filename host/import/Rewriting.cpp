#include "host/import/Rewriting.h"

#include "host/import/CardReader.h"
#include "host/import/CardWriter.h"
#include "host/import/TableReader.h"
#include "host/import/TableWriter.h"

namespace host::foreign {

namespace {

// Hands on what has gathered, a MiB at a time.
class Gathering {
public:
    explicit Gathering(const Write &write) : write_(write) {}
    [[nodiscard]] std::string &text() { return text_; }
    void flush(std::size_t from) {
        if (text_.size() < from)
            return;
        write_(text_);
        text_.clear();
    }
    static constexpr std::size_t kMost = std::size_t{1} << 20;

private:
    const Write &write_;
    std::string text_;
};

std::string named(const char *kind, const ForeignContact &contact) {
    return std::string(kind) + " " + std::to_string(contact.number) + leftBehind("", contact.title());
}

// What each column became, for people; columns without any text are counted.
std::string tableOf(const TableReader &reader) {
    constexpr std::size_t kMost = 200;
    std::string text = "what each column becomes:";
    std::size_t told = 0, empty = 0;
    for (std::size_t i = 0; i < reader.columns().size(); ++i) {
        const Column &column = reader.columns()[i];
        if (reader.filled()[i] == 0)
            ++empty;
        else if (++told <= kMost)
            text += "\n  " + leftBehind("column " + std::to_string(i + 1), column.heading) + ": " + meaningOf(column);
    }
    if (told > kMost)
        text += "\n  and " + std::to_string(told - kMost) + " more columns";
    return empty == 0 ? text : text + "\n  columns without any text: " + std::to_string(empty);
}

}  // namespace

void tellLeftBehind(const char *kind, const ForeignContact &contact, const TellLine &tell) {
    if (contact.notCarried.empty())
        return;
    std::string text = named(kind, contact) + " leaves behind: ";
    for (std::size_t i = 0; i < contact.notCarried.size(); ++i)
        text.append(i == 0 ? "" : "; ").append(contact.notCarried[i]);
    if (contact.alsoNotCarried > 0)
        text += "; and " + std::to_string(contact.alsoNotCarried) + " more";
    tell(contact.line, text);
}

Rewritten rewriteCards(std::string_view bytes, const std::string &name, const Write &write, const TellLine &tell) {
    Rewritten result;
    Gathering out(write);
    CardReader(bytes, name, tell).read([&](ForeignContact &&contact) {
        if (contact.isEmpty()) {
            tellLeftBehind("card", contact, tell);
            return tell(contact.line, "card " + std::to_string(contact.number) + " holds nothing that a contact has; it is left out");
        }
        appendCard(out.text(), contact);
        ++result.contacts;
        tellLeftBehind("card", contact, tell);
        out.flush(Gathering::kMost);
    });
    out.flush(1);
    return result;
}

Rewritten rewriteTable(std::string_view bytes, const std::string &name, const Write &write, const TellLine &tell) {
    TableReader reader(bytes, name, tell);
    TableWriter table;
    reader.read([&](ForeignContact &&contact) {
        if (!contact.isEmpty())
            table.measure(contact);
    });
    tell(reader.headingLine(), tableOf(reader));
    Rewritten result;
    result.isTable = table.fits(bytes.size());
    Gathering out(write);
    if (result.isTable)
        table.appendHeading(out.text());
    reader.read([&](ForeignContact &&contact) {
        if (contact.isEmpty()) {
            tellLeftBehind("row", contact, tell);
            return tell(contact.line, "row " + std::to_string(contact.number) + " holds nothing that a contact has; it is left out");
        }
        result.isTable ? table.appendRow(out.text(), contact) : appendCard(out.text(), contact);
        ++result.contacts;
        tellLeftBehind("row", contact, tell);
        out.flush(Gathering::kMost);
    });
    out.flush(1);
    return result;
}

}  // namespace host::foreign
