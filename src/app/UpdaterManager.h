// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/Alert.h"
#include "update/UpdateControlling.h"
#include <memory>

namespace vellumo {

/// Behind "Check for Updates…": hands it to the update controller or, in a build without one, says
/// that there is none.
class UpdaterManager {
public:
    /// The engine must outlive the manager.
    explicit UpdaterManager(QQmlEngine &engine);
    ~UpdaterManager();
    Q_DISABLE_COPY_MOVE(UpdaterManager)

    /// Absent when this build cannot check for updates.
    std::unique_ptr<UpdateControlling> controller;

    void checkForUpdates();

private:
    Alert alert_;
};

} // namespace vellumo
