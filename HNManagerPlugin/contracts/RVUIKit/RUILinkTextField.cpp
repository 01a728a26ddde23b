#include "HNManagerPlugin/contracts/RVUIKit/RUILinkTextField.h"

#include "HNManagerPlugin/contracts/RVUIKit/UIThemeColor.h"
#include "toolkit/services/NSWorkspace.h"

HN_CLASS_TABLE(RUILinkTextField, NSTextField)

void RUILinkTextField::initWithFrame(const NSRect &frame) {
    NSTextField::initWithFrame(frame);
    setEditable(false);
    setBordered(false);
    setDrawsBackground(false);
}

void RUILinkTextField::setLinkText_withURL(const NSString &text, const NSString &address) {
    drawLinkTextFiledAttributed_LinkString_textColor_underlineColor_font_withURL(*this, text, text, UIThemeColor(), UIThemeColor(),
                                                                                 nullptr, address);
    setHidden(false);
}

void RUILinkTextField::drawActionAttributedTextField(const std::shared_ptr<NSAttributedString> &text) {
    constexpr const char *kAction = "action";
    const auto shown = make<NSMutableAttributedString>();
    shown->appendAttributedString(*text);
    for (const TextRun &run : text->runs())
        if (run.attributes.underline)
            shown->setLink(kAction, run.range);
    setAttributedStringValue(shown);
    linkClicked = [self = weakOf(this)](const NSString &) { tell(self, [](RUILinkTextField &field) { field.sendAction(); }); };
}

NSString RUILinkTextField::linkURL() const {
    const std::vector<TextRun> links = attributedStringValue()->linkRuns();
    return links.empty() ? NSString() : links.front().attributes.link;
}

void drawLinkTextFiledAttributed_LinkString_textColor_underlineColor_font_withURL(
    NSTextField &field, const NSString &text, const NSString &linkText, const std::shared_ptr<NSColor> &textColor,
    const std::shared_ptr<NSColor> &underlineColor, const std::shared_ptr<NSFont> &font, const NSString &address) {
    const auto shown = make<NSMutableAttributedString>();
    shown->appendText(text, TextAttributes{font, textColor, false, {}});
    // Folding keeps the number of characters, so the range holds in the text itself.
    if (const auto range = text.folded().rangeOfString(linkText.folded().view()); range && range->length > 0) {
        shown->setColor(underlineColor ? underlineColor : UIThemeColor(), *range);
        shown->setUnderline(true, *range);
        shown->setLink(address, *range);
    }
    field.setAttributedStringValue(shown);
    field.linkClicked = [](const NSString &link) { NSWorkspace::sharedWorkspace().openURL(link); };
}
