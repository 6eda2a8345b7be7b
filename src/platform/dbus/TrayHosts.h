// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <memory>

namespace vellumo {

/// Reports whether a host for tray icons (StatusNotifierItem) is running. Driven by signals; a host
/// that does not answer counts as none.
class TrayHosts : public QObject {
    Q_OBJECT

public:
    explicit TrayHosts(QObject *parent = nullptr);
    ~TrayHosts() override;

    /// Starts watching on this open bus. To be called once. Never blocks.
    void watch(QDBusConnection bus);

    [[nodiscard]] bool isPresent() const { return isPresent_; }

Q_SIGNALS:
    void changed(bool isPresent);

private Q_SLOTS:
    void onHostRegistered() { setPresent(true); }

private:
    void ask();
    void setPresent(bool isPresent);

    std::unique_ptr<QDBusConnection> bus_;
    bool isPresent_ = false;
    int asked_ = 0; ///< number of queries; replies to older ones are ignored
};

} // namespace vellumo
