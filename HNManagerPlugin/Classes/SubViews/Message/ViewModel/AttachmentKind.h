// What stands for an attachment in a conversation: a caption, and a picture or the mark of its kind.
#pragma once

#include <array>
#include <memory>
#include <string_view>

#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/HNDetailMessage.h"

struct AttachmentKind {
    static constexpr std::size_t kWords = 5;

    std::array<std::string_view, kWords> words;   // one of them stands in the type word; none at all: any type word
    std::string_view exactWord;
    const char *icon;   // a resource; null: the attachment's own picture
    const char *captionKey;

    // The kind of a type word; capitals do not matter.
    [[nodiscard]] static const AttachmentKind &ofType(const NSString &type);
};

// Sets pictures and captions, looking each resource and each text up once. Threads: one at a time.
class AttachmentMarks {
public:
    // `attachmentIcon` and `content` of the row, by its type word.
    void classify(const NSString &type, HNDetailMessage &row);

private:
    struct Mark {
        bool isKnown = false;
        std::shared_ptr<NSImage> icon;
        NSString caption;
    };
    Mark &markOf(const AttachmentKind &kind);

    static constexpr std::size_t kKinds = 11;
    std::array<Mark, kKinds> marks_;
};
