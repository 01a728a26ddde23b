// Threads out of parsed chats, and a long thread in the conversation pane: time per message must not grow with their number.
#include <benchmark/benchmark.h>

#include <random>

#include "HNManagerPlugin/Classes/SubViews/Message/MessageTableView/HNMessageDetailViewController.h"
#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/ThreadBuilder.h"
#include "toolkit/views/NSWindow.h"

namespace {

constexpr std::size_t kChats = 400;
constexpr std::int64_t kContacts = 5'000;

NSString number(std::int64_t person) { return NSString("+49301" + std::to_string(1'000'000 + person)); }

ContactList contacts() {
    ContactList list;
    for (std::int64_t i = 0; i < kContacts; ++i) {
        auto contact = make<ZpContactDataInfo>();
        contact->setCompleteName("Person " + std::to_string(i));
        contact->mutable_phone_numbers().push_back({"home", NSString("+49-301" + std::to_string(1'000'000 + i))});
        contact->mutable_phone_numbers().push_back({"work", NSString("+49-302" + std::to_string(1'000'000 + i))});
        list.push_back(std::move(contact));
    }
    return list;
}

// A tenth of the messages are an hour or more after the one before; one in a hundred has a file with it.
std::shared_ptr<MessageBackupChat> chat(std::uint64_t id, std::size_t messages, std::mt19937 &random) {
    auto made = make<MessageBackupChat>();
    made->chatID = id;
    made->account = "E:someone@example.org";
    made->serviceName = {"iMessage"};
    for (std::uint32_t person = 0; person < 1 + id % 3; ++person)
        made->personJoin.push_back(number(random() % (2 * kContacts)));
    dispatch::Time time(std::chrono::seconds(1'600'000'000));
    for (std::size_t i = 0; i < messages; ++i) {
        const bool isSend = random() % 2, isFile = random() % 100 == 0;
        time += std::chrono::seconds(random() % 10 ? random() % 3'000 : 3'600 + random() % 90'000);
        made->content.push_back(isFile ? NSString("/backup/ab/abcdef0123456789abcdef0123456789abcdef01")
                                       : NSString("Message " + std::to_string(i) + ", of about the length that people write"));
        made->date.push_back(time);
        made->isSend.push_back(isSend);
        made->isFailed.push_back(random() % 1000 == 0);
        made->isAttachment.push_back(isFile);
        made->messageID.push_back(NSString("01234567-89AB-CDEF-0123-" + std::to_string(i)));
        made->attachmentFileName.push_back(isFile ? NSString("file" + std::to_string(i) + ".pdf") : NSString());
        made->attachmentType.push_back(isFile ? NSString("application/pdf") : NSString());
        made->attachmentTittle.emplace_back();
        made->personSend.push_back(isSend ? NSString() : made->personJoin[random() % made->personJoin.size()]);
        made->messageCallerID.push_back("+491700000001");
    }
    return made;
}

void buildThreads(benchmark::State &state) {
    const ContactList book = contacts();
    const auto messages = static_cast<std::size_t>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        std::mt19937 random(7);
        std::vector<std::shared_ptr<MessageBackupChat>> chats;
        for (std::uint64_t id = 0; id < kChats; ++id)
            chats.push_back(chat(id, messages / kChats, random));
        state.ResumeTiming();
        ThreadBuilder builder(book);
        std::vector<std::shared_ptr<HNMessageEntity>> threads;
        for (auto &parsed : chats)
            threads.push_back(builder.threadOf(*std::exchange(parsed, nullptr)));
        benchmark::DoNotOptimize(threads.data());
        state.PauseTiming();
        threads.clear();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(buildThreads)->Arg(5'000)->Arg(50'000)->Arg(500'000)->Unit(benchmark::kMillisecond);

// From the choice of a thread to its last rows on show.
void showThread(benchmark::State &state) {
    std::mt19937 random(7);
    const auto thread = ThreadBuilder({}).threadOf(*chat(1, static_cast<std::size_t>(state.range(0)), random));
    const auto pane = alloc<HNMessageDetailViewController>();
    pane->initWithNibName_bundle("HNMessageDetailViewController", nullptr);
    const auto window = make<NSWindow>(NSRect(0, 0, 620, 500));
    window->setContentView(pane->view());
    for (auto _ : state)
        pane->showMessages(thread->messageArray->snapshot());
    window->close();
}
BENCHMARK(showThread)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

// A page further each time, through the whole thread.
void scrollThread(benchmark::State &state) {
    std::mt19937 random(7);
    const auto thread = ThreadBuilder({}).threadOf(*chat(1, static_cast<std::size_t>(state.range(0)), random));
    const auto pane = alloc<HNMessageDetailViewController>();
    pane->initWithNibName_bundle("HNMessageDetailViewController", nullptr);
    const auto window = make<NSWindow>(NSRect(0, 0, 620, 500));
    window->setContentView(pane->view());
    pane->showMessages(thread->messageArray->snapshot());
    const auto table = pane->tableView.lock();
    double y = 0;
    for (auto _ : state) {
        table->scrollToPoint({0, y});
        y = y + 400 < table->frame().size.height - 500 ? y + 400 : 0;
    }
    window->close();
}
BENCHMARK(scrollThread)->Arg(1'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);

}   // namespace
