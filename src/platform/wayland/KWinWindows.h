// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/FrontWindows.h"
#include "platform/wayland/KWinScript.h"
#include "platform/wayland/ReportedWindow.h"
#include <QDBusContext>

namespace vellumo {

class SessionBus;

/// Finds the window in front by the reports of a script in KWin, for native and X11 windows. Absent
/// until the first report, and after KWin has ended. Windows of this process are ignored.
class KWinWindows : public FrontWindows, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "app.vellumo.KWinWindows")

public:
    /// `bus` must outlive this object. For `isCompositor` see KWinScript.
    KWinWindows(SessionBus &bus, KWinScript::IsCompositor isCompositor);

    [[nodiscard]] std::optional<FrontWindow> frontWindow() override;
    [[nodiscard]] std::optional<QString> windowTitle(qint64 processIdentifier) override;

public Q_SLOTS:
    /// Called by the script at each activation and each change of the title; with empty texts when
    /// no window is active. Other callers are refused.
    Q_SCRIPTABLE void report(const QString &window, const QString &process,
                             const QString &desktopFile, const QString &className,
                             const QString &caption);

private:
    void follow();

    SessionBus &bus_;
    ReportedWindow front_;
    QString title_;
    KWinScript script_;
};

} // namespace vellumo
