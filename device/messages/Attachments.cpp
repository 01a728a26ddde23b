#include "device/messages/Attachments.h"

#include "device/messages/MessageSchema.h"

namespace device::messages {

namespace {

std::size_t extensionStart(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    const bool isExtension = dot != std::string_view::npos && dot != 0 && name.size() - dot <= AttachmentNames::kMaxExtensionBytes;
    return isExtension ? dot : name.size();
}

std::string withoutMarks(std::string_view name) {
    constexpr std::string_view kMarks = "'\"\\:*?<>|";
    std::string plain;
    for (std::size_t at = 0; at < name.size();) {
        const std::size_t start = at;
        const char32_t character = unicode::next(name, at);
        if (unicode::isControl(character) || (character < 0x80 && kMarks.find(static_cast<char>(character)) != kMarks.npos))
            plain += '_';
        else
            plain += name.substr(start, at - start);
    }
    return plain;
}

std::string cut(const std::string &name) {
    if (name.size() <= AttachmentNames::kMaxNameBytes)
        return name;
    const std::string extension = name.substr(extensionStart(name));
    std::size_t end = AttachmentNames::kMaxNameBytes - extension.size();
    while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80)   // inside a character
        --end;
    return name.substr(0, end) + extension;
}

std::string fit(std::string_view name) {
    if (const std::size_t slash = name.rfind('/'); slash != std::string_view::npos)
        name.remove_prefix(slash + 1);
    std::string plain = withoutMarks(name);
    if (plain.empty() || plain == "." || plain == "..")
        plain = "attachment";
    return cut(plain);
}

}  // namespace

DevicePath attachmentPath(std::string_view filename) {
    for (const std::string_view start : {"~/", "/var/mobile/"})
        if (filename.starts_with(start))
            return {kAttachmentDomain, std::string(filename.substr(start.size()))};
    return {kAttachmentDomain, ""};
}

AttachmentNames::AttachmentNames() {
    for (const char *name : {"Messages.html", "Messagesfailed.png", "Icon_quickTime.png"})
        taken_.insert(NSString(name).folded().str());
}

NSString AttachmentNames::take(std::string_view name) {
    const std::string plain = fit(name);
    if (isFree(plain))
        return plain;
    const std::size_t stem = extensionStart(plain);
    std::int64_t &number = nextNumber_[NSString(plain).folded().str()];
    for (;;) {
        std::string numbered = plain.substr(0, stem) + " (" + std::to_string(++number) + ")" + plain.substr(stem);
        if (isFree(numbered))
            return numbered;
    }
}

}  // namespace device::messages
