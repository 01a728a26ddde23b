#include "host/window/Program.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFontDatabase>
#include <QProxyStyle>
#include <QScreen>

#include <cstdio>
#include <fstream>
#include <iterator>

#include "HNManagerPlugin/contracts/RVFoundation/FatalParseFailure.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "device/OpenError.h"
#include "host/services/ExportPlaces.h"
#include "host/services/HeicPicture.h"
#include "host/window/Accessibility.h"
#include "host/window/Categories.h"
#include "host/window/DesktopTheme.h"
#include "host/window/Notices.h"
#include "host/window/PictureCache.h"
#include "host/window/QtLoopHost.h"
#include "host/window/QtText.h"
#include "host/window/Shell.h"
#include "host/window/Theme.h"
#include "host/window/ViewSurface.h"
#include "toolkit/dispatch/Guard.h"
#include "toolkit/dispatch/Queue.h"
#include "toolkit/services/NSBundle.h"
#include "toolkit/services/NSLog.h"
#include "toolkit/views/NSApplication.h"
#include "toolkit/views/SetAsideFile.h"

namespace host {

namespace {

constexpr int kDone = 0, kFailed = 1, kWrongUsage = 2, kNotOpened = 3;

struct WindowOptions {
    std::optional<std::string> device;
    std::int64_t category = kContactsCategory;
    std::optional<ThemeKind> theme;
    bool isRightToLeft = false;
    QString screenshot;
};

// Pictures on the buttons of native dialogs come in colours and places of their own.
class PlainButtons : public QProxyStyle {
public:
    PlainButtons() : QProxyStyle(QStringLiteral("Fusion")) {}
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget, QStyleHintReturn *data) const override {
        return hint == SH_DialogButtonBox_ButtonsHaveIcons ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
    }
};

void say(const std::string &text) { std::fprintf(stderr, "hnmanager-window: %s\n", text.c_str()); }

int wrongUsage(const std::string &text) {
    say(text);
    return kWrongUsage;
}

// Absent where the program goes on.
std::optional<int> parse(const QStringList &arguments, WindowOptions &options) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QObject::tr("Manages the data of a device in a window."));
    const QCommandLineOption help = parser.addHelpOption();
    QStringList words;
    for (const CategoryName &category : kCategories)
        words << QString::fromUtf8(category.word);
    parser.addOptions({{"device", "A device image or backup folder; else $HNMANAGER_DEVICE, else the embedded image.", "DIR"},
                       {"category", "The category to show first: " + words.join(", ") + ".", "NAME"},
                       {"theme", "light or dark; else the desktop's.", "THEME"},
                       {"rtl", "Lay out from right to left."},
                       {"screenshot", "Write a picture of the window once the category has loaded, and end.", "FILE.png"},
                       {"yes", "For the start script; without effect here."}});
    if (!parser.parse(arguments))
        return wrongUsage(parser.errorText().toStdString());
    if (parser.isSet(help)) {
        std::fputs(qUtf8Printable(parser.helpText()), stdout);
        return kDone;
    }
    if (!parser.positionalArguments().isEmpty())
        return wrongUsage("unexpected argument " + parser.positionalArguments().front().toStdString());
    if (parser.isSet("device"))
        options.device = parser.value("device").toStdString();
    if (parser.isSet("category")) {
        options.category = words.indexOf(parser.value("category"));
        if (options.category < 0)
            return wrongUsage("unknown category " + parser.value("category").toStdString());
    }
    if (parser.isSet("theme")) {
        const QString theme = parser.value("theme");
        if (theme != "light" && theme != "dark")
            return wrongUsage("--theme is light or dark");
        options.theme = theme == "dark" ? ThemeKind::dark : ThemeKind::light;
    }
    options.isRightToLeft = parser.isSet("rtl");
    options.screenshot = parser.value("screenshot");
    return std::nullopt;
}

// The texts with the key that asks for it, everything else as it stands.
void turnTextsRightToLeft() {
    const auto bundle = NSBundle::mainBundle();
    std::ifstream file(bundle->pathForResource_ofType("en.lproj/localization", "strings").str(), std::ios::binary);
    TextTable table = readStringsFile(std::string(std::istreambuf_iterator<char>(file), {}));
    table["Current_Language"] = "Arablic";
    bundle->setTable("localization", std::move(table));
}

void followLanguage(bool isRightToLeft) {
    if (isRightToLeft)
        turnTextsRightToLeft();
    const bool turned = isRightToLeftLanguage();
    NSApp()->setUserInterfaceLayoutDirection(turned ? NSUserInterfaceLayoutDirection::rightToLeft
                                                    : NSUserInterfaceLayoutDirection::leftToRight);
    QApplication::setLayoutDirection(turned ? Qt::RightToLeft : Qt::LeftToRight);
}

void tellFailure(const char *what, const std::exception_ptr &failure) {
    NSLog("%@: %@", NSString(what), NSString(dispatch::reasonOf(failure)));
    try {
        std::rethrow_exception(failure);
    } catch (const FatalParseFailure &fatal) {
        const QString line = fatal.line() ? QObject::tr("Line %1: ").arg(*fatal.line()) : QString();
        showNotice(nullptr, QObject::tr("%1 cannot be read.").arg(qtString(fatal.file())),
                   line + qtString(fatal.reason()) + u'\n' +
                       QObject::tr("Nothing of it was imported. Check the file, or export it anew from the program that wrote it."));
    } catch (...) {
        showNotice(nullptr, QObject::tr("Something went wrong."),
                   QObject::tr("What was done so far is kept. Try it again."), QString::fromUtf8(what) + u'\n' + QString::fromUtf8(dispatch::reasonOf(failure)));
    }
}

// On the main thread, whichever it is told on.
void onMain(std::function<void()> body) {
    if (dispatch::isMain())
        body();
    else
        dispatch::async(dispatch::main(), std::move(body));
}

class Window {
public:
    explicit Window(const WindowOptions &options) : options_(options) {
        dispatch::adoptMainThread();
        dispatch::reset(dispatch::makeRealClock());
        dispatch::setLoopHost(loop_);
        dispatch::setFailureSink([](const char *what, std::exception_ptr failure) {
            onMain([what = std::string(what), failure] { tellFailure(what.c_str(), failure); });
        });
        Theme::use(options.theme.value_or(Theme::ofSystem()));
        if (!options.theme)
            desktop_ = std::make_unique<DesktopTheme>(Theme::use);
        setSystemFontFamily(QFontDatabase::systemFont(QFontDatabase::GeneralFont).family());
        TextMeasurer::install(std::make_shared<QtTextMeasurer>());
        const QRect screen = QApplication::primaryScreen()->geometry();
        NSWindow::setScreenFrame({0, 0, double(screen.width()), double(screen.height())});
        PictureCache::shared().setDecoder(heicImage);
        installAccessibility();
        presenter_ = QtPresenter::install();
        const auto tellOnMain = [](const QString &what) {
            return [what](const std::string &reason) {
                onMain([what, reason] { whenQuiet([=] { showNotice(nullptr, what, QString::fromStdString(reason)); }); });
            };
        };
        const auto refused = tellOnMain(QObject::tr("The device does not allow that now.")), gone = tellOnMain(QObject::tr("No device is connected."));
        services_ = std::make_unique<Services>(tellOnMain(QObject::tr("A message of the program")), [=](auto kind, const std::string &reason) {
            if (kind == device::AccessError::Kind::gone)
                gone(QObject::tr("Put its folder back, or choose another device from the File menu.").toStdString());
            else
                refused(reason);
        });
    }

    int run() {
        try {
            const auto folder = services_->deviceFolder(options_.device);
            services_->openDevice(folder);
            followLanguage(options_.isRightToLeft);
            shell_ = make<Shell>();
            shell_->start(*services_, presenter_);
            shell_->deviceIsIn(folder);
        } catch (const std::exception &error) {
            say(error.what());
            return kNotOpened;
        }
        shell_->choose(options_.category);
        if (!options_.screenshot.isEmpty())
            return takeScreenshot();
        loop_->runUntil([this] { return shell_->isClosed(); });
        return kDone;
    }

    // What still runs is let go with the process: its work on the device is whole at every moment.
    [[noreturn]] void end(int status) {
        if (shell_)
            shell_->close();
        presenter_->uninstall();
        ExportPlaces::remove();
        SetAsideFile::settleAll();
        services_->removeScratch();
        std::fflush(nullptr);
        std::_Exit(status);
    }

private:
    int takeScreenshot() {
        loop_->runUntil([this] { return shell_->isClosed() || (shell_->hasLoaded() && dispatch::waitingMainBlocks() == 0); });
        if (shell_->isClosed())
            return kFailed;
        WindowMirror &mirror = *presenter_->mirrorOf(*shell_->window());
        mirror.surface().syncParts();
        mirror.surface().syncParts();
        QApplication::sendPostedEvents();
        if (mirror.grab().save(options_.screenshot))
            return kDone;
        say("the picture cannot be written: " + options_.screenshot.toStdString());
        return kFailed;
    }

    WindowOptions options_;
    std::shared_ptr<QtLoopHost> loop_ = std::make_shared<QtLoopHost>();
    std::shared_ptr<QtPresenter> presenter_;
    std::unique_ptr<Services> services_;
    std::shared_ptr<Shell> shell_;
    std::unique_ptr<DesktopTheme> desktop_;
};

}  // namespace

int runWindowProgram(int argc, char **argv) {
    QApplication::setStyle(new PlainButtons);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("hnmanager-window"));
    QApplication::setQuitOnLastWindowClosed(false);
    WindowOptions options;
    if (const auto status = parse(QApplication::arguments(), options))
        return *status;
    std::unique_ptr<Window> window;
    try {
        window = std::make_unique<Window>(options);
    } catch (const std::exception &error) {
        say(error.what());
        return kNotOpened;
    }
    window->end(window->run());
}

}  // namespace host
