#include "toolkit/NSFont.h"

#include <cstdio>

HN_CLASS_TABLE(NSFont, NSObjectTable, .key("fontName", &NSFont::fontName).key("pointSize", &NSFont::pointSize))

std::shared_ptr<NSFont> NSFont::fontWithName_size(NSString name, double size) {
    const auto font = make<NSFont>();
    font->isBold_ = name.containsIgnoringCase("bold");
    font->name_ = std::move(name);
    font->size_ = size > 0 ? size : kSystemFontSize;
    return font;
}

std::shared_ptr<NSFont> NSFont::systemFontOfSize(double size) { return fontWithName_size("System", size); }

std::shared_ptr<NSFont> NSFont::boldSystemFontOfSize(double size) {
    const auto font = systemFontOfSize(size);
    font->isBold_ = true;
    return font;
}

bool NSFont::isEqual(const NSObject *other) const {
    const auto *font = dynamic_cast<const NSFont *>(other);
    return font && name_ == font->name_ && size_ == font->size_ && isBold_ == font->isBold_;
}

NSString NSFont::description() const {
    char size[32];
    std::snprintf(size, sizeof size, " %g", size_);
    return NSString(name_.str() + size + (isBold_ ? " bold" : ""));
}
