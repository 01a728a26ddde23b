#include "host/window/Shell.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMenuBar>

#include <algorithm>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ActionRouter.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIWindow.h"
#include "device/OpenError.h"
#include "host/window/FailureNotices.h"
#include "host/window/MainMenu.h"
#include "host/window/Notices.h"
#include "host/window/QtText.h"
#include "host/window/RepeatNotices.h"
#include "host/window/ViewSurface.h"
#include "toolkit/dispatch/Guard.h"
#include "toolkit/services/NSNotificationCenter.h"
#include "toolkit/services/NSUserDefaults.h"
#include "toolkit/tables/NSTableView.h"
#include "toolkit/views/NSApplication.h"
#include "toolkit/views/NSButton.h"
#include "toolkit/views/NSTextField.h"

namespace host {

namespace fs = std::filesystem;

HN_CLASS_TABLE(Shell, NSObjectTable)

namespace {

constexpr const char *kRecentKey = "HNWindowRecentDevices", *kWidthKey = "HNWindowWidth", *kHeightKey = "HNWindowHeight";
constexpr std::size_t kRecentLimit = 10;
constexpr std::int64_t kOwnToolBarItem = 1;   // the plug-in looks for it when it is let go

// Below `root`, depth first, visible ones alone; null where none passes.
template <class T> std::shared_ptr<T> firstVisible(const std::shared_ptr<NSView> &root, const std::function<bool(T &)> &passes) {
    if (!root || root->isHidden())
        return nullptr;
    if (const auto view = std::dynamic_pointer_cast<T>(root); view && passes(*view))
        return view;
    for (const auto &below : root->subviews())
        if (const auto found = firstVisible<T>(below, passes))
            return found;
    return nullptr;
}

}  // namespace

// ---------------------------------------------------------------- life

Shell::Shell() = default;
Shell::~Shell() = default;

void Shell::start(Services &services, const std::shared_ptr<QtPresenter> &presenter) {
    services_ = &services;
    presenter_ = presenter;
    ActionRouter.toolBarEvent().setSelectItem(kOwnToolBarItem);
    principal_ = services.loadPlugin();
    main_ = principal_->loadWithViewController();
    if (!main_ || !main_->view())
        throw PluginError("the plug-in has no main view");
    makeWindow();
    const std::weak_ptr<Shell> self = weakOf(this);
    repeats_ = RepeatNotices::install([this] { return categoryModel(); }, [this] { return hasLoaded(); });
    failures_ = FailureNotices::install(services.deviceLayer()->record());
    NSNotificationCenter::defaultCenter().addObserver_block(
        shared_from_this(), NMobileDeviceDisConnectionDidChangeNotification,
        [self](const std::shared_ptr<NSNotification> &) { tell(self, [](Shell &shell) { shell.deviceWentAway(); }); });
}

void Shell::makeWindow() {
    auto &defaults = NSUserDefaults::standardUserDefaults();
    const auto sizeOr = [&](const char *key, double usual, double least) {
        const auto kept = static_cast<double>(defaults.integerForKey(key));
        return kept > 0 ? std::max(kept, least) : usual;
    };
    const NSRect content(0, 0, sizeOr(kWidthKey, kWidth, kLeastWidth), sizeOr(kHeightKey, kHeight, kLeastHeight));
    window_ = make<RUIWindow>();
    window_->initWithContentRect_styleMask(content, NSTitledWindowMask | NSClosableWindowMask | NSMiniaturizableWindowMask | NSResizableWindowMask);
    window_->setMinSize({kLeastWidth, kLeastHeight});
    window_->setDelegate(selfOf(this));
    window_->contentView()->addSubview(main_->view());
    window_->contentView()->pinEdgesOf(main_->view());
    showDevice();
    menu_ = std::make_unique<MainMenu>(*this);
    presenter_->windowMade = [this](WindowMirror &mirror) {
        if (mirror.toolkitWindow() != window_)
            return;
        mirror.setMenuBar(menu_->bar());
        mirror.surface().filesDropped = [this](const auto &view, const QStringList &files) { return dropFiles(view, files); };
        // The search box searches as one types.
        mirror.surface().typed = [this](NSTextField &field) {
            if (searchField().get() == &field)
                field.sendAction();
        };
        mirror.surface().escaped = [this](NSTextField &field) { return searchField().get() == &field && endSearch(); };
        mirror.surface().takesFiles = [this](const auto &view, const QStringList &) { return takesFiles(view); };
    };
    window_->makeKeyAndOrderFront();
}

bool Shell::windowShouldClose(NSWindow &) {
    const auto *plugin = dynamic_cast<IPluginProtocol *>(main_.get());
    return !plugin || !plugin->wantsNotice(IPluginProtocol::Notice::mainWindowShouldClose) ||
           dynamic_cast<IPluginProtocol *>(main_.get())->mainWindowShouldClose();
}

void Shell::windowWillClose(NSWindow &) {
    auto &defaults = NSUserDefaults::standardUserDefaults();
    const NSSize size = window_->contentRect().size;
    defaults.setInteger_forKey(static_cast<std::int64_t>(size.width), kWidthKey);
    defaults.setInteger_forKey(static_cast<std::int64_t>(size.height), kHeightKey);
    isClosed_ = true;
}

void Shell::close() {
    NSNotificationCenter::defaultCenter().removeObserver(this);
    if (failures_)
        failures_->remove();
    if (repeats_)
        repeats_->remove();
    failures_ = nullptr;
    repeats_ = nullptr;
    main_ = nullptr;
    principal_ = nullptr;
    if (window_) {
        window_->setDelegate(nullptr);
        window_->close();
    }
    window_ = nullptr;
    presenter_->windowMade = {};
    menu_.reset();
}

// ---------------------------------------------------------------- categories

void Shell::choose(std::int64_t index) {
    chosen_ = index;
    ActionRouter.managerEvent().selectManagerItem(index);
}

std::shared_ptr<NSView> Shell::categoryView() const {
    const id tree = main_ ? main_->valueForKey("viewManager").object() : nullptr;
    return tree ? std::dynamic_pointer_cast<NSView>(tree->valueForKey("currentView").object()) : nullptr;
}

id Shell::categoryManager() const {
    const auto view = categoryView();
    const auto controller = view ? view->nextResponder() : nullptr;
    return controller ? controller->valueForKey("viewManager").object() : nullptr;
}

id Shell::categoryModel() const {
    const auto view = categoryView();
    const auto controller = view ? view->nextResponder() : nullptr;
    return controller ? controller->valueForKey("viewModel").object() : nullptr;
}

bool Shell::hasLoaded() const {
    const id manager = categoryManager();
    if (!categoryView() || !manager || manager->valueForKey("loadingFinished").boolValue())
        return categoryView() != nullptr;
    const auto cloud = std::dynamic_pointer_cast<NSView>(manager->valueForKey("disable_iCloudView").object());
    return cloud && cloud->superview() && !cloud->isHiddenOrHasHiddenAncestor();
}

// ---------------------------------------------------------------- devices

void Shell::showDevice() {
    const auto session = services_->deviceLayer()->session();
    if (window_)
        window_->setTitle(session ? session->name() : NSString("Manager"));
}

std::vector<std::string> Shell::recentDevices() const {
    std::vector<std::string> folders;
    for (const NSString &folder : NSUserDefaults::standardUserDefaults().stringForKey(kRecentKey).componentsSeparatedByString("\n"))
        if (!folder.isEmpty())
            folders.push_back(folder.str());
    return folders;
}

void Shell::rememberDevice(const fs::path &folder) {
    std::vector<std::string> folders = recentDevices();
    const std::string path = fs::absolute(folder).lexically_normal().string();
    std::erase(folders, path);
    folders.insert(folders.begin(), path);
    folders.resize(std::min(folders.size(), kRecentLimit));
    std::string all;
    for (const std::string &one : folders)
        all += one + "\n";
    NSUserDefaults::standardUserDefaults().setObject_forKey(Value(NSString(all)), kRecentKey);
}

void Shell::deviceIsIn(const fs::path &folder) {
    folder_ = folder;
    rememberDevice(folder);
    showDevice();
}

bool Shell::openDevice(const fs::path &folder) {
    WindowMirror *owner = window_ ? presenter_->mirrorOf(*window_) : nullptr;
    try {
        services_->openDevice(folder);
    } catch (const device::OpenError &error) {
        if (error.kind() == device::OpenError::Kind::folderOfBackups && !error.backups().empty()) {
            QStringList names;
            for (const fs::path &backup : error.backups())
                names << QString::fromStdString(backup.filename().string());
            bool isChosen = false;
            const QString name = QInputDialog::getItem(owner, QObject::tr("Open Device"), QObject::tr("The folder holds several backups. Which one?"),
                                                       names, 0, false, &isChosen);
            return isChosen && openDevice(error.backups()[static_cast<std::size_t>(names.indexOf(name))]);
        }
        showNotice(owner, QObject::tr("The folder cannot be opened as a device."),
                   QObject::tr("Choose the folder of a device image or of a device backup."), QString::fromUtf8(error.what()));
        return false;
    }
    deviceIsIn(folder);
    choose(chosen_);   // the switch itself goes to the first category
    return true;
}

void Shell::askForDevice() {
    WindowMirror *owner = window_ ? presenter_->mirrorOf(*window_) : nullptr;
    const QString folder = QFileDialog::getExistingDirectory(owner, QObject::tr("Open Device"), QString::fromStdString(folder_.string()),
                                                             QFileDialog::ShowDirsOnly | QFileDialog::DontUseNativeDialog);
    if (!folder.isEmpty())
        openDevice(folder.toStdString());
}

void Shell::deviceWentAway() {
    const auto session = services_->deviceLayer()->session();
    const QString name = session ? qtString(session->name()) : QObject::tr("The device");
    if (window_)
        window_->setTitle(toolkitString(QObject::tr("%1 (disconnected)").arg(name)));
    showNotice(window_ ? presenter_->mirrorOf(*window_) : nullptr, QObject::tr("%1 is no longer connected.").arg(name),
               QObject::tr("Its folder was moved, renamed or unmounted. Put it back, or choose another device from the File menu."));
}

// ---------------------------------------------------------------- what is on show

std::shared_ptr<NSButton> Shell::buttonNamed(std::string_view identifier) const {
    return firstVisible<NSButton>(categoryView(), [identifier](NSButton &button) { return button.identifier() == identifier && button.isEnabled(); });
}

std::shared_ptr<NSTextField> Shell::searchField() const {
    const id manager = categoryManager();
    return manager ? std::dynamic_pointer_cast<NSTextField>(manager->valueForKey("searchField").object()) : nullptr;
}

std::shared_ptr<NSTableView> Shell::list() const {
    const auto focus = window_ ? std::dynamic_pointer_cast<NSTableView>(window_->firstResponder()) : nullptr;
    const auto view = categoryView();
    if (focus && view && focus->isDescendantOf(*view))
        return focus;
    return firstVisible<NSTableView>(view, [](NSTableView &table) { return table.allowsMultipleSelection(); });
}

void Shell::press(std::string_view identifier) {
    if (NSApp()->modalWindow())   // the main window is out of reach
        return;
    if (const auto button = buttonNamed(identifier))
        button->performClick();
}

void Shell::find() {
    const auto field = searchField();
    if (field && field->isEnabled() && !field->isHiddenOrHasHiddenAncestor())
        field->selectText();
}

// First what was searched for goes, then the keyboard returns to the list.
bool Shell::endSearch() {
    const auto field = searchField();
    if (!field->stringValue().isEmpty()) {
        field->setStringValue("");
        field->sendAction();
        return true;
    }
    const auto table = firstVisible<NSTableView>(categoryView(), [](NSTableView &) { return true; });
    return table && window_->makeFirstResponder(table);
}

// As the key does in the list, so that its own rules hold; a text with the keyboard comes before it.
void Shell::selectAll() {
    const auto field = std::dynamic_pointer_cast<NSTextField>(window_->firstResponder());
    if (field && field->isEditable())
        return field->selectText();
    const auto table = list();
    if (!table)
        return;
    window_->makeFirstResponder(table);
    window_->sendEvent(NSEvent::key(keycode::a, "a", NSEventModifierFlagCommand));
}

bool Shell::takesFiles(const std::shared_ptr<NSView> &view) const {
    const auto category = categoryView();
    return view && category && !NSApp()->modalWindow() && view->isDescendantOf(*category) && buttonNamed("ImportButton");
}

bool Shell::dropFiles(const std::shared_ptr<NSView> &view, const QStringList &files) {
    if (!takesFiles(view))
        return false;
    presenter_->answerNextPanel(files);
    press("ImportButton");
    presenter_->forgetPanelAnswer();   // the flow may have been refused before it asked
    return true;
}

}  // namespace host
