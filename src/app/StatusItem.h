// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dbus/TrayHosts.h"
#include "platform/windowing/x11/EmbeddingTrays.h"
#include <QAction>
#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>
#include <QTimer>
#include <memory>

namespace vellumo {

/// The program's place in the desktop's panel: an icon with a menu. It exists while a tray host
/// does, which may start late, end and come back. Where there has been none for a moment, a tray
/// that embeds icons takes it, for the rest of the run. Without any, nothing depends on it.
class StatusItem : public QObject {
    Q_OBJECT

public:
    explicit StatusItem(QObject *parent = nullptr);
    ~StatusItem() override;

    /// To be filled before a host is looked for.
    [[nodiscard]] QMenu &menu() { return menu_; }

    /// Watches for tray hosts on this bus, which is open. Once.
    void appearOn(const QDBusConnection &bus) { hosts_.watch(bus); }

    [[nodiscard]] const TrayHosts &hosts() const { return hosts_; }

    /// Whether panels are dark, for hosts that do not colour the icon themselves.
    void setDark(bool dark);

Q_SIGNALS:
    /// The user clicked the icon.
    void activated();

private:
    void showOrHide(bool hasHost);
    void embed();
    void show();

    QMenu menu_;
    TrayHosts hosts_;
    std::unique_ptr<QSystemTrayIcon> icon_; ///< while there is a host
    EmbeddingTrays trays_;
    QTimer waiting_; ///< for a host, before another tray will do
    bool hadHost_ = false;
    bool isEmbedded_ = false;
    bool dark_ = false;
};

} // namespace vellumo
