// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DesktopChange.h"
#include "platform/shortcuts/KWinVersion.h"
#include <QDBusConnection>

namespace vellumo {

/// The entry of KWin's settings that makes it call DesktopTaps when Alt was pressed alone: key
/// "Alt" of the group ModifierOnlyShortcuts in kwinrc, whose value is a service, path, interface
/// and method. Available while a KWin runs that reads the entry, and the tools of its settings are
/// installed; made also where a newer KWin runs than the one that the entry was made for.
class KWinTapSetting final : public DesktopChange {
    Q_OBJECT

public:
    /// The first version of KWin that does not read the entry.
    static inline const QVersionNumber removedIn{6, 1};

    /// `kwin` must outlive this object.
    KWinTapSetting(QDBusConnection bus, const KWinVersion &kwin, QObject *parent = nullptr);

    [[nodiscard]] State state() const override { return state_; }
    /// Returns whether the entry is there although this KWin does not read it.
    [[nodiscard]] bool isOutdated() const;
    void refresh() override;
    void make() override;
    void undo() override;

private:
    void write(const QStringList &value, State expected);
    void read(bool isAfterWriting, State expected);
    void settle(State state);
    [[nodiscard]] bool readsEntry() const;

    QDBusConnection bus_;
    const KWinVersion &kwin_;
    State state_ = State::Unknown;
};

} // namespace vellumo
