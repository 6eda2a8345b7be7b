// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "update/UpdateController.h"
#include <memory>

namespace vellumo {

class AppConfig;

/// Returns the update controller for this build's feed and key; null when it lacks one of them. The
/// configuration may override the feed, but not the key. The collaborators must outlive the
/// controller.
[[nodiscard]] std::unique_ptr<UpdateController>
makeUpdateController(const AppConfig &config, const UpdateController::Collaborators &collaborators);

} // namespace vellumo
