// What the desktop asks for, light or dark, while the program runs.
//
// Sources  the colour scheme of the desktop's portal, where the session has one; else Qt's platform theme. A bus that does
//          not answer holds nothing up.
// Told     each change, and once soon after the start where the portal asks for another than Theme::ofSystem gave.
// Threads  main.
#pragma once

#include <QDBusVariant>
#include <QObject>

#include <functional>
#include <optional>

#include "host/window/Theme.h"

namespace host {

class DesktopTheme : public QObject {
    Q_OBJECT
public:
    using Changed = std::function<void(ThemeKind)>;
    explicit DesktopTheme(Changed changed);

    // The portal's number; absent where it leaves the choice to the program.
    [[nodiscard]] static std::optional<ThemeKind> kindOfScheme(const QVariant &scheme);

public slots:
    // Of the portal.
    void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void askPortal();
    void platformChanged();
    void tellIfOther(ThemeKind kind);

    Changed changed_;
    ThemeKind style_, palette_, told_;   // as last seen, as last told
    bool hasPortal_ = false;
};

}  // namespace host
