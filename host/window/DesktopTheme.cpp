#include "host/window/DesktopTheme.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStyle>

#include <utility>

namespace host {

namespace {

const QString kService = QStringLiteral("org.freedesktop.portal.Desktop"), kPath = QStringLiteral("/org/freedesktop/portal/desktop"),
              kInterface = QStringLiteral("org.freedesktop.portal.Settings"), kGroup = QStringLiteral("org.freedesktop.appearance"),
              kKey = QStringLiteral("color-scheme");

ThemeKind kindOfStyle() { return Theme::kindOf(QApplication::style()->standardPalette()); }

}  // namespace

DesktopTheme::DesktopTheme(Changed changed) : changed_(std::move(changed)), style_(kindOfStyle()), palette_(Theme::ofSystem()), told_(Theme::current().kind()) {
    qApp->installEventFilter(this);
    askPortal();
}

std::optional<ThemeKind> DesktopTheme::kindOfScheme(const QVariant &scheme) {
    if (scheme.userType() == qMetaTypeId<QDBusVariant>())   // old portals wrap the number twice
        return kindOfScheme(scheme.value<QDBusVariant>().variant());
    constexpr unsigned kDark = 1, kLight = 2;
    const unsigned number = scheme.toUInt();
    return number == kDark ? std::optional(ThemeKind::dark) : number == kLight ? std::optional(ThemeKind::light) : std::nullopt;
}

void DesktopTheme::askPortal() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    // clang-format off: the slot is looked up letter by letter, blanks included
    bus.connect(kService, kPath, kInterface, QStringLiteral("SettingChanged"), this, SLOT(settingChanged(QString,QString,QDBusVariant)));
    // clang-format on
    QDBusMessage question = QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Read"));
    question << kGroup << kKey;
    auto *answer = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *done) {
        if (const QDBusPendingReply<QDBusVariant> reply = *done; !reply.isError())
            settingChanged(kGroup, kKey, reply.value());
        done->deleteLater();
    });
}

void DesktopTheme::settingChanged(const QString &group, const QString &key, const QDBusVariant &value) {
    if (group != kGroup || key != kKey)
        return;
    const auto kind = kindOfScheme(value.variant());
    hasPortal_ = kind.has_value();
    if (kind)
        tellIfOther(*kind);
}

bool DesktopTheme::eventFilter(QObject *object, QEvent *event) {
    if (event->type() == QEvent::ThemeChange)
        platformChanged();
    return QObject::eventFilter(object, event);
}

// Some platform themes change their palette, others what the style makes of them; the one that stays behind tells nothing.
void DesktopTheme::platformChanged() {
    const ThemeKind style = kindOfStyle(), palette = Theme::ofSystem();
    const bool hasStyleChanged = std::exchange(style_, style) != style;
    const bool hasPaletteChanged = std::exchange(palette_, palette) != palette;
    if (!hasPortal_ && (hasStyleChanged || hasPaletteChanged))
        tellIfOther(hasStyleChanged ? style : palette);
}

void DesktopTheme::tellIfOther(ThemeKind kind) {
    if (std::exchange(told_, kind) != kind)
        changed_(kind);
}

}  // namespace host
