// Writes conversations as one HTML page that opens offline in any browser: bubbles, dates, search, pictures, players.
//
//     auto writer = alloc<ppWriterMeassagerHtml>();
//     writer->initWithPath_Title("/home/ada/Messages_1/Messages.html", "Ada's phone");
//     writer->start();
//     writer->sessionStart_Type("Alan", "Message");
//     writer->dateMiddle("2024-03-05 10:20:30");
//     writer->messagesLeft("Hello");
//     writer->sessionEnd();
//     writer->end();
//
// Order     start, then sessions one after the other, then end. Within a session a date stands for the message after it.
// Files     names of files that the caller copies to dicPath() before the call that names them; the page links to them
//           beside it. One that is not there is told as missing. What a browser cannot show is linked with name and size.
// HEIC      gets a JPEG beside it, "<name>.jpg", or "<name> (1).jpg" and so on where that name is taken, through
//           PictureConverter; the page shows it and links to the original.
// Safety    every text is escaped, and a content security policy lets nothing but the page's own style and script run.
// Format    HTML 5, UTF-8. Dates are "yyyy-MM-dd HH:mm:ss"; other texts are shown as they come. Times are told as UTC.
// Memory    does not grow with the messages; the list of conversations is kept until the end.
// Errors    written beside its place and renamed by `end`: on a failure no page appears, an older one stays, the log says
//           why, and hasFailed tells. A page without `end` leaves nothing.
// Threads   one at a time, any.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "toolkit/NSObject.h"

class ppWriterMeassagerHtml : public NSObject {
public:
    static constexpr bool kEndsOnAnyThread = true;
    // The path of the page, and what its heading says.
    void initWithPath_Title(const NSString &path, const NSString &title);
    ~ppWriterMeassagerHtml() override;

    // Makes the folder and opens the document.
    void start();
    // The folder for copied files; made by start.
    [[nodiscard]] NSString dicPath() const;
    void sessionStart_Type(const NSString &name, const NSString &type);
    void dateMiddle(const NSString &date);
    void messagesLeft(const NSString &text);
    void messagesRight(const NSString &text);
    void messagesFailed(const NSString &text);
    void leftImageSuccess(const NSString &fileName);
    void rightImageSuccess(const NSString &fileName);
    void rightImageFailed(const NSString &fileName);
    // Sound or video.
    void leftAudio_Content(const NSString &fileName, const NSString &caption);
    void rightAudioSuccess_Content(const NSString &fileName, const NSString &caption);
    void rightAudioFailed_Content(const NSString &fileName, const NSString &caption);
    void sessionEnd();
    void end();
    [[nodiscard]] bool hasFailed() const { return hasFailed_; }

private:
    enum class Side { left, right, failed };
    struct Session {
        std::string name, lastDay;
        std::uint64_t messages = 0;
    };

    void put(std::string_view text) { out_ += text; }
    void putText(std::string_view text);   // escaped
    void putBody(std::string_view text);   // escaped, addresses as links
    void putHead();
    void putSessions();
    void beginMessage(Side side, std::string_view extraClass);
    void endMessage(Side side);
    void message(Side side, const NSString &text);
    void picture(Side side, const NSString &fileName);
    void media(Side side, const NSString &fileName, const NSString &caption);
    void putFileLink(const std::string &fileName);
    [[nodiscard]] std::string shownPicture(const std::string &fileName);   // "" where no browser shows it
    [[nodiscard]] std::string jpegBeside(const std::string &fileName);
    void closeBlock();
    void flushIfFull();
    void flush();
    void fail(const std::string &reason);
    void giveUp();

    NSString path_, title_;
    std::string temporary_, out_, day_, time_;
    std::vector<Session> sessions_;
    std::uint64_t inBlock_ = 0;
    int file_ = -1;
    bool hasFailed_ = false, isSessionOpen_ = false;
};
