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

/// The accessibility bus, a separate bus whose address is queried on the session bus. Opened in the
/// background, and again when it restarts. Main thread only.
class AtspiBus : public QObject {
    Q_OBJECT

public:
    explicit AtspiBus(SessionBus &session, QObject *parent = nullptr);
    AtspiBus(const AtspiBus &) = delete;
    AtspiBus &operator=(const AtspiBus &) = delete;
    AtspiBus(AtspiBus &&) = delete;
    AtspiBus &operator=(AtspiBus &&) = delete;
    ~AtspiBus() override;

    /// Keeps the bus open, or closes it.
    void setWanted(bool wanted);

    /// Returns the address of the open bus, for further connections.
    [[nodiscard]] QString address() const { return address_; }

    /// Returns the bus; absent while it is not open.
    [[nodiscard]] std::optional<QDBusConnection> connection();
    [[nodiscard]] bool isOpen() const { return bus_ && bus_->isConnected(); }
    /// Returns whether the bus is wanted but not open, and no attempt has failed since it was last
    /// open or became wanted.
    [[nodiscard]] bool isOpening() const { return wanted_ && !bus_ && !hasFailed_; }

Q_SIGNALS:
    void opened(const QDBusConnection &bus);
    void closed();
    /// Emitted when the first of several attempts fails; it is retried.
    void failed();

private Q_SLOTS:
    void onDisconnected();

private:
    void find();
    void open(const QString &address);
    void adopt(const QDBusConnection &bus, const QString &address);
    void close();
    void fail();
    void retryLater();

    SessionBus &session_;
    std::optional<QDBusConnection> bus_;
    QString address_;
    QTimer retry_;
    int retryDelayMs_;
    bool wanted_ = false;
    bool opening_ = false;
    bool hasFailed_ = false; ///< an attempt failed since the bus was last open or not wanted
};

} // namespace vellumo
