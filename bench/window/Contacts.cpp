// The program's own window on a device of 100,000 contacts, offscreen, with the plug-in in it: what a person waits for.
//
// Frames    from the event up to the painted picture, nothing waiting any more; "worst" and "worstCpu" are the slowest of
//           them in milliseconds of the clock and of this thread. The first key of a search word is typed but not counted.
// Starts    of a process of its own; "rss" is the most memory that it held, in megabytes.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>
#include <QWheelEvent>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <ctime>
#include <fstream>
#include <random>

#include "device/ImageFolder.h"
#include "device/contacts/AddressBookStore.h"
#include "device/contacts/AddressBookWriter.h"
#include "device/sample/Sample.h"
#include "host/window/Categories.h"
#include "host/window/Program.h"
#include "host/window/QtLoopHost.h"
#include "host/window/QtPresenter.h"
#include "host/window/QtText.h"
#include "host/window/Shell.h"
#include "host/window/Theme.h"
#include "host/window/ViewSurface.h"
#include "toolkit/dispatch/MainLoop.h"
#include "toolkit/tables/NSTableView.h"
#include "toolkit/views/NSScrollView.h"
#include "toolkit/views/NSTextField.h"

namespace {

namespace fs = std::filesystem;

constexpr unsigned kSeed = 20;
constexpr int kContacts = 100'000;
constexpr const char *kStartOption = "--start";   // this program as the window program, up to the first picture

// ---------------------------------------------------------------- devices

constexpr const char *kFirst[] = {"Ada",  "Alan",  "Barbara", "Charles", "Edsger", "Grace", "Jürgen", "Katherine",
                                  "Lena", "Linus", "Margaret", "Niklaus", "Radia", "Søren", "Tim",    "Wei"};
constexpr const char *kLast[] = {"Lovelace", "Turing", "Liskov", "Babbage", "Dijkstra", "Hopper", "Schmidt", "Johnson",
                                 "Fischer",  "Berg",   "Hamilton", "Wirth", "Perlman",  "Holm",   "Lee",     "Zhang"};

std::shared_ptr<ZpContactDataInfo> madeUp(std::mt19937 &random, int number) {
    const std::string first = kFirst[random() % std::size(kFirst)], last = kLast[random() % std::size(kLast)], digits = std::to_string(random());
    auto contact = make<ZpContactDataInfo>();
    contact->setFirst_name(NSString(first));
    contact->setLast_name(NSString(last + std::to_string(number % 997)));
    contact->mutable_phone_numbers() = {{"Mobile", NSString("+49 171 " + digits)}, {"Home", NSString("+49 30 " + digits)}};
    contact->mutable_emails() = {{"Work", NSString(first + "." + last + digits + "@example.com")}};
    if (number % 2)
        contact->mutable_addresses() = {{"Home", NSString("Some Street " + digits), "Springfield", "State", "12345", "Country", nullptr}};
    if (number % 4 == 0)
        contact->setNotes(NSString("A note that somebody wrote down " + digits));
    return contact;
}

void makeDevice(const fs::path &folder, int contacts) {
    using namespace device;
    sample::createImage(folder, "Bench");
    const ImageFolder image(folder);
    const WriterLock lock = image.lockForWriting();
    sqlite::Database database = image.openForWriting(lock, contacts::kAddressBook);
    sqlite::Transaction all(database);
    contacts::AddressBookWriter writer(database, false, 0);
    std::mt19937 random(kSeed);
    for (int i = 0; i < contacts; ++i)
        writer.add(*madeUp(random, i));
    all.commit();
}

// Everything of this run: the devices and the user's folders.
class Folder {
public:
    Folder() {
        std::string name = (fs::temp_directory_path() / "hn-bench-XXXXXX").string();
        path_ = mkdtemp(name.data());
        for (const char *user : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME"})
            setenv(user, (path_ / user).c_str(), 1);
    }
    ~Folder() { fs::remove_all(path_); }
    Folder(const Folder &) = delete;
    [[nodiscard]] fs::path device(int contacts) const { return path_ / std::to_string(contacts); }
    // In a process of its own, so that this one's memory stays that of a window.
    void make(int contacts) const {
        const pid_t child = fork();
        if (child == 0) {
            makeDevice(device(contacts), contacts);
            _exit(0);
        }
        waitpid(child, nullptr, 0);
    }

private:
    fs::path path_;
};

const Folder *folder = nullptr;

// ---------------------------------------------------------------- the window

double millisecondsOf(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

class Window : public QObject {
public:
    Window() {
        dispatch::reset(dispatch::makeRealClock());
        dispatch::setLoopHost(loop_);
        host::Theme::use(host::ThemeKind::light);
        host::setSystemFontFamily(QStringLiteral("DejaVu Sans"));
        TextMeasurer::install(std::make_shared<host::QtTextMeasurer>());
        services_ = std::make_unique<host::Services>([](const std::string &) {}, [](device::AccessError::Kind, const std::string &) {});
        services_->openDevice(folder->device(kContacts));
        shell->start(*services_, presenter_);
        surface = &presenter_->mirrorOf(*shell->window())->surface();
        surface->installEventFilter(this);
        shell->choose(host::kContactsCategory);
        loop_->runUntil([this] { return shell->hasLoaded() && dispatch::waitingMainBlocks() == 0 && isPainted_; });
        surface->QWidget::window()->activateWindow();
        loop_->runUntil([this] { return surface->isActiveWindow(); });
    }

    // Serves what the event brought about until the picture shows it.
    void show() {
        isPainted_ = false;
        do
            QApplication::processEvents();
        while (dispatch::waitingMainBlocks() > 0 || !shell->hasLoaded());
        QCoreApplication::sendPostedEvents();
        if (!isPainted_)
            surface->repaint();
    }
    void click(const QPointF &place, Qt::KeyboardModifiers modifiers = {}) {
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent event(type, place, place, Qt::LeftButton, type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, modifiers);
            QCoreApplication::sendEvent(surface, &event);
        }
    }
    void key(int key, const QString &text = {}, Qt::KeyboardModifiers modifiers = {}) {
        QWidget *target = QApplication::focusWidget() ? QApplication::focusWidget() : surface;
        QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
        QCoreApplication::sendEvent(target, &event);
    }
    void wheel(int notches) {
        const QPointF place = rowPlace(8);
        QWheelEvent event(place, place, {}, {0, 120 * notches}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(surface, &event);
    }
    // The middle of the n-th row on the screen.
    [[nodiscard]] QPointF rowPlace(int shown) const {
        const auto list = shell->list();
        const NSRect viewport = list->viewport();
        return surface->rectOf(*list, {{viewport.minX() + 200, viewport.minY() + 20 + 40.0 * shown}, {1, 1}}).center();
    }
    [[nodiscard]] QPointF headerPlace(std::int64_t column) const {
        const auto header = shell->list()->headerView();
        const NSRect place = header->headerRectOfColumn(column);
        return surface->rectOf(*header, {{place.minX() + 60, place.minY() + place.size.height / 2}, {1, 1}}).center();
    }

    std::shared_ptr<host::Shell> shell = make<host::Shell>();
    host::ViewSurface *surface = nullptr;

protected:
    bool eventFilter(QObject *, QEvent *event) override {
        isPainted_ = isPainted_ || event->type() == QEvent::Paint;
        return false;
    }

private:
    std::shared_ptr<QtLoopHost> loop_ = std::make_shared<QtLoopHost>();
    std::shared_ptr<host::QtPresenter> presenter_ = host::QtPresenter::install();
    std::unique_ptr<host::Services> services_;
    bool isPainted_ = false;
};

// Never ended: its workers go with the process.
Window &window() {
    static auto *const shown = new Window;
    return *shown;
}

// What a frame costs, and the worst of them.
class Frames {
public:
    explicit Frames(benchmark::State &state) : state_(state) {}
    ~Frames() {
        state_.counters["worst"] = worst_;
        state_.counters["worstCpu"] = worstCpu_;
    }
    Frames(const Frames &) = delete;
    template <class Event> void frame(Event &&event) {
        const double clock = millisecondsOf(CLOCK_MONOTONIC), cpu = millisecondsOf(CLOCK_THREAD_CPUTIME_ID);
        event();
        window().show();
        const double took = millisecondsOf(CLOCK_MONOTONIC) - clock;
        worst_ = std::max(worst_, took);
        worstCpu_ = std::max(worstCpu_, millisecondsOf(CLOCK_THREAD_CPUTIME_ID) - cpu);
        state_.SetIterationTime(took / 1e3);
    }

private:
    benchmark::State &state_;
    double worst_ = 0, worstCpu_ = 0;
};

// ---------------------------------------------------------------- frames

void scroll(benchmark::State &state) {
    window();
    Frames frames(state);
    int notches = -static_cast<int>(state.range(0));
    for (auto _ : state) {
        frames.frame([&] { window().wheel(notches); });
        const NSRect shown = window().shell->list()->viewport();
        if (shown.minY() <= 0 || shown.maxY() >= window().shell->list()->frame().size.height)
            notches = -notches;
    }
}
BENCHMARK(scroll)->Arg(1)->Arg(20)->Iterations(300)->UseManualTime()->Unit(benchmark::kMillisecond);

void scrollAnywhere(benchmark::State &state) {
    Frames frames(state);
    std::mt19937 random(kSeed);
    const auto list = window().shell->list();
    for (auto _ : state)
        frames.frame([&] { list->scrollToPoint({0, static_cast<double>(random() % (40 * kContacts))}); });
    list->scrollToPoint({0, 0});
}
BENCHMARK(scrollAnywhere)->Iterations(200)->UseManualTime()->Unit(benchmark::kMillisecond);

void select(benchmark::State &state) {
    Frames frames(state);
    int row = 0;
    for (auto _ : state)
        frames.frame([&] { window().click(window().rowPlace(row++ % 10)); });
}
BENCHMARK(select)->Iterations(200)->UseManualTime()->Unit(benchmark::kMillisecond);

// All, then one row out of it and in again, then one alone.
void selectAll(benchmark::State &state) {
    Frames frames(state);
    int step = 0;
    for (auto _ : state)
        frames.frame([&] {
            if (step % 4 == 0)
                window().key(Qt::Key_A, {}, Qt::ControlModifier);
            else
                window().click(window().rowPlace(3), step % 4 == 3 ? Qt::NoModifier : Qt::ControlModifier);
            ++step;
        });
}
BENCHMARK(selectAll)->Iterations(80)->UseManualTime()->Unit(benchmark::kMillisecond);

void arrowKeys(benchmark::State &state) {
    Frames frames(state);
    window().click(window().rowPlace(0));
    for (auto _ : state)
        frames.frame([&] { window().key(Qt::Key_Down); });
}
BENCHMARK(arrowKeys)->Iterations(200)->UseManualTime()->Unit(benchmark::kMillisecond);

// ---------------------------------------------------------------- sort and search

void sort(benchmark::State &state) {
    Frames frames(state);
    for (auto _ : state)
        frames.frame([&] { window().click(window().headerPlace(state.range(0))); });
}
BENCHMARK(sort)->DenseRange(1, 3)->Iterations(10)->UseManualTime()->Unit(benchmark::kMillisecond);

void search(benchmark::State &state) {
    Frames frames(state);
    constexpr const char16_t *kWords[] = {u"lena", u"schmidt 1", u"171", u"example.com", u"søren h", u"zq"};
    std::vector<std::pair<int, QString>> keys;   // the word and the key
    for (std::size_t word = 0; word < std::size(kWords); ++word)
        for (const QChar c : QString::fromUtf16(kWords[word]))
            keys.emplace_back(static_cast<int>(word), QString(c));
    std::size_t next = 0;
    int word = -1;
    window().shell->find();
    window().show();
    for (auto _ : state) {
        if (keys[next].first != word) {
            word = keys[next].first;
            window().key(Qt::Key_A, {}, Qt::ControlModifier);   // the next one takes the place of the last word
            window().key(0, keys[next++].second);
            window().show();
        }
        frames.frame([&] { window().key(0, keys[next].second); });
        next = (next + 1) % keys.size();
        word = next == 0 ? -1 : word;
    }
    window().key(Qt::Key_Escape);
    window().show();
}
BENCHMARK(search)->Iterations(200)->UseManualTime()->Unit(benchmark::kMillisecond);

// ---------------------------------------------------------------- starts

class EndsAtFirstPicture : public QObject {
    bool eventFilter(QObject *object, QEvent *event) override {
        if (event->type() == QEvent::Paint && dynamic_cast<host::ViewSurface *>(object))
            QTimer::singleShot(0, [] { _exit(0); });
        return false;
    }
};

// Ends as soon as the first picture stands.
int startWindow(int argc, char **argv) {
    qAddPreRoutine([] { qApp->installEventFilter(new EndsAtFirstPicture); });
    return host::runWindowProgram(argc, argv);
}

// Gives the most memory held, in megabytes; stops the clock of `state` when it has ended.
double run(benchmark::State &state, std::vector<std::string> words) {
    std::vector<char *> arguments;
    for (std::string &word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const double before = millisecondsOf(CLOCK_MONOTONIC);
    const pid_t child = vfork();
    if (child == 0) {
        execv("/proc/self/exe", arguments.data());
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    const double took = millisecondsOf(CLOCK_MONOTONIC) - before;
    state.SetIterationTime(took / 1e3);
    state.counters["worst"] = std::max(static_cast<double>(state.counters["worst"]), took);
    state.counters["cpu"] = static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1e3 +
                            static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e3;
    if (status != 0)
        state.SkipWithError("the program failed");
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

void firstWindow(benchmark::State &state) {
    for (auto _ : state)
        state.counters["rss"] = run(state, {kStartOption, "--device", folder->device(static_cast<int>(state.range(0))).string()});
}
BENCHMARK(firstWindow)->Arg(20)->Arg(kContacts)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);

// Up to the loaded list.
void loadedWindow(benchmark::State &state) {
    const std::string picture = folder->device(0).string() + ".png";
    for (auto _ : state)
        state.counters["rss"] = run(state, {"hnmanager-window", "--device", folder->device(static_cast<int>(state.range(0))).string(), "--screenshot", picture});
}
BENCHMARK(loadedWindow)->Arg(kContacts)->Iterations(2)->UseManualTime()->Unit(benchmark::kMillisecond);

// This process, after all of the above.
void memoryAfterUse(benchmark::State &state) {
    window();
    for (auto _ : state)
        benchmark::ClobberMemory();
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmRSS:") || line.starts_with("VmHWM:"))
            state.counters[line.substr(0, 5)] = std::stod(line.substr(6)) / 1024;
}
BENCHMARK(memoryAfterUse)->Iterations(1);

}  // namespace

int main(int argc, char **argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const std::string_view name = argv[0];
    if (name == kStartOption)
        return startWindow(argc, argv);
    if (name == "hnmanager-window")
        return host::runWindowProgram(argc, argv);
    const Folder made;
    folder = &made;
    for (const int contacts : {20, kContacts})
        made.make(contacts);
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
