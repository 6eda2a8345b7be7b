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

/// The accessibility bus: a separate bus, whose address the session bus knows. Found and opened
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
    [[nodiscard]] bool isOpen() const { return bus_ && bus_->isConnected(); }
    /// Whether it is wanted and not open, and no attempt has failed since it last was or became so.
    [[nodiscard]] bool isOpening() const { return wanted_ && !bus_ && !hasFailed_; }

Q_SIGNALS:
    void opened(const QDBusConnection &bus);
    void closed();
    /// The first attempt in a row did not succeed; others follow.
    void failed();

private Q_SLOTS:
    void onDisconnected();

private:
    void find();
    void open(const QString &address);
    void adopt(const QDBusConnection &bus);
    void close();
    void fail();
    void retryLater();

    SessionBus &session_;
    std::optional<QDBusConnection> bus_;
    QTimer retry_;
    int retryDelayMs_;
    bool wanted_ = false;
    bool opening_ = false;
    bool hasFailed_ = false; ///< since it was last open or not wanted
};

} // namespace vellumo
