// A line of text, part or all of which is a link that opens in the user's own browser. Threads: main.
#pragma once

#include "toolkit/views/NSTextField.h"

class RUILinkTextField : public NSTextField {
public:
    void initWithFrame(const NSRect &frame) override;
    // The whole text is the link, in the theme's colour and underlined; shows the field.
    void setLinkText_withURL(const NSString &text, const NSString &address);
    // Shows the text; a click on its underlined part sends the field's action.
    void drawActionAttributedTextField(const std::shared_ptr<NSAttributedString> &text);
    // Address of the first link; absent without one.
    [[nodiscard]] NSString linkURL() const;
    HN_DECLARE_CLASS_TABLE
};

// Makes the first occurrence of `linkText` (ignoring case) in `text` a link to `address`, and the field show the text; a
// click opens the address through NSWorkspace. Null colours and a null font are the theme's colour and the system's font.
// A link text that does not occur leaves a plain text.
void drawLinkTextFiledAttributed_LinkString_textColor_underlineColor_font_withURL(
    NSTextField &field, const NSString &text, const NSString &linkText, const std::shared_ptr<NSColor> &textColor,
    const std::shared_ptr<NSColor> &underlineColor, const std::shared_ptr<NSFont> &font, const NSString &address);
