// A text with runs of attributes: font, colour, underline, link (an action range).
//
// Units    ranges count characters (code points), as NSString does.
// Absent   an attribute that a run does not set is null, false or absent; whoever shows the text uses its own.
// Threads  NSAttributedString: any, it never changes. NSMutableAttributedString: one.
#pragma once

#include <memory>
#include <vector>

#include "toolkit/NSColor.h"
#include "toolkit/NSFont.h"
#include "toolkit/NSObject.h"

struct TextAttributes {
    std::shared_ptr<NSFont> font;
    std::shared_ptr<NSColor> color;
    bool underline = false;
    // What a click on the run means: an address or any text that its owner knows.
    NSString link;
    bool operator==(const TextAttributes &other) const;
};

struct TextRun {
    NSRange range;
    TextAttributes attributes;
    bool operator==(const TextRun &) const = default;
};

class NSAttributedString : public NSObject {
public:
    static constexpr bool kEndsOnAnyThread = true;

    using NSObject::init;
    void init(NSString text, TextAttributes attributes = {});
    [[nodiscard]] const NSString &string() const { return text_; }
    [[nodiscard]] std::size_t length() const { return text_.length(); }
    // In order, without gaps, neighbours differ; none for an empty text.
    [[nodiscard]] const std::vector<TextRun> &runs() const { return runs_; }
    // Attributes of the character; the default ones behind the end.
    [[nodiscard]] TextAttributes attributesAtIndex(std::size_t index) const;
    [[nodiscard]] std::vector<TextRun> linkRuns() const;

    [[nodiscard]] bool isEqual(const NSObject *other) const override;
    [[nodiscard]] NSString description() const override { return text_; }
    HN_DECLARE_CLASS_TABLE

protected:
    NSString text_;
    std::vector<TextRun> runs_;
};

class NSMutableAttributedString : public NSAttributedString {
public:
    void appendAttributedString(const NSAttributedString &tail);
    void appendText(const NSString &text, const TextAttributes &attributes = {});
    // Each changes what `change` touches in the range, which is cut to the text.
    template <class Change> void changeAttributes(NSRange range, Change &&change) {
        splitAt(range.location);
        splitAt(range.location + range.length);
        for (TextRun &run : runs_)
            if (run.range.location >= range.location && run.range.location < range.location + range.length)
                change(run.attributes);
        joinEqualNeighbours();
    }
    void setFont(std::shared_ptr<NSFont> font, NSRange range);
    void setColor(std::shared_ptr<NSColor> color, NSRange range);
    void setUnderline(bool underline, NSRange range);
    void setLink(NSString link, NSRange range);
    HN_DECLARE_CLASS_TABLE

private:
    void splitAt(std::size_t index);
    void joinEqualNeighbours();
};
