// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DesktopChange.h"
#include "platform/dbus/BusName.h"

namespace vellumo {

/// The entry of KWin's settings that makes it call DesktopTaps when Alt was pressed alone: key
/// "Alt" of the group ModifierOnlyShortcuts in kwinrc, whose value is a service, path, interface
/// and method. Available while KWin runs and the tools of its settings are installed.
class KWinTapSetting final : public DesktopChange {
    Q_OBJECT

public:
    explicit KWinTapSetting(const QDBusConnection &bus, QObject *parent = nullptr);

    [[nodiscard]] State state() const override { return state_; }
    void refresh() override;
    void make() override;
    void undo() override;

private:
    void write(const QStringList &value, State expected);
    void read(bool isAfterWriting, State expected);
    void settle(State state);

    QDBusConnection bus_;
    BusName kwin_;
    State state_ = State::Unknown;
};

} // namespace vellumo
