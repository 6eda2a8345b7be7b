// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QTimer>
#include <memory>
#include <optional>

namespace vellumo {

class SessionBus;

/// The accessibility bus: a bus of its own, whose address the session bus tells. Found and opened
/// in the background; found again when it restarts. Main thread only.
class AtspiBus : public QObject {
    Q_OBJECT

public:
    explicit AtspiBus(SessionBus &session, QObject *parent = nullptr);
    AtspiBus(const AtspiBus &) = delete;
    AtspiBus &operator=(const AtspiBus &) = delete;
    AtspiBus(AtspiBus &&) = delete;
    AtspiBus &operator=(AtspiBus &&) = delete;
    ~AtspiBus() override;

    /// Keeps the bus open from now on, or closes it.
    void setWanted(bool wanted);

    /// The bus if it is open at this moment.
    [[nodiscard]] std::optional<QDBusConnection> connection();

Q_SIGNALS:
    void opened(const QDBusConnection &bus);
    void closed();

private Q_SLOTS:
    void onDisconnected();

private:
    void find();
    void open(const QString &address);
    void adopt(const QDBusConnection &bus);
    void close();
    void retryLater();

    SessionBus &session_;
    std::optional<QDBusConnection> bus_;
    QTimer retry_;
    int retryDelayMs_;
    bool wanted_ = false;
    bool opening_ = false;
};

} // namespace vellumo
