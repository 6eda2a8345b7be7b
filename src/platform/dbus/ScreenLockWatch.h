// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ScreenLock.h"
#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QSet>
#include <memory>

namespace vellumo {

/// Follows the desktop's screen savers on the session bus, and the login manager's word on whether
/// the session is locked on the system bus. Asks again after each signal, so that what a stranger
/// sends decides nothing, and when a service comes or goes. Main thread only.
class ScreenLockWatch : public QObject, public ScreenLock {
    Q_OBJECT

public:
    using QObject::QObject;
    ~ScreenLockWatch() override;
    Q_DISABLE_COPY_MOVE(ScreenLockWatch)

    /// Once.
    void followSession(const QDBusConnection &session);
    /// Opens the system bus in the background. Once.
    void followLogins();

    [[nodiscard]] bool isLocked() const override { return !locked_.isEmpty(); }

private Q_SLOTS:
    void onSaverChanged(const QDBusMessage &message);
    void onLoginChanged(const QDBusMessage &message);

private:
    void listenToLogins(QDBusConnection system);
    void askSaver(const QString &service);
    void askLogin();
    void ask(const QDBusConnection &bus, QDBusMessage question, const QString &service);

    std::unique_ptr<QDBusConnection> session_;
    std::unique_ptr<QDBusConnection> system_;
    QSet<QString> locked_; ///< services that say so
    QHash<QString, int> asked_; ///< by service; only the last answer counts
};

} // namespace vellumo
