// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "update/UpdateController.h"
#include <memory>

namespace vellumo {

class AppConfig;

/// The update controller for the feed and the key that this build carries; null when it lacks one
/// of them. The configuration may name another feed, but no other key. The collaborators must
/// outlive the controller.
[[nodiscard]] std::unique_ptr<UpdateController>
makeUpdateController(const AppConfig &config, const UpdateController::Collaborators &collaborators);

} // namespace vellumo
