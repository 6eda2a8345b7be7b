// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/TapSource.h"
#include "platform/dbus/BusName.h"
#include <QDBusPendingCall>
#include <functional>
#include <memory>

namespace vellumo {

class SessionBus;

/// The companion of vellumo in GNOME Shell: an extension that reports the window with the keyboard
/// and taps of Alt, at the release of the key, while vellumo follows it. Its signals count only
/// when they come from the shell. Main thread only.
class ShellCompanion : public QObject {
    Q_OBJECT

public:
    using IsCompositor = std::function<bool(qint64 process)>;

    struct Window {
        quint64 id = 0; ///< 0: no window has the keyboard
        qint64 process = 0;
        QString application; ///< file name of its .desktop entry; empty when unknown
        QString className;
        QString title;
    };

    /// `bus` must outlive this object. `isCompositor` returns whether the shell's process is the
    /// compositor of this session.
    ShellCompanion(SessionBus &bus, IsCompositor isCompositor);

    /// Asks the extension for reports, now and whenever it becomes available, or ends them.
    void setFollowing(bool isFollowing);

    /// Returns whether the extension reports.
    [[nodiscard]] bool isLive() const { return isLive_; }

    [[nodiscard]] TapSource &taps() { return taps_; }

Q_SIGNALS:
    void liveChanged();
    /// Emitted for each change of the window or its title, only while the extension reports.
    void windowReported(const vellumo::ShellCompanion::Window &window);

private Q_SLOTS:
    void follow();
    void onEnded();
    void onWindow(qulonglong window, int process, const QString &application,
                  const QString &className, const QString &title);
    void onTapped(qlonglong time);

private:
    /// Taps in every window, while the extension reports.
    class Taps : public TapSource {
    public:
        explicit Taps(const ShellCompanion &companion) : companion_(companion) { }
        [[nodiscard]] bool hearsEveryWindow() const override { return companion_.isLive(); }

    private:
        const ShellCompanion &companion_;
    };

    void watchShell();
    void onShellChanged();
    void subscribe(bool isOn);
    void setLive(bool isLive);
    QDBusPendingCall call(const QString &service, const QString &path, const QString &interface,
                          const QString &method, const QVariantList &arguments = {});

    SessionBus &bus_;
    IsCompositor isCompositor_;
    std::unique_ptr<BusName> shell_; ///< null until the bus is open
    QString compositor_; ///< the shell's unique name once it is known to be the compositor
    Taps taps_;
    bool isFollowing_ = false;
    bool isLive_ = false;
    int asked_ = 0; ///< number of the last question to follow; replies to older ones are ignored
};

} // namespace vellumo
