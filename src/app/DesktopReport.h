// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "computer/DesktopReporting.h"
#include "platform/windowing/x11/CompositorWatch.h"

namespace vellumo {

class LinuxPlatform;
class TrayHosts;

/// Reports what this desktop offers, from state that is watched anyway.
class DesktopReport final : public DesktopReporting {
    Q_OBJECT

public:
    /// All must outlive this object.
    struct Collaborators {
        LinuxPlatform &platform;
        const TrayHosts &tray;
        const CompositorWatch &compositor;
    };

    explicit DesktopReport(const Collaborators &with);

    [[nodiscard]] bool isWayland() const override { return isWayland_; }
    [[nodiscard]] bool hearsEveryTap() const override;
    [[nodiscard]] DesktopChange *tapSetting() const override;
    [[nodiscard]] DesktopChange *extension() const override;
    [[nodiscard]] DesktopChange *shortcut() const override;
    [[nodiscard]] SessionRoads roads() const override;
    [[nodiscard]] bool hasTray() const override;
    [[nodiscard]] bool hasCompositor() const override;
    [[nodiscard]] bool isConnected() const override;
    [[nodiscard]] bool isConnecting() const override;
    [[nodiscard]] Keyring keyring() const override { return keyring_; }
    [[nodiscard]] QStringList browsers() const override { return browsers_; }
    [[nodiscard]] QStringList browsersDecidingAtStart() const override
    {
        return browsersDecidingAtStart_;
    }

    void refresh() override;

private:
    void askKeyring();
    void lookForBrowsers();

    Collaborators with_;
    bool isWayland_;
    Keyring keyring_ = Keyring::Asking;
    QStringList browsers_;
    QStringList browsersDecidingAtStart_;
};

} // namespace vellumo
