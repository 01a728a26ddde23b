#include "device/sample/Messages.h"

#include <map>
#include <vector>

#include "device/messages/MessageSchema.h"
#include "device/sample/MessageFiles.h"
#include "device/sample/Sample.h"

namespace device::sample {

namespace {

using namespace device::messages;

const bool registered = registerKind({"Messages", makeEmptyMessages, addMessages});

constexpr std::int64_t kStart = 1'678'435'200;   // a fixed day in 2023: the same image each time
constexpr std::int64_t kMinute = 60, kHour = 3600, kDay = 86400;
constexpr const char *kPrivateNumber = "+12025550147", *kWorkNumber = "+12025550199";
constexpr const char *kMe = nullptr;   // the sender of a sent message

struct File {
    const char *name, *mimeType, *uti;
    std::string (*bytes)();   // null: the file did not come along
};
struct Line {
    std::int64_t after;   // seconds since the line before
    const char *from;
    const char *text;
    std::vector<File> files = {};
    bool isFailed = false;
    bool isInBody = false;             // the words stand in attributedBody alone
    std::int64_t itemType = 0, reaction = 0;
};
struct Chat {
    const char *service, *title;
    std::vector<const char *> members;
    const char *ownNumber;
    std::int64_t start;   // seconds since kStart
    std::vector<Line> lines;
};

const File kHarbour{"IMG_0412.JPG", "image/jpeg", "public.jpeg", harbourPicture};
const File kSailing{"IMG_0413.HEIC", "image/heic", "public.heic", sailPicture};
const File kReceipt{"IMG_0412.JPG", "image/jpeg", "public.jpeg", longReceipt};
const File kChime{"Audio Message.wav", "audio/wav", "com.microsoft.waveform-audio", chime};
const File kTimetable{"Ferry's timetable; summer.pdf", "application/pdf", "com.adobe.pdf", timetable};
const File kCard{"Eleni Papadaki.vcf", "text/vcard", "public.vcard", addressCard};
const File kLostFilm{"IMG_0420.MOV", "video/quicktime", "com.apple.quicktime-movie", nullptr};

constexpr const char *kAda = "+46701740605", *kXiaoming = "+8613800138000", *kFatima = "+966551234567", *kZoe = "+353871234567";
constexpr const char *kLena = "+491515550160", *kGrandma = "5550100", *kLibrary = "5550142", *kStranger = "+15550188";

const std::vector<Chat> &chats() {
    static const std::vector<Chat> all = {
        {"iMessage", nullptr, {kAda}, kPrivateNumber, 0, {
            {0, kAda, "Hej! Are you still coming to the harbour fair on Saturday?"},
            {2 * kMinute, kMe, "Of course. Is the boat in the water yet?"},
            {kMinute, kAda, "Since yesterday 🎉"},
            {30, kAda, "\uFFFC", {kHarbour}},
            {40, kAda, "\uFFFCand this is how she sails", {kSailing}, false, true},
            {5 * kMinute, kMe, "Beautiful!\nI will bring Nils and the blue paint.\n\nSee you at ten."},
            {3, kMe, "Loved an image", {}, false, false, 0, 2000},
            {kHour, kAda, "Exactly an hour later: do not forget the paint."},
            {4 * kDay, kAda, "\uFFFC", {kChime}},
            {20 * kMinute, kMe, "On my way, no network here", {}, true},
            {2 * kHour, kMe, "Sorry, that did not go out. I am at the quay now.", {}, false, true},
            {kMinute, kAda, "https://example.com/harbour-fair is where the programme is. Look at 14:30 <stage \"B\"> & bring a chair."}}},
        {"iMessage", "Naxos in June", {kAda, kZoe, kLena}, kPrivateNumber, 20 * kDay, {
            {0, kMe, "I looked up the ferries. The early one it is?", {}, false, true},
            {0, kMe, nullptr, {}, false, false, 2},
            {3 * kMinute, kZoe, "Ah no, 7:30 in the morning? 😱"},
            {kMinute, kLena, "I'm in. Who has the timetable?"},
            {4 * kMinute, kMe, "\uFFFC", {kTimetable}},
            {kHour + 1, kAda, "Eleni can lend us a boat, here is her card \uFFFC", {kCard}},
            {10 * kMinute, kZoe, "\uFFFC\uFFFC", {kHarbour, kLostFilm}},
            {kDay, kLena, "The film does not open on my side, can you send it again?"},
            {5 * kMinute, kZoe, "Later, I am on the train", {}},
            {200 * kDay, kLena, "Found the receipt of the taverna 😂 \uFFFC", {kReceipt}, false, true}}},
        {"SMS", nullptr, {kGrandma}, kPrivateNumber, 30 * kDay, {
            {0, kGrandma, "DEAR CHILD IT IS GRANDMA. HOW DO I MAKE THE LETTERS SMALL"},
            {kHour, kMe, "The key with the arrow, Gran!"},
            {kMinute, kMe, "Shall I come over on Sunday?", {}, true},
            {3 * kDay, kGrandma, "yes please. bring cake"}}},
        {"iMessage", nullptr, {kXiaoming}, kWorkNumber, 45 * kDay, {
            {0, kXiaoming, "明天下午三点开会,可以吗?"},
            {8 * kMinute, kMe, "可以。地址还是中关村大街27号?"},
            {kMinute, kXiaoming, "对,五楼。", {}, false, true}}},
        {"iMessage", nullptr, {kFatima}, kPrivateNumber, 60 * kDay, {
            {0, kFatima, "مرحبا! هل وصلت إلى الرياض؟"},
            {15 * kMinute, kMe, "نعم، وصلت الآن (Terminal 3)."},
            {kMinute, kFatima, "أهلاً وسهلاً 🌷"}}},
        {"SMS", nullptr, {kLibrary}, kWorkNumber, 80 * kDay, {
            {0, kLibrary, "City Library: \"The Old Boatyard\" is due on 3 June. Reply RENEW to keep it."},
            {kMinute, kMe, "RENEW"},
            {5, kLibrary, "City Library: renewed until 24 June."}}},
        {"SMS", nullptr, {kStranger, "+15550199"}, kWorkNumber, 90 * kDay, {
            {0, kStranger, "Does this group still work?"},
            {kDay, "+15550199", "It does."}}},
        {"iMessage", nullptr, {"nobody@example.net"}, kPrivateNumber, 95 * kDay, {
            {0, "nobody@example.net", "Questioned a message", {}, false, false, 0, 2005}}},
    };
    return all;
}

// The archive of an attributed string without attributes.
std::string bodyOf(std::string_view text) {
    using namespace std::string_literals;
    const std::string size = text.size() < 0x80 ? std::string(1, static_cast<char>(text.size()))
                                                : "\x81"s + static_cast<char>(text.size() & 0xFF) + static_cast<char>(text.size() >> 8);
    return "\x04\x0Bstreamtyped\x81\xE8\x03\x84\x01@\x84\x84\x84\x12NSAttributedString\x00\x84\x84\x08NSObject\x00\x85\x92\x84\x84\x84\x08NSString\x01\x94\x84\x01+"s +
           size + std::string(text) + "\x86\x84\x02iI\x01"s + size + "\x92\x84\x84\x84\x0CNSDictionary\x00\x94\x84\x01i\x00\x86\x86"s;
}

class MessageMaker {
public:
    MessageMaker(ImageFolder &image, const WriterLock &lock, sqlite::Database &database)
        : image_(image), lock_(lock), database_(database),
          message_(database.prepare("INSERT INTO message (guid, text, attributedBody, handle_id, service, account, date, is_from_me, error, is_sent, is_delivered, "
                                    "is_finished, item_type, associated_message_type, destination_caller_id) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 1, ?, ?, ?)")),
          join_(database.prepare("INSERT INTO chat_message_join (chat_id, message_id, message_date) VALUES (?, ?, ?)")),
          attachment_(database.prepare("INSERT INTO attachment (guid, original_guid, created_date, filename, uti, mime_type, transfer_state, is_outgoing, "
                                       "transfer_name, total_bytes) VALUES (?1, ?1, ?2, ?3, ?4, ?5, 5, ?6, ?7, ?8)")) {}

    void addChat(const Chat &chat) {
        const bool isGroup = chat.members.size() > 1;
        const std::string address = isGroup ? "chat" + guid("") : chat.members.front();
        database_.prepare("INSERT INTO chat (guid, style, state, chat_identifier, service_name, room_name, account_login, display_name) VALUES (?, ?, 3, ?, ?, ?, ?, ?)")
            .bind(1, std::string(chat.service) + (isGroup ? ";+;" : ";-;") + address).bind(2, std::int64_t{isGroup ? 43 : 45}).bind(3, address)
            .bind(4, chat.service).bind(5, isGroup ? NSString(address) : NSString()).bind(6, std::string("P:") + chat.ownNumber)
            .bind(7, chat.title ? NSString(chat.title) : NSString()).run();
        const std::int64_t row = database_.lastInsertRowid();
        for (const char *member : chat.members)
            database_.prepare("INSERT INTO chat_handle_join VALUES (?, ?)").bind(1, row).bind(2, handle(member, chat.service)).run();
        std::int64_t time = kStart + chat.start;
        for (const Line &line : chat.lines)
            addLine(chat, row, line, time += line.after);
    }

private:
    std::string guid(const char *kind) {
        const std::string number = std::to_string(++made_);
        return kind + std::string("5A17B0A7-0000-4000-8000-") + std::string(12 - number.size(), '0') + number;
    }

    std::int64_t handle(const char *address, const char *service) {
        std::int64_t &row = handles_[std::string(address) + service];
        if (row == 0) {
            database_.prepare("INSERT INTO handle (id, service) VALUES (?, ?)").bind(1, address).bind(2, service).run();
            row = database_.lastInsertRowid();
        }
        return row;
    }

    void addLine(const Chat &chat, std::int64_t chatRow, const Line &line, std::int64_t time) {
        const std::int64_t date = (time - kEpoch) * 1'000'000'000;
        const NSString text = line.text ? NSString(line.text) : NSString();
        message_.bind(1, guid("")).bind(2, line.isInBody ? NSString() : text);
        if (line.isInBody)
            message_.bindBytes(3, bodyOf(text.view()));
        else
            message_.bindNull(3);
        message_.bind(4, line.from ? handle(line.from, chat.service) : 0).bind(5, chat.service).bind(6, std::string("P:") + chat.ownNumber).bind(7, date);
        const std::int64_t isFromMe = line.from ? 0 : 1, isSent = isFromMe && !line.isFailed ? 1 : 0;
        message_.bind(8, isFromMe).bind(9, std::int64_t{line.isFailed ? 22 : 0}).bind(10, isSent).bind(11, isSent);
        message_.bind(12, line.itemType).bind(13, line.reaction).bind(14, chat.ownNumber).run();
        const std::int64_t row = database_.lastInsertRowid();
        join_.bind(1, chatRow).bind(2, row).bind(3, date).run();
        for (const File &file : line.files)
            addFile(file, row, time, isFromMe);
    }

    void addFile(const File &file, std::int64_t message, std::int64_t time, std::int64_t isFromMe) {
        const std::string id = guid(isFromMe ? "at_0_" : ""), bytes = file.bytes ? file.bytes() : "";
        const std::string path = std::string(kAttachmentFolder) + "/" + id.substr(id.size() - 2) + "/" + id.substr(id.size() - 1) + "/" + id + "/" + file.name;
        if (file.bytes)
            image_.replace(lock_, {kAttachmentDomain, path}, bytes);
        attachment_.bind(1, id).bind(2, time - kEpoch).bind(3, "~/" + path).bind(4, file.uti).bind(5, file.mimeType).bind(6, isFromMe).bind(7, file.name);
        attachment_.bind(8, static_cast<std::int64_t>(bytes.size())).run();
        const std::int64_t attachment = database_.lastInsertRowid();
        database_.prepare("INSERT INTO message_attachment_join VALUES (?, ?)").bind(1, message).bind(2, attachment).run();
    }

    ImageFolder &image_;
    const WriterLock &lock_;
    sqlite::Database &database_;
    sqlite::Statement message_, join_, attachment_;
    std::map<std::string, std::int64_t> handles_;
    std::int64_t made_ = 0;
};

}  // namespace

void makeEmptyMessages(ImageFolder &image) {
    const WriterLock lock = image.lockForWriting();
    image.createDatabase(lock, kMessages, kNewMessages);
}

void addMessages(ImageFolder &image) {
    const WriterLock lock = image.lockForWriting();
    sqlite::Database database = image.openForWriting(lock, kMessages);
    if (database.integer("SELECT count(*) FROM message") > 0)
        return;
    sqlite::Transaction all(database);
    {
        MessageMaker maker(image, lock, database);
        for (const Chat &chat : chats())
            maker.addChat(chat);
    }
    all.commit();
}

}  // namespace device::sample
