// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DesktopChange.h"
#include "platform/dbus/BusName.h"
#include <QTimer>
#include <QVariantMap>
#include <optional>

namespace vellumo {

/// The switch of vellumo's extension in GNOME Shell, which is one of the user's settings. The shell
/// looks for extensions only at its start: one that was installed since then is not available
/// before the next login.
class GnomeExtension final : public DesktopChange {
    Q_OBJECT

public:
    explicit GnomeExtension(const QDBusConnection &bus, QObject *parent = nullptr);

    [[nodiscard]] State state() const override { return state_; }
    void refresh() override;
    void make() override { setOn(true); }
    void undo() override { setOn(false); }

private Q_SLOTS:
    void onStateChanged(const QString &extension, const QVariantMap &information);

private:
    void follow();
    void setOn(bool isOn);
    void take(const QVariantMap &information);
    void settle(State state);
    void end(bool hasSucceeded);
    [[nodiscard]] QDBusPendingCall call(const QString &method) const;

    QDBusConnection bus_;
    BusName shell_;
    QString followed_; ///< the owner whose signals are connected
    State state_ = State::Unknown;
    std::optional<State> expected_; ///< after make() or undo(), until it has been reached
    QTimer deadline_;
};

} // namespace vellumo
