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

/// Follows the desktop's screen savers on the session bus, and the lock state of the login manager
/// on the system bus. Signals only trigger a query, so that a forged one changes nothing; so do
/// services that start or end. Main thread only.
class ScreenLockWatch : public QObject, public ScreenLock {
    Q_OBJECT

public:
    using QObject::QObject;
    ~ScreenLockWatch() override;
    Q_DISABLE_COPY_MOVE(ScreenLockWatch)

    /// To be called once, with an open bus.
    void followSession(const QDBusConnection &session);
    /// Opens the system bus in the background. To be called once.
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
    QSet<QString> locked_; ///< services that report a lock
    QHash<QString, int> asked_; ///< queries by service; only the last reply counts
};

} // namespace vellumo
