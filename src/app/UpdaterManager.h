// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "update/UpdateControlling.h"
#include <QMessageBox>
#include <QPointer>
#include <memory>

namespace vellumo {

/// Behind "Check for Updates…": hands it to the update controller or, in a build without one, says
/// that there is none.
class UpdaterManager {
public:
    UpdaterManager() = default;
    ~UpdaterManager();
    Q_DISABLE_COPY_MOVE(UpdaterManager)

    /// Absent when this build cannot check for updates.
    std::unique_ptr<UpdateControlling> controller;

    void checkForUpdates();

private:
    QPointer<QMessageBox> alert_; ///< while it is on screen
};

} // namespace vellumo
