#include "HNManagerPlugin/contracts/RVMessageWriter/ppWriterMeassagerHtml.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVFoundation/NSStringFormats.h"
#include "HNManagerPlugin/contracts/RVFoundation/RVLoger.h"
#include "HNManagerPlugin/contracts/RVMessageWriter/MessagePage.h"
#include "HNManagerPlugin/contracts/RVMessageWriter/PictureConverter.h"
#include "toolkit/services/NSFileManager.h"
#include "toolkit/views/SetAsideFile.h"

namespace {

constexpr std::size_t kFullBytes = 1u << 20;
constexpr std::uint64_t kMessagesInBlock = 60;   // laid out together; a screen shows a dozen
constexpr std::size_t kDayLength = 10;           // of "yyyy-MM-dd HH:mm:ss"

std::string textOf(const char *key) {
    std::string escaped;
    messagePage::appendEscaped(escaped, localized(NSString(key)).view());
    return escaped;
}

bool isDate(std::string_view date) {
    constexpr std::string_view kShape = "0000-00-00 00:00:00";
    for (std::size_t at = 0; at < kShape.size(); ++at)
        if (at >= date.size() || (kShape[at] == '0' ? date[at] < '0' || date[at] > '9' : date[at] != kShape[at]))
            return false;
    return date.size() == kShape.size();
}

// Names the caller's files stand under: one folder, nothing hidden behind a slash.
bool isFileName(std::string_view name) { return !name.empty() && name != "." && name != ".." && name.find('/') == std::string_view::npos; }

}  // namespace

void ppWriterMeassagerHtml::initWithPath_Title(const NSString &path, const NSString &title) {
    NSObject::init();
    path_ = path;
    title_ = title;
}

// Ends on whatever thread wrote the page, so without a dealloc.
ppWriterMeassagerHtml::~ppWriterMeassagerHtml() { giveUp(); }

void ppWriterMeassagerHtml::giveUp() {
    if (file_ >= 0)
        ::close(std::exchange(file_, -1));
    if (!temporary_.empty())
        ::unlink(std::exchange(temporary_, {}).c_str());
}

NSString ppWriterMeassagerHtml::dicPath() const { return path_.stringByDeletingLastPathComponent(); }

// ---------------------------------------------------------------- the document

void ppWriterMeassagerHtml::start() {
    static std::atomic<unsigned> number{0};
    if (!NSFileManager::createDirectoryAtPath(dicPath()))
        return fail("the folder cannot be made");
    temporary_ = dicPath().str() + "/.page-" + std::to_string(::getpid()) + "-" + std::to_string(++number);
    file_ = ::open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (file_ < 0) {
        const std::string reason = std::strerror(errno);
        temporary_.clear();
        return fail(reason);
    }
    out_.reserve(kFullBytes + (kFullBytes >> 3U));
    putHead();
}

void ppWriterMeassagerHtml::putHead() {
    put("<!DOCTYPE html>\n<html lang=\"");
    put(textOf("MessagePage_Language"));
    put("\">\n<head>\n<meta charset=\"utf-8\">\n<meta http-equiv=\"Content-Security-Policy\" content=\"");
    put(messagePage::policy());
    put("\">\n<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<meta name=\"color-scheme\" content=\"light dark\">\n"
        "<meta name=\"referrer\" content=\"no-referrer\">\n<title>");
    putText(title_.view());
    put("</title>\n<style>");
    put(messagePage::kStyle);
    put("</style>\n</head>\n<body>\n<header>\n<h1 dir=\"auto\">");
    putText(title_.view());
    put("</h1>\n<div class=\"find\" role=\"search\" hidden><input type=\"search\" autocomplete=\"off\" placeholder=\"");
    put(textOf("MessagePage_Search"));
    put("\" aria-label=\"");
    put(textOf("MessagePage_Search"));
    put("\" data-none=\"");
    put(textOf("MessagePage_NothingFound"));
    put("\"><output></output><button type=\"button\" aria-label=\"");
    put(textOf("MessagePage_Previous"));
    put("\">\xE2\x86\x91</button><button type=\"button\" aria-label=\"");
    put(textOf("MessagePage_Next"));
    put("\">\xE2\x86\x93</button></div>\n</header>\n<main>\n");
}

// Behind the messages, shown beside them: their number and last day are known by then.
void ppWriterMeassagerHtml::putSessions() {
    put("<nav aria-label=\"");
    put(textOf("MessagePage_Conversations"));
    put("\">\n<h2>");
    put(textOf("MessagePage_Conversations"));
    put("</h2>\n<ol>\n");
    for (std::size_t at = 0; at < sessions_.size(); ++at) {
        put("<li><a href=\"#t" + std::to_string(at + 1) + "\"><bdi>");
        put(sessions_[at].name);
        put("</bdi><small>" + std::to_string(sessions_[at].messages) + (sessions_[at].lastDay.empty() ? "" : " \xC2\xB7 ") +
            sessions_[at].lastDay + "</small></a></li>\n");
        flushIfFull();
    }
    put("</ol>\n</nav>\n");
}

void ppWriterMeassagerHtml::end() {
    if (isSessionOpen_)
        sessionEnd();
    put("<footer>");
    put(textOf("MessagePage_Times"));
    put("</footer>\n</main>\n");
    putSessions();
    put("<script>");
    put(messagePage::kScript);
    put("</script>\n</body>\n</html>\n");
    flush();
    if (hasFailed_)
        return;
    const bool isSynced = ::fsync(file_) == 0;
    const bool isStored = ::close(std::exchange(file_, -1)) == 0 && isSynced;
    if (!isStored || ::rename(temporary_.c_str(), path_.UTF8String()) != 0)
        return fail(std::strerror(errno));
    temporary_.clear();
}

void ppWriterMeassagerHtml::sessionStart_Type(const NSString &name, const NSString &type) {
    if (isSessionOpen_)
        sessionEnd();
    isSessionOpen_ = true;
    Session session;
    messagePage::appendEscaped(session.name, name.isEmpty() ? localized("MessagePage_NoName").view() : name.view());
    put("<section id=\"t" + std::to_string(sessions_.size() + 1) + "\">\n<h2 dir=\"auto\">" + session.name + " <small>");
    putText(type.view());
    put("</small></h2>\n");
    sessions_.push_back(std::move(session));
    day_.clear();
    time_.clear();
}

void ppWriterMeassagerHtml::sessionEnd() {
    if (!std::exchange(isSessionOpen_, false))
        return;
    closeBlock();
    put("</section>\n");
    flushIfFull();
}

void ppWriterMeassagerHtml::closeBlock() {
    if (std::exchange(inBlock_, 0) > 0)
        put("</div>\n");
}

// ---------------------------------------------------------------- messages

void ppWriterMeassagerHtml::dateMiddle(const NSString &date) { time_ = date.str(); }

void ppWriterMeassagerHtml::beginMessage(Side side, std::string_view extraClass) {
    if (inBlock_ == kMessagesInBlock)
        closeBlock();
    if (inBlock_++ == 0)
        put("<div class=\"c\">\n");
    if (!sessions_.empty())
        ++sessions_.back().messages;
    if (isDate(time_) && time_.compare(0, kDayLength, day_) != 0) {
        day_ = time_.substr(0, kDayLength);
        put("<h3><time>" + day_ + "</time></h3>\n");
        if (!sessions_.empty())
            sessions_.back().lastDay = day_;
    }
    put(side == Side::left ? "<div class=\"l" : side == Side::right ? "<div class=\"r" : "<div class=\"r f");
    put(extraClass);
    put("\" dir=\"auto\">");
}

void ppWriterMeassagerHtml::endMessage(Side side) {
    if (isDate(time_)) {
        put("<time>");
        put(std::string_view(time_).substr(kDayLength + 1, 5));
        put("</time>");
    } else if (!time_.empty()) {
        put("<time>");
        putText(time_);
        put("</time>");
    }
    time_.clear();
    put("</div>\n");
    if (side == Side::failed) {
        put("<div class=\"b\"><img src=\"Messagesfailed.png\" alt=\"\">");
        put(textOf("MessageView_NotDeliver"));
        put("</div>\n");
    }
    flushIfFull();
}

void ppWriterMeassagerHtml::message(Side side, const NSString &text) {
    beginMessage(side, messagePage::isEmojiOnly(text.view()) ? " e" : "");
    putBody(text.view());
    endMessage(side);
}

void ppWriterMeassagerHtml::messagesLeft(const NSString &text) { message(Side::left, text); }
void ppWriterMeassagerHtml::messagesRight(const NSString &text) { message(Side::right, text); }
void ppWriterMeassagerHtml::messagesFailed(const NSString &text) { message(Side::failed, text); }

// ---------------------------------------------------------------- files

void ppWriterMeassagerHtml::putFileLink(const std::string &fileName) {
    const NSString path = dicPath().stringByAppendingPathComponent(NSString(fileName));
    const bool isThere = isFileName(fileName) && NSFileManager::fileExistsAtPath(path) && !NSFileManager::isDirectoryAtPath(path);
    if (!isThere) {
        put("<bdi>");
        putText(fileName);
        put("</bdi> ");
        return put(textOf("MessagePage_Missing"));
    }
    put("<a href=\"");
    messagePage::appendAddress(out_, fileName);
    put("\"><bdi>");
    putText(fileName);
    put("</bdi></a> ");
    putText(byteDecFormatFromInteger(NSFileManager::sizeOfFileAtPath(path)).view());
}

std::string ppWriterMeassagerHtml::jpegBeside(const std::string &fileName) {
    std::string name = fileName + ".jpg";
    const auto placeOf = [&] { return dicPath().stringByAppendingPathComponent(NSString(name)); };
    for (int number = 1; NSFileManager::fileExistsAtPath(placeOf()); ++number)
        name = fileName + " (" + std::to_string(number) + ").jpg";
    return PictureConverter::convert(dicPath().stringByAppendingPathComponent(NSString(fileName)), placeOf()) ? name : "";
}

std::string ppWriterMeassagerHtml::shownPicture(const std::string &fileName) {
    if (!isFileName(fileName) || !NSFileManager::fileExistsAtPath(dicPath().stringByAppendingPathComponent(NSString(fileName))))
        return "";
    switch (messagePage::kindOf(fileName)) {
    case messagePage::FileKind::picture: return fileName;
    case messagePage::FileKind::heic: return jpegBeside(fileName);
    default: return "";
    }
}

void ppWriterMeassagerHtml::picture(Side side, const NSString &fileName) {
    const std::string name = fileName.str(), shown = shownPicture(name);
    beginMessage(side, " m");
    if (!shown.empty()) {
        put("<a href=\"");
        messagePage::appendAddress(out_, name);
        put("\"><img class=\"p\" loading=\"lazy\" decoding=\"async\" src=\"");
        messagePage::appendAddress(out_, shown);
        put("\" alt=\"");
        putText(name);
        put("\"></a>");
    } else {
        put("<div class=\"n\"><span>");
        putFileLink(name);
        put("</span></div>");
    }
    endMessage(side);
}

void ppWriterMeassagerHtml::leftImageSuccess(const NSString &fileName) { picture(Side::left, fileName); }
void ppWriterMeassagerHtml::rightImageSuccess(const NSString &fileName) { picture(Side::right, fileName); }
void ppWriterMeassagerHtml::rightImageFailed(const NSString &fileName) { picture(Side::failed, fileName); }

// The link stands below every player: a browser that cannot play the file still opens or saves it.
void ppWriterMeassagerHtml::media(Side side, const NSString &fileName, const NSString &caption) {
    const std::string name = fileName.str();
    const auto kind = messagePage::kindOf(name);
    const char *element = kind == messagePage::FileKind::sound ? "audio" : kind == messagePage::FileKind::video ? "video" : nullptr;
    const bool isThere = isFileName(name) && NSFileManager::fileExistsAtPath(dicPath().stringByAppendingPathComponent(fileName));
    beginMessage(side, " m");
    if (element && isThere) {
        put(std::string("<") + element + " controls preload=\"none\" src=\"");
        messagePage::appendAddress(out_, name);
        put(std::string("\"></") + element + ">");
    }
    put("<div class=\"n\"><img src=\"Icon_quickTime.png\" alt=\"\"><span>");
    if (!caption.isEmpty()) {
        put("<bdi>");
        putText(caption.view());
        put("</bdi> \xC2\xB7 ");
    }
    putFileLink(name);
    put("</span></div>");
    endMessage(side);
}

void ppWriterMeassagerHtml::leftAudio_Content(const NSString &fileName, const NSString &caption) { media(Side::left, fileName, caption); }
void ppWriterMeassagerHtml::rightAudioSuccess_Content(const NSString &fileName, const NSString &caption) {
    media(Side::right, fileName, caption);
}
void ppWriterMeassagerHtml::rightAudioFailed_Content(const NSString &fileName, const NSString &caption) {
    media(Side::failed, fileName, caption);
}

// ---------------------------------------------------------------- bytes

void ppWriterMeassagerHtml::putText(std::string_view text) { messagePage::appendEscaped(out_, text); }
void ppWriterMeassagerHtml::putBody(std::string_view text) { messagePage::appendLinked(out_, text); }

void ppWriterMeassagerHtml::flushIfFull() {
    if (out_.size() >= kFullBytes)
        flush();
}

void ppWriterMeassagerHtml::flush() {
    std::string_view left = out_;
    while (!left.empty() && file_ >= 0 && !hasFailed_) {
        const ssize_t done = ::write(file_, left.data(), left.size());
        if (done < 0 && errno != EINTR)
            fail(std::strerror(errno));
        left.remove_prefix(done > 0 ? static_cast<std::size_t>(done) : 0);
    }
    out_.clear();
}

void ppWriterMeassagerHtml::fail(const std::string &reason) {
    hasFailed_ = true;
    RVLog(NSString::stringWithFormat("%@: the page cannot be written: %@", path_, NSString(reason)));
    SetAsideFile::failed(path_);
    giveUp();
}
