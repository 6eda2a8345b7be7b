// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "app/DailyUpdates.h"
#include "app/MainMenu.h"
#include "app/StatusItem.h"
#include "app/UpdaterManager.h"

namespace vellumo {

struct Foundation;

/// The program's menus: the one behind the keys of its ordinary windows, and the one of its icon in
/// the tray; with the check for updates that both offer.
class MenuWiring : public QObject {
    Q_OBJECT

public:
    /// The foundation must outlive the menus.
    explicit MenuWiring(Foundation &foundation);

    [[nodiscard]] StatusItem &statusItem() { return statusItem_; }
    [[nodiscard]] UpdaterManager &updaterManager() { return updaterManager_; }

Q_SIGNALS:
    /// The icon was clicked.
    void openRequested();
    void quitRequested();

private:
    void configureMainMenu(Foundation &foundation);
    void configureStatusItem();
    void createUpdateController(Foundation &foundation);

    std::unique_ptr<MainMenu> mainMenu_;
    StatusItem statusItem_;
    UpdaterManager updaterManager_;
    std::unique_ptr<DailyUpdates> dailyUpdates_; ///< where this build can check for updates
};

} // namespace vellumo
