#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/AttachmentKind.h"

#include <algorithm>
#include <iterator>

#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "toolkit/services/NSBundle.h"

namespace {

constexpr AttachmentKind kKinds[] = {   // the first hit wins: "image/text" is a picture, "video/audio" a video
    {{"image", "gif", "png", "jpeg", "picture"}, "6", nullptr, "MessageView_1Photo"},
    {{"video", "movie"}, {}, "icon_Video_Attachments", "MessageView_1Video"},
    {{"txt", "pkpass", "text"}, {}, "icon_txt", "MessageView_1File"},
    {{"pdf"}, {}, "icon_pdf", "MessageView_1PDF"},
    {{"music", "audio"}, {}, "icon_Music_Attachments", "MessageView_1File"},
    {{"voice"}, {}, "icon_voice_memos", "MessageView_1File"},
    {{"ppt", "powerpoint"}, {}, "icon_ppt", "MessageView_1PPT"},
    {{"wordprocessingml.document"}, {}, "icon_word", "MessageView_1WORD"},
    {{"excel", "xlsx", "xls", "spreadsheetml.sheet"}, {}, "icon_excel", "MessageView_1EXCEL"},
    {{"vcf", "csv"}, {}, "icon_people", "MessageView_1CONTACT"},
    {{}, {}, "icon_photo", "MessageView_1File"},
};

}   // namespace

const AttachmentKind &AttachmentKind::ofType(const NSString &type) {
    const NSString lower = type.folded();
    const auto isOf = [&](const AttachmentKind &kind) {
        if (kind.words.front().empty() || (!kind.exactWord.empty() && type.view() == kind.exactWord))
            return true;
        return std::ranges::any_of(kind.words, [&](std::string_view word) { return !word.empty() && lower.containsString(word); });
    };
    return *std::ranges::find_if(kKinds, isOf);
}

AttachmentMarks::Mark &AttachmentMarks::markOf(const AttachmentKind &kind) {
    static_assert(std::size(::kKinds) == AttachmentMarks::kKinds);
    Mark &mark = marks_.at(static_cast<std::size_t>(&kind - ::kKinds));
    if (mark.isKnown)
        return mark;
    mark.isKnown = true;
    mark.caption = localized(kind.captionKey);
    if (kind.icon)
        mark.icon = NSBundle::bundleForClass()->imageForResource_ofType(kind.icon, "png");
    return mark;
}

void AttachmentMarks::classify(const NSString &type, HNDetailMessage &row) {
    const AttachmentKind &kind = AttachmentKind::ofType(type);
    const Mark &mark = markOf(kind);
    row.attachmentIcon = kind.icon ? mark.icon : NSImage::withContentsOfFile(row.attachmentBackupPath);
    row.content = mark.caption;
}
