#include "device/messages/ChatReader.h"

#include <algorithm>
#include <limits>
#include <ranges>

#include "device/messages/MessageSchema.h"
#include "device/messages/TypedStream.h"

namespace device::messages {

namespace {

enum Column { kRow, kGuid, kDate, kText, kBody, kHandle, kIsFromMe, kError, kItemType, kAssociatedType, kCaller };

constexpr std::string_view kPlaceholder = "\xEF\xBF\xBC";   // U+FFFC stands where an attachment is

dispatch::Time timeOf(std::int64_t date) {
    constexpr std::int64_t kSecond = 1'000'000'000, kMax = std::numeric_limits<std::int64_t>::max();
    std::int64_t sum = 0;
    if (date <= kLargestSeconds && __builtin_mul_overflow(date, kSecond, &date))
        return dispatch::Time(dispatch::Duration(date < 0 ? -kMax : kMax));
    if (__builtin_add_overflow(date, kEpoch * kSecond, &sum))
        sum = kMax;
    return dispatch::Time(dispatch::Duration(sum));
}

// Without the places of attachments; absent where nothing but white space is left.
NSString shownText(const NSString &text) {
    const std::string_view all = text.view();
    if (all.find(kPlaceholder) == std::string_view::npos) {
        for (std::size_t at = 0; at < all.size();)
            if (!unicode::isWhitespace(unicode::next(all, at)))
                return text;
        return {};
    }
    return shownText(text.stringByReplacingOccurrencesOfString_withString(kPlaceholder, ""));
}

NSString textOf(sqlite::Statement &row) {
    const NSString text = row.text(kText);
    if (!text.isEmpty())
        return shownText(text);
    const auto archived = textOfTypedStream(row.bytes(kBody));
    return archived ? shownText(unicode::sanitized(*archived)) : NSString();
}

NSString firstWithBytes(NSString first, const NSString &second) {
    if (!first.isEmpty())
        return first;
    return second.isEmpty() ? NSString() : second;
}

// Of sorted pairs, those that begin with `first`.
auto secondsOf(const std::vector<std::pair<std::int64_t, std::int64_t>> &pairs, std::int64_t first) {
    return std::ranges::equal_range(pairs, first, {}, [](const auto &pair) { return pair.first; }) | std::views::values;
}

std::string recordOf(const char *kind, std::int64_t row) { return std::string(kind) + " " + std::to_string(row); }

}  // namespace

ChatReader::ChatReader(sqlite::Database &database, Finder find, FailureLog &failures, std::size_t together)
    : database_(database), find_(std::move(find)), failures_(failures), together_(together) {
    const sqlite::Table message = database.table("message");
    if (!message.exists() || !database.table("chat").exists())
        throw AccessError(AccessError::Kind::damaged, database.file(), "has no tables of chats and messages, or is older than iOS 6");
    const std::string text = message.term("text");
    columns_ = "m.ROWID, " + message.term("guid") + ", " + message.term("date") + ", " + text + ", CASE WHEN " + text + " IS NULL OR " + text +
               " = '' THEN " + message.term("attributedBody") + " END, " + message.term("handle_id") + ", " + message.term("is_from_me") + ", " +
               message.term("error") + ", " + message.term("item_type") + ", " + message.term("associated_message_type") + ", " +
               message.term("destination_caller_id");
}

void ChatReader::note(const std::exception &error, const std::string &record) {
    Failure failure = Failure::of(error);
    failure.text = record + ": " + failure.text;
    failures_.note(std::move(failure));
}

// ---------------------------------------------------------------- what is read once

void ChatReader::readHandles() {
    const sqlite::Table table = database_.table("handle");
    if (!table.has("id"))
        return;
    try {
        sqlite::Statement rows = database_.prepare("SELECT ROWID, id FROM handle WHERE id IS NOT NULL");
        while (rows.step())
            handles_.emplace(rows.integer(0), rows.text(1));
    } catch (const sqlite::Error &error) {
        note(error, "handles");
    }
}

ChatReader::Pairs ChatReader::pairsOf(const char *name, const char *first, const char *second) {
    Pairs pairs;
    const sqlite::Table table = database_.table(name);
    if (!table.has(first) || !table.has(second))
        return pairs;
    const auto collect = [&](const std::string &order) {
        sqlite::Statement rows = database_.prepare(std::string("SELECT ") + first + ", " + second + " FROM " + name + order);
        while (rows.step())
            pairs.emplace_back(rows.integer(0), rows.integer(1));
    };
    try {
        collect(" NOT INDEXED");
    } catch (const sqlite::Error &error) {
        note(error, name);
        try {   // an index holds them, too
            collect(std::string(" ORDER BY ") + first + ", " + second);
        } catch (const sqlite::Error &) {
        }
    }
    std::ranges::sort(pairs);
    pairs.erase(std::ranges::unique(pairs).begin(), pairs.end());
    return pairs;
}

std::vector<NSString> ChatReader::membersOf(std::int64_t chat) const {
    std::vector<NSString> members;
    for (const std::int64_t row : secondsOf(members_, chat))
        if (const auto handle = handles_.find(row); handle != handles_.end())
            members.push_back(handle->second);
    return members;
}

// ---------------------------------------------------------------- messages

NSString ChatReader::callerOf(sqlite::Statement &row) {
    if (row.rawText(kCaller) != caller_.view()) {
        caller_ = row.text(kCaller);
        if (caller_.isEmpty())
            caller_ = NSString();
    }
    return caller_;
}

void ChatReader::appendMessage(std::vector<Message> &messages, sqlite::Statement &row) {
    if (row.integer(kItemType) != 0 || row.integer(kAssociatedType) != 0)
        return;
    const bool isSend = row.integer(kIsFromMe) != 0;
    messages.push_back({row.integer(kRow), row.integer(kHandle), timeOf(row.integer(kDate)), row.text(kGuid), textOf(row), callerOf(row), isSend,
                        isSend && row.integer(kError) != 0});
}

// In the order of the file: neighbours on a page belong to many chats. One by one: damage costs only the rows that lie there.
void ChatReader::readMessages() {
    std::vector<std::pair<std::int64_t, std::size_t>> wanted;   // message, place of its chat
    wanted.reserve(waiting_);
    for (std::size_t place = 0; place < chats_.size(); ++place)
        for (const std::int64_t row : secondsOf(joins_, chats_[place].row))
            wanted.emplace_back(row, place);
    std::ranges::sort(wanted);
    for (const auto &[row, place] : wanted) {
        try {
            message_.reset();
            message_.bind(1, row);
            if (message_.step())
                appendMessage(chats_[place].messages, message_);
        } catch (const sqlite::Error &error) {
            note(error, recordOf("message", row));
        }
    }
    const auto order = [](const Message &a, const Message &b) { return a.date != b.date ? a.date < b.date : a.row < b.row; };
    for (Chat &chat : chats_)
        if (!std::ranges::is_sorted(chat.messages, order))
            std::ranges::sort(chat.messages, order);
}

// ---------------------------------------------------------------- elements

void ChatReader::appendElement(MessageBackupChat &chat, const Message &message) {
    chat.date.push_back(message.date);
    chat.isSend.push_back(message.isSend);
    chat.isFailed.push_back(message.isFailed);
    chat.messageID.push_back(message.guid);
    chat.attachmentTittle.emplace_back();
    const auto handle = message.isSend ? handles_.end() : handles_.find(message.handle);
    chat.personSend.push_back(handle == handles_.end() ? NSString() : handle->second);
    chat.messageCallerID.push_back(message.caller);
}

void ChatReader::appendAttachment(MessageBackupChat &chat, const Message &message, std::int64_t attachment) {
    attachment_.reset();
    attachment_.bind(1, attachment);
    if (!attachment_.step())
        return;
    const DevicePath path = attachmentPath(attachment_.rawText(0));
    const NSString name = firstWithBytes(attachment_.text(1), attachment_.text(0));
    NSString content = path.path.empty() ? NSString() : find_(path);
    appendElement(chat, message);
    chat.content.push_back(std::move(content));
    chat.isAttachment.push_back(true);
    chat.attachmentFileName.push_back(name.isNil() ? NSString() : names_.take(name.view()));
    chat.attachmentType.push_back(firstWithBytes(attachment_.text(2), attachment_.text(3)));
}

void ChatReader::appendAttachments(MessageBackupChat &chat, const Message &message) {
    for (const std::int64_t row : secondsOf(attachments_, message.row)) {
        try {
            appendAttachment(chat, message, row);
        } catch (const sqlite::Error &error) {
            note(error, recordOf("attachment", row));
        }
    }
}

void ChatReader::fill(MessageBackupChat &chat, std::vector<Message> &messages) {
    const auto reserve = [&messages](auto &...fields) { (fields.reserve(messages.size()), ...); };
    reserve(chat.content, chat.date, chat.isSend, chat.isFailed, chat.isAttachment, chat.messageID, chat.attachmentFileName,
            chat.attachmentType, chat.attachmentTittle, chat.personSend, chat.messageCallerID);
    for (Message &message : messages) {
        if (attachment_)
            appendAttachments(chat, message);
        if (message.text.isNil())
            continue;
        appendElement(chat, message);
        chat.content.push_back(std::move(message.text));
        chat.isAttachment.push_back(false);
        chat.attachmentFileName.emplace_back();
        chat.attachmentType.emplace_back();
    }
}

// ---------------------------------------------------------------- chats

void ChatReader::prepare() {
    database_.exec("BEGIN");   // the file is locked once, not for every row
    readHandles();
    members_ = pairsOf("chat_handle_join", "chat_id", "handle_id");
    attachments_ = pairsOf("message_attachment_join", "message_id", "attachment_id");
    joins_ = pairsOf("chat_message_join", "chat_id", "message_id");
    message_ = database_.prepare("SELECT " + columns_ + " FROM message m WHERE m.ROWID = ?");
    if (const sqlite::Table table = database_.table("attachment"); table.exists() && !attachments_.empty())
        attachment_ = database_.prepare("SELECT " + table.term("filename") + ", " + table.term("transfer_name") + ", " + table.term("mime_type") +
                                        ", " + table.term("uti") + " FROM attachment WHERE ROWID = ?");
}

bool ChatReader::addChat(sqlite::Statement &row, const Taker &take) {
    Chat chat{make<MessageBackupChat>(), row.integer(0), {}};
    chat.made->chatID = static_cast<std::uint64_t>(chat.row);
    chat.made->account = row.text(1);
    if (NSString service = row.text(2); !service.isEmpty())
        chat.made->serviceName.push_back(std::move(service));
    chat.made->chatTitle = row.text(3);
    chat.made->personJoin = membersOf(chat.row);
    const auto messages = static_cast<std::size_t>(std::ranges::distance(secondsOf(joins_, chat.row)));
    chat.messages.reserve(messages);
    waiting_ += messages;
    chats_.push_back(std::move(chat));
    return waiting_ < together_ || giveChats(take);
}

bool ChatReader::giveChats(const Taker &take) {
    readMessages();
    for (Chat &chat : std::exchange(chats_, {})) {
        fill(*chat.made, chat.messages);
        const float progress = std::clamp(static_cast<float>(chat.made->chatID) / last_, 0.0F, 1.0F);
        if (!chat.made->content.empty() && !take(std::move(chat.made), progress))
            return false;
        chat = {};
    }
    waiting_ = 0;
    return true;
}

void ChatReader::read(const Taker &take) {
    const sqlite::Table joins = database_.table("chat_message_join"), table = database_.table("chat");
    if (!joins.has("chat_id") || !joins.has("message_id"))
        return;
    prepare();
    const std::string columns = "SELECT ROWID, " + table.term("account_login") + ", " + table.term("service_name") + ", " + table.term("display_name") + " FROM chat";
    last_ = static_cast<float>(std::max<std::int64_t>(1, database_.integer("SELECT max(ROWID) FROM chat")));
    std::int64_t reached = std::numeric_limits<std::int64_t>::min();
    bool goesOn = true;
    try {
        sqlite::Statement rows = database_.prepare(columns + " ORDER BY ROWID");
        for (; goesOn && rows.step(); goesOn = addChat(rows, take))
            reached = rows.integer(0);
    } catch (const sqlite::Error &error) {
        note(error, "chats");
        goesOn = readChatsBehind(reached, columns + " WHERE ROWID = ?", take);
    }
    if (goesOn)
        (void)giveChats(take);
}

// The list of chats is damaged: the joins know which chats there are.
bool ChatReader::readChatsBehind(std::int64_t reached, const std::string &sql, const Taker &take) {
    sqlite::Statement row = database_.prepare(sql);
    for (const auto &[chat, message] : joins_) {
        if (chat <= reached)
            continue;
        reached = chat;
        try {
            row.reset();
            row.bind(1, chat);
            if (row.step() && !addChat(row, take))
                return false;
        } catch (const sqlite::Error &error) {
            note(error, recordOf("chat", chat));
        }
    }
    return true;
}

}  // namespace device::messages
