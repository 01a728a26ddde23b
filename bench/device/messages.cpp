// Parsing messages of a device image chat by chat, and taking and parsing a backup of it.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "device/BackupFolder.h"
#include "device/backup/BackupWriter.h"
#include "device/messages/MessageSchema.h"
#include "device/messages/MessageStore.h"
#include "device/messages/TypedStream.h"
#include "device/sample/Sample.h"

using namespace device;
using namespace device::messages;
using device::backup::BackupWriter;

namespace {

namespace fs = std::filesystem;

using namespace std::string_view_literals;

constexpr std::string_view kBody = "\x04\x0Bstreamtyped\x81\xE8\x03\x84\x01@\x84\x84\x84\x12NSAttributedString\x00\x84\x84\x08NSObject\x00\x85\x92\x84\x84\x84\x08NSString\x01\x94\x84\x01+"
                                 "\x2CShall we meet at the old boatyard at seven?!\x86\x84\x02iI\x01\x2C\x92\x84\x84\x84\x0CNSDictionary\x00\x94\x84\x01i\x00\x86\x86"sv;

// A new image with messages in 400 chats; removed at the end. `inBody`: the words stand in attributedBody alone.
class Image {
public:
    Image(std::int64_t count, bool inBody, std::int64_t everyNthHasFile) {
        std::string pattern = (fs::temp_directory_path() / "bench-messages-XXXXXX").string();
        folder_ = mkdtemp(pattern.data());
        sample::createImage(path(), "Bench");
        const ImageFolder image(path());
        const WriterLock lock = image.lockForWriting();
        sqlite::Database database = image.openForWriting(lock, kMessages);
        sqlite::Transaction all(database);
        fill(database, count, inBody, everyNthHasFile);
        all.commit();
        for (std::int64_t i = everyNthHasFile; everyNthHasFile > 0 && i <= count; i += everyNthHasFile)
            replaceFile(i);
    }
    ~Image() { fs::remove_all(folder_); }
    [[nodiscard]] fs::path path() const { return folder_ / "image"; }
    [[nodiscard]] const fs::path &folder() const { return folder_; }

private:
    static void fill(sqlite::Database &database, std::int64_t count, bool inBody, std::int64_t nth) {
        database.exec("DROP TRIGGER after_insert_on_chat_message_join; DROP TRIGGER after_insert_on_message_attachment_join;"
                      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 400) INSERT INTO handle (ROWID, id, service) SELECT i, '+1555' || (1000000 + i), "
                      "'iMessage' FROM n; INSERT INTO chat (ROWID, guid, service_name) SELECT ROWID, 'c' || ROWID, 'iMessage' FROM handle;"
                      "INSERT INTO chat_handle_join SELECT ROWID, ROWID FROM handle");
        sqlite::Statement add = database.prepare(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ?1) INSERT INTO message (ROWID, guid, text, attributedBody, handle_id, service, date, "
            "is_from_me, destination_caller_id) SELECT i, '5A17B0A7-0000-4000-8000-' || (100000000000 + i), ?2, ?3, i * 7919 % 400 + 1, 'iMessage', "
            "600000000000000000 + i * 60000000000, i % 2, '+12025550147' FROM n");
        add.bind(1, count);
        if (inBody)
            add.bindNull(2);
        else
            add.bind(2, "Shall we meet at the old boatyard at seven?!");
        add.bindBytes(3, kBody).run();   // a device keeps both
        database.exec("INSERT INTO chat_message_join (chat_id, message_id, message_date) SELECT handle_id, ROWID, date FROM message");
        if (nth > 0)
            database.exec("INSERT INTO attachment (ROWID, guid, original_guid, filename, transfer_name, mime_type) SELECT ROWID, 'a' || ROWID, 'a' || ROWID, "
                          "'~/Library/SMS/Attachments/' || (ROWID % 256) || '/' || ROWID || '/IMG_' || (ROWID % 10000) || '.JPG', 'IMG_' || (ROWID % 10000) || '.JPG', "
                          "'image/jpeg' FROM message WHERE ROWID % " + std::to_string(nth) + " = 0; INSERT INTO message_attachment_join SELECT ROWID, ROWID FROM attachment");
    }
    void replaceFile(std::int64_t row) const {
        const std::string number = std::to_string(row);
        const fs::path file = path() / "MediaDomain/Library/SMS/Attachments" / std::to_string(row % 256) / number / ("IMG_" + std::to_string(row % 10000) + ".JPG");
        fs::create_directories(file.parent_path());
        File made = File::create(file);
        made.write(std::string(40'000, 'j'));
    }
    fs::path folder_;
};

std::int64_t parse(const std::shared_ptr<const FileTree> &tree) {
    std::int64_t elements = 0;
    MessageStore(tree).readChats([&](const auto &chat, float) {
        elements += static_cast<std::int64_t>(chat->content.size());
        return true;
    });
    return elements;
}

void readMessages(benchmark::State &state) {
    const Image image(state.range(0), state.range(1) != 0, 0);
    const auto tree = std::make_shared<ImageFolder>(image.path());
    for (auto _ : state)
        benchmark::DoNotOptimize(parse(tree));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(readMessages)->ArgsProduct({{5'000, 50'000, 500'000}, {0, 1}})->ArgNames({"messages", "inBody"})->Unit(benchmark::kMillisecond);

// One message in twenty carries a file.
void backUpAndRead(benchmark::State &state) {
    const Image image(state.range(0), false, 20);
    const ImageFolder tree(image.path());
    const BackupWriter::Hooks hooks{[] { return true; }, [](double) {}, [] { return false; }};
    double copying = 0, parsing = 0;
    for (auto _ : state) {
        const auto begin = std::chrono::steady_clock::now();
        const auto folder = BackupWriter(tree, hooks).write(image.folder() / "backup");
        const auto copied = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(parse(std::make_shared<BackupFolder>(*folder)));
        copying += std::chrono::duration<double>(copied - begin).count();
        parsing += std::chrono::duration<double>(std::chrono::steady_clock::now() - copied).count();
    }
    state.counters["copySeconds"] = copying / static_cast<double>(state.iterations());
    state.counters["parseSeconds"] = parsing / static_cast<double>(state.iterations());
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(backUpAndRead)->Arg(5'000)->Arg(50'000)->Arg(200'000)->Unit(benchmark::kMillisecond);

void decodeBody(benchmark::State &state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(textOfTypedStream(kBody));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(decodeBody);

}  // namespace
