#include "toolkit/NSAttributedString.h"

HN_CLASS_TABLE(NSAttributedString, NSObjectTable, .key("string", &NSAttributedString::string))
HN_CLASS_TABLE(NSMutableAttributedString, NSAttributedString)

bool TextAttributes::operator==(const TextAttributes &other) const {
    const bool sameFont = font == other.font || (font && other.font && font->isEqual(other.font.get()));
    return sameFont && sameColor(color, other.color) && underline == other.underline && link == other.link;
}

void NSAttributedString::init(NSString text, TextAttributes attributes) {
    text_ = std::move(text);
    runs_.clear();
    if (const std::size_t length = text_.length())
        runs_.push_back({{0, length}, std::move(attributes)});
}

TextAttributes NSAttributedString::attributesAtIndex(std::size_t index) const {
    for (const TextRun &run : runs_)
        if (index >= run.range.location && index < run.range.location + run.range.length)
            return run.attributes;
    return {};
}

std::vector<TextRun> NSAttributedString::linkRuns() const {
    std::vector<TextRun> links;
    for (const TextRun &run : runs_)
        if (!run.attributes.link.isEmpty())
            links.push_back(run);
    return links;
}

bool NSAttributedString::isEqual(const NSObject *other) const {
    const auto *text = dynamic_cast<const NSAttributedString *>(other);
    return text && text_ == text->text_ && runs_ == text->runs_;
}

// ---------------------------------------------------------------- NSMutableAttributedString

void NSMutableAttributedString::appendAttributedString(const NSAttributedString &tail) {
    const std::size_t start = text_.length();
    const std::vector<TextRun> added = tail.runs();   // a copy: the tail may be this text
    text_ = text_.stringByAppendingString(tail.string());
    for (TextRun run : added) {
        run.range.location += start;
        runs_.push_back(std::move(run));
    }
    joinEqualNeighbours();
}

void NSMutableAttributedString::appendText(const NSString &text, const TextAttributes &attributes) {
    appendAttributedString(*make<NSAttributedString>(text, attributes));
}

void NSMutableAttributedString::setFont(std::shared_ptr<NSFont> font, NSRange range) {
    changeAttributes(range, [&](TextAttributes &attributes) { attributes.font = font; });
}
void NSMutableAttributedString::setColor(std::shared_ptr<NSColor> color, NSRange range) {
    changeAttributes(range, [&](TextAttributes &attributes) { attributes.color = color; });
}
void NSMutableAttributedString::setUnderline(bool underline, NSRange range) {
    changeAttributes(range, [&](TextAttributes &attributes) { attributes.underline = underline; });
}
void NSMutableAttributedString::setLink(NSString link, NSRange range) {
    changeAttributes(range, [&](TextAttributes &attributes) { attributes.link = link; });
}

void NSMutableAttributedString::splitAt(std::size_t index) {
    for (auto run = runs_.begin(); run != runs_.end(); ++run) {
        const std::size_t end = run->range.location + run->range.length;
        if (index <= run->range.location || index >= end)
            continue;
        TextRun tail = *run;
        tail.range = {index, end - index};
        run->range.length = index - run->range.location;
        runs_.insert(run + 1, std::move(tail));
        return;
    }
}

void NSMutableAttributedString::joinEqualNeighbours() {
    std::vector<TextRun> joined;
    for (TextRun &run : runs_) {
        if (!joined.empty() && joined.back().attributes == run.attributes)
            joined.back().range.length += run.range.length;
        else
            joined.push_back(std::move(run));
    }
    runs_ = std::move(joined);
}
