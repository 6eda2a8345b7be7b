// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DesktopChange.h"
#include "platform/dbus/BusName.h"
#include <functional>

namespace vellumo {

/// A custom keyboard shortcut of GNOME's settings daemon that runs a command. It is one entry among
/// the user's own, in the schema org.gnome.settings-daemon.plugins.media-keys, where the desktop's
/// settings show it. Available while the daemon runs and the program gsettings is installed.
class GnomeShortcut final : public DesktopChange {
    Q_OBJECT

public:
    /// `command` is a command line for the daemon.
    GnomeShortcut(const QDBusConnection &bus, QString command, QObject *parent = nullptr);

    [[nodiscard]] State state() const override { return state_; }
    [[nodiscard]] QString keys() const override { return keys_; }
    void refresh() override;
    void make() override;
    void undo() override;

private:
    using Then = std::function<void(const QString &output)>;

    void run(const QStringList &arguments, std::function<void()> otherwise, Then then);
    void get(const QString &schema, const QString &key, Then then);
    void set(const QString &schema, const QString &key, const QString &value,
             std::function<void()> then);
    void setList(const QStringList &paths, std::function<void()> then);
    void collect(QStringList paths, const QStringList &taken,
                 std::function<void(const QStringList &)> then);
    void bind(const QString &accelerator, const QStringList &paths);
    void settle(State state, const QString &keys = {});
    void end(bool hasSucceeded);

    QString command_;
    QString tool_;
    BusName daemon_;
    State state_ = State::Unknown;
    QString keys_;
};

} // namespace vellumo
