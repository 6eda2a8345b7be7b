// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dbus/BusName.h"
#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QObject>
#include <functional>
#include <optional>

namespace vellumo {

/// Keeps a script of ours running in KWin while both run. KWin reads it from a file in the user's
/// runtime folder. The script ends with KWin, so that it is loaded again when KWin's name gets
/// another owner. Main thread only.
class KWinScript : public QObject {
    Q_OBJECT

public:
    using IsCompositor = std::function<bool(qint64 process)>;
    using Source = std::function<QString(const QString &service)>;

    /// `source` returns the script, which may call the methods of this service, our name on the
    /// bus. `isCompositor` returns whether KWin's process is the compositor of this session.
    KWinScript(Source source, IsCompositor isCompositor);
    ~KWinScript() override;
    Q_DISABLE_COPY_MOVE(KWinScript)

    /// Starts with an open session bus. To be called once.
    void follow(const QDBusConnection &bus);

    /// Returns the unique name of the KWin that has the script; empty when there is none.
    [[nodiscard]] QString runner() const { return runner_; }

Q_SIGNALS:
    /// Emitted when KWin, and the script with it, has ended.
    void ended();

private:
    void onOwnerChanged();
    void load(const QString &owner);
    void run(int script, const QString &path);
    void unloadForgotten();
    QDBusPendingCall call(const QString &service, const QString &path, const QString &interface,
                          const QString &method, const QVariantList &arguments = {});
    void onAnswer(const QDBusPendingCall &pending,
                  const std::function<void(const QDBusMessage &)> &handle);

    Source source_;
    IsCompositor isCompositor_;
    std::optional<QDBusConnection> bus_;
    std::optional<BusName> kwin_;
    QString runner_;
};

} // namespace vellumo
