// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>

namespace vellumo {

/// A login manager on the session bus, with one seat and one session.
class LoginManager : public QDBusVirtualObject {
    Q_OBJECT

public:
    struct Session {
        uint user = 0;
        QString kind = QStringLiteral("user");
        bool isActive = true;
        bool isLocked = false;
        bool isPresent = true; ///< false: no session is active on the seat
    };

    LoginManager();
    ~LoginManager() override;
    Q_DISABLE_COPY_MOVE(LoginManager)

    /// Replaces the session and reports a change.
    void setSession(const Session &session);

    [[nodiscard]] QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    QDBusConnection bus_;
    Session session_;
};

} // namespace vellumo
