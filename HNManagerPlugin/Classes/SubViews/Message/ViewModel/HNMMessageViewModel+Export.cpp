// Threads to files: the table and the page.
#include <fcntl.h>
#include <unistd.h>

#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/HNMMessageViewModel.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/RStrategyActionEventRouter.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVFoundation/RVLoger.h"
#include "HNManagerPlugin/contracts/RVMessageWriter/ppWriterMeassagerHtml.h"
#include "toolkit/dispatch/Queue.h"
#include "toolkit/services/NSBundle.h"
#include "toolkit/services/NSFileManager.h"
#include "toolkit/services/SystemCommand.h"
#include "toolkit/services/UserFolders.h"
#include "toolkit/services/WholeFile.h"
#include "toolkit/views/SetAsideFile.h"

namespace {

constexpr std::int64_t kRoomForExport = 104'857'600;   // bytes
constexpr const char *kTableHead = "Group ID\tNumber\tName\tTime\tContent\tSmsState\tSmsType\n";
constexpr const char *kAttachmentFolder = "/message attachment";

// Puts the calls of an export on the main queue. A call that still waits there stands for the later ones of its thread:
// they would say the same.
class ProgressCalls : public std::enable_shared_from_this<ProgressCalls> {
public:
    using Call = std::function<void(std::int64_t index)>;
    explicit ProgressCalls(Call call) : call_(std::move(call)) {}

    void post(std::int64_t index) {
        if (waiting_.exchange(index) == index)
            return;
        dispatch::async(dispatch::main(), [self = shared_from_this(), index] {
            std::int64_t waiting = index;
            self->waiting_.compare_exchange_strong(waiting, 0);
            self->call_(index);
        });
    }

private:
    Call call_;
    std::atomic<std::int64_t> waiting_{0};   // 0: none
};

NSString withoutLineEnds(const NSString &text) {
    if (text.view().find_first_of("\r\n") == std::string_view::npos)
        return text;
    std::string kept = text.str();
    std::erase_if(kept, [](char byte) { return byte == '\n' || byte == '\r'; });
    return NSString(kept);
}

void copyFile(const NSString &from, const NSString &to) {
    SystemCommand::run(NSString::stringWithFormat("cp '%@' '%@'", from, to));
}

// A picture of the main bundle, once.
void copyMark(const char *name, const NSString &place) {
    if (NSFileManager::fileExistsAtPath(place))
        return;
    NSString mark = NSBundle::mainBundle()->pathForResource_ofType(name, "png");
    if (mark.isNil())
        mark = NSBundle::bundleForClass()->pathForResource_ofType(name, "png");
    if (mark.isNil())
        return;
    if (const std::string reason = WholeFile::copy(mark.str(), place.str()); !reason.empty())
        RVLog(NSString(reason));
}

template <class Visit> void eachRow(const HNMessageEntity &thread, Visit &&visit) {
    const NSArray rows = thread.messageArray->snapshot();
    for (const id &row : rows)
        if (!visit(static_cast<const HNDetailMessage &>(*row)))
            return;
}

// ---------------------------------------------------------------- the table

std::string_view orNull(const NSString &text) { return text.isNil() ? std::string_view("(null)") : text.view(); }

// Private characters for which GB18030 has no code, as ranges of the bytes behind their first, 0xEE.
bool hasNoCode(unsigned char second, unsigned char third) {
    const unsigned character = 0xE000U | (second & 0x3FU) << 6 | (third & 0x3FU);
    constexpr struct {
        unsigned first, last;
    } kRanges[] = {{0xE78D, 0xE796}, {0xE816, 0xE818}, {0xE81E, 0xE81E}, {0xE826, 0xE826}, {0xE82B, 0xE82C},
                   {0xE831, 0xE832}, {0xE83B, 0xE83B}, {0xE843, 0xE843}, {0xE854, 0xE855}, {0xE864, 0xE864}};
    for (const auto &range : kRanges)
        if (character >= range.first && character <= range.last)
            return true;
    return false;
}

// One character that cannot be recoded would keep the whole table from it: it becomes U+FFFD.
std::string recodable(std::string_view bytes) {
    std::string text = unicode::sanitized(bytes);
    for (std::size_t at = text.find('\xEE'); at != std::string::npos; at = text.find('\xEE', at + 1))
        if (at + 2 < text.size() && hasNoCode(static_cast<unsigned char>(text[at + 1]), static_cast<unsigned char>(text[at + 2])))
            text.replace(at, 3, "\xEF\xBF\xBD");
    return text;
}

class MessageTable {
public:
    explicit MessageTable(const NSString &path) : path_(path), text_(kTableHead) {}

    void beginThread(const HNMessageEntity &thread) {
        group_ = thread.key().str();
        services_ = descriptionOfList(thread.serviceName).str();
        folder_ = path_.stringByDeletingLastPathComponent()
                      .stringByAppendingString(kAttachmentFolder)
                      .stringByAppendingString("/")
                      .stringByAppendingString(thread.key());
    }
    void addRow(const HNDetailMessage &row) {
        if (row.isAttachment)
            takeAttachment(row);
        const NSString content = row.isAttachment ? NSString("[attachment]") : withoutLineEnds(row.content);
        const std::string_view state = row.isFailed ? "failed" : row.isSend ? "send" : "receive";
        bool isFirst = true;
        for (const std::string_view column : {std::string_view(group_), orNull(row.personSend), orNull(row.personName), orNull(row.date),
                                              orNull(content), state, std::string_view(services_)}) {
            text_.append(isFirst ? "" : "\t").append(column);
            isFirst = false;
        }
        text_ += '\n';
    }
    // Behind what stands in the file; a table that does not fit leaves it as it was.
    void write() const {
        const int file = ::open(path_.UTF8String(), O_WRONLY | O_CLOEXEC);
        if (file < 0)
            return SetAsideFile::failed(path_);
        const off_t end = ::lseek(file, 0, SEEK_END);
        const std::string text = recodable(text_);
        const bool isWritten = end >= 0 && ::ftruncate(file, end) == 0 && writeAll(file, text);
        if (!isWritten) {
            RVLog(NSString::stringWithFormat("%@: the table could not be written", path_));
            SetAsideFile::failed(path_);
            if (end < 0 || ::ftruncate(file, end) != 0)
                RVLog(NSString::stringWithFormat("%@: holds a part of the table", path_));
        }
        ::close(file);
    }

private:
    void takeAttachment(const HNDetailMessage &row) const {
        if (!NSFileManager::fileExistsAtPath(folder_))
            NSFileManager::createDirectoryAtPath(folder_);
        copyFile(row.attachmentBackupPath, folder_);
    }
    static bool writeAll(int file, std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t done = ::write(file, bytes.data(), bytes.size());
            if (done < 0 && errno != EINTR)
                return false;
            bytes.remove_prefix(done > 0 ? static_cast<std::size_t>(done) : 0);
        }
        return true;
    }

    NSString path_, folder_;
    std::string text_, group_, services_;
};

// ---------------------------------------------------------------- the page

// One row's calls on the page's writer.
class PageRow {
public:
    PageRow(ppWriterMeassagerHtml &writer, const HNDetailMessage &row) : writer_(writer), row_(row) {}

    void write() const {
        if (!row_.isTimeOverOneHour && !row_.date.isNil())
            writer_.dateMiddle(row_.date);
        if (row_.isAttachment)
            return writeAttachment();
        if (row_.isSend)
            return writeSent(withoutLineEnds(row_.content));
        if (!row_.isFailedOnly)
            writer_.messagesLeft(withoutLineEnds(row_.content));
    }

private:
    void writeSent(const NSString &text) const {
        if (!row_.isFailed)
            return writer_.messagesRight(text);
        copyFailureMark();
        writer_.messagesFailed(text);
    }
    void writeAttachment() const {
        const NSString &name = row_.attachmentFileName, folder = writer_.dicPath();
        copyFile(row_.attachmentBackupPath, folder.stringByAppendingPathComponent(name));
        if (row_.isSend && row_.isFailed)
            copyFailureMark();
        const std::int64_t kind = HNMMessageViewModel::medioType_path(row_.attachmentType, folder);
        if (kind == 1)
            return row_.isSend ? row_.isFailed ? writer_.rightImageFailed(name) : writer_.rightImageSuccess(name)
                               : writer_.leftImageSuccess(name);
        if (kind != 0)
            return row_.isSend ? row_.isFailed ? writer_.rightAudioFailed_Content(name, row_.content)
                                               : writer_.rightAudioSuccess_Content(name, row_.content)
                               : writer_.leftAudio_Content(name, row_.content);
    }
    void copyFailureMark() const { copyMark("Messagesfailed", writer_.dicPath().stringByAppendingString("/Messagesfailed.png")); }

    ppWriterMeassagerHtml &writer_;
    const HNDetailMessage &row_;
};

}   // namespace

bool HNMMessageViewModel::couldExportMessageAttachment() {
    RStrategyActionEventRouter &router = RStrategyActionEventRouter::shareInstance();
    if (!router.actionRequestDiskSize(kRoomForExport))
        return false;
    std::int64_t bytes = 0;
    for (const id &thread : contents->snapshot())
        eachRow(static_cast<const HNMessageEntity &>(*thread), [&](const HNDetailMessage &row) {
            if (row.isAttachment)
                bytes += NSFileManager::sizeOfFileAtPath(row.attachmentBackupPath);
            return true;
        });
    return router.actionRequestDiskSize_withPath(bytes, NSHomeDirectory());
}

void HNMMessageViewModel::exportSelectedMessages_exportMessages_callBack(const NSString &path, const Threads &threads,
                                                                         const TableProgress &callBack) {
    if (!NSFileManager::fileExistsAtPath(path))
        if (const int file = ::open(path.UTF8String(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666); file >= 0)
            ::close(file);
    const auto stop = std::make_shared<Shared<bool>>();
    const auto total = static_cast<std::int64_t>(threads.size());
    const auto progress = std::make_shared<ProgressCalls>([callBack, total, stop](std::int64_t index) { callBack(index, total, stop); });
    MessageTable table(path);
    std::int64_t index = 0;
    for (const auto &thread : threads) {
        if (*stop)
            return;
        ++index;
        table.beginThread(*thread);
        bool isCut = false;
        eachRow(*thread, [&](const HNDetailMessage &row) {
            if ((isCut = *stop))
                return false;
            if (row.isTimeOnly)
                return true;
            table.addRow(row);
            progress->post(index);
            return true;
        });
        if (isCut)
            return;
    }
    table.write();
}

void HNMMessageViewModel::exportHtml_exportMessages_Htmltitle_callBack(const NSString &path, const Threads &threads,
                                                                       const NSString &title, const PageProgress &callBack) {
    const auto stop = std::make_shared<Shared<bool>>();
    const auto total = static_cast<std::int64_t>(threads.size());
    const auto progress =
        std::make_shared<ProgressCalls>([callBack, total, stop](std::int64_t index) { callBack(index, total, stop, false); });
    const auto writer = alloc<ppWriterMeassagerHtml>();
    writer->initWithPath_Title(path, title);
    writer->start();
    std::int64_t index = 0;
    for (const auto &thread : threads) {
        if (*stop)
            break;
        RVLog(NSString::stringWithFormat("MessageType = %@", thread->serviceName));
        writer->sessionStart_Type(thread->contactName, localized("MessagesTableHeader_Message"));
        ++index;
        eachRow(*thread, [&](const HNDetailMessage &row) {
            if (*stop)
                return false;
            if (row.isTimeOnly)
                return true;
            PageRow(*writer, row).write();
            progress->post(index);
            return true;
        });
        writer->sessionEnd();
    }
    writer->end();
    dispatch::async(dispatch::main(), [callBack, stop] { callBack(0, 0, stop, true); });
}

std::int64_t HNMMessageViewModel::medioType_path(const NSString &type, const NSString &folder) {
    if (isString_containString(type, "image"))
        return 1;
    const std::int64_t kind = isString_containString(type, "audio") ? 2 : isString_containString(type, "video") ? 3 : 0;
    if (kind != 0)
        copyMark("Icon_quickTime", folder.stringByAppendingString("/Icon_quickTime.png"));
    return kind;
}
