#include "tests/window/WindowWorld.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QMouseEvent>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include "host/window/QtText.h"
#include "host/window/ViewSurface.h"
#include "toolkit/dispatch/Guard.h"
#include "toolkit/dispatch/MainLoop.h"
#include "toolkit/dispatch/Queue.h"
#include "toolkit/views/NSApplication.h"

WindowWorld::WindowWorld(host::ThemeKind theme) {
    dispatch::reset(dispatch::makeRealClock());
    dispatch::setLoopHost(loop_);
    dispatch::setFailureSink([](const char *what, std::exception_ptr failure) {
        ADD_FAILURE() << "escaped and not asked for: " << what << ": " << dispatch::reasonOf(failure);
    });
    NSApplication::resetShared();
    host::setSystemFontFamily(QStringLiteral("DejaVu Sans"));
    TextMeasurer::install(std::make_shared<host::QtTextMeasurer>());
    host::Theme::use(theme);
    presenter_ = host::QtPresenter::install();
}

WindowWorld::~WindowWorld() {
    presenter_->uninstall();
    serve();
    TextMeasurer::install(nullptr);
    NSApplication::resetShared();
    dispatch::setFailureSink({});
    dispatch::setLoopHost(nullptr);
    dispatch::reset(dispatch::makeRealClock());
}

bool WindowWorld::until(const std::function<bool()> &condition, const char *what) {
    constexpr auto kHung = std::chrono::seconds(20);
    const QDeadlineTimer deadline(kHung);
    QTimer alarm;   // wakes the loop once the time is up
    alarm.setSingleShot(true);
    alarm.start(kHung);
    loop_->runUntil([&] { return condition() || deadline.hasExpired(); });
    if (condition())
        return true;
    ADD_FAILURE() << "never came about: " << what;
    return false;
}

void WindowWorld::once(std::function<bool()> condition, std::function<void()> act) {
    auto *dispatcher = QAbstractEventDispatcher::instance();
    const auto watch = std::make_shared<QMetaObject::Connection>();
    *watch = QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, loop_.get(),
                              [this, watch, condition = std::move(condition), act = std::move(act)] {
                                  if (!*watch || !condition())
                                      return;
                                  QObject::disconnect(*watch);
                                  QMetaObject::invokeMethod(loop_.get(), act, Qt::QueuedConnection);
                              });
}

void WindowWorld::serve() {
    bool reached = false;
    dispatch::async(dispatch::main(), [&reached] { reached = true; });
    until([&reached] { return reached; }, "the end of the main queue");
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

host::ViewSurface &WindowWorld::show(const std::shared_ptr<NSWindow> &window) {
    window->makeKeyAndOrderFront();
    host::WindowMirror &mirror = *presenter_->mirrorOf(*window);
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&mirror));
    mirror.activateWindow();
    until([&mirror] { return mirror.isActiveWindow(); }, "an active window");
    serve();
    return mirror.surface();
}

host::ViewSurface &WindowWorld::surfaceOf(NSView &view) { return *presenter_->surfaceOf(view); }

void WindowWorld::click(NSView &view, Qt::KeyboardModifiers modifiers) {
    const NSRect bounds = view.bounds();
    clickAt(view, {bounds.minX() + bounds.size.width / 2, bounds.minY() + bounds.size.height / 2}, modifiers);
}

namespace {
// The native part at the place takes the click, else the surface.
struct Target {
    QWidget *widget;
    QPoint point;
};
Target targetAt(host::ViewSurface &surface, NSView &view, NSPoint point) {
    const QPoint place = surface.rectOf(view, {point, {0, 0}}).topLeft().toPoint();
    QWidget *part = surface.childAt(place);
    return part ? Target{part, part->mapFrom(&surface, place)} : Target{&surface, place};
}
}  // namespace

void WindowWorld::clickAt(NSView &view, NSPoint pointInView, Qt::KeyboardModifiers modifiers, Qt::MouseButton button) {
    const Target target = targetAt(surfaceOf(view), view, pointInView);
    QTest::mouseClick(target.widget, button, modifiers, target.point);
}

void WindowWorld::doubleClickAt(NSView &view, NSPoint pointInView) {
    const Target target = targetAt(surfaceOf(view), view, pointInView);
    QTest::mouseClick(target.widget, Qt::LeftButton, {}, target.point);
    QTest::mouseDClick(target.widget, Qt::LeftButton, {}, target.point);
    QTest::mouseRelease(target.widget, Qt::LeftButton, {}, target.point);   // as a screen sends it
}

void WindowWorld::moveMouse(NSView &view, NSPoint pointInView) {
    host::ViewSurface &surface = surfaceOf(view);
    const QPointF place = surface.rectOf(view, {pointInView, {0, 0}}).topLeft();
    QMouseEvent event(QEvent::MouseMove, place, surface.mapToGlobal(place), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&surface, &event);
}

void WindowWorld::wheel(NSView &view, int notches) {
    host::ViewSurface &surface = surfaceOf(view);
    const NSRect seen = view.visibleRect();
    const QPointF place = surface.rectOf(view, seen).center();
    QWheelEvent event(place, surface.mapToGlobal(place), {}, {0, 120 * notches}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&surface, &event);
}

void WindowWorld::type(const QString &text) {
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QTest::keyClicks(QApplication::focusWidget(), text);
}

void WindowWorld::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
}

QImage WindowWorld::picture(QWidget &widget, const std::string &name) {
    const QString folder = QStringLiteral(HN_BINARY_DIR "/screenshots");
    QDir().mkpath(folder);
    const QImage image = widget.grab().toImage();
    EXPECT_TRUE(image.save(folder + u'/' + QString::fromStdString(name) + QStringLiteral(".png")));
    return image;
}
