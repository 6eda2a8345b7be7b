// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "files/FileError.h"
#include <optional>

namespace vellumo {

/// Creates the directory with mode 0700, and its parents. Absent on success.
[[nodiscard]] std::optional<FileError> makePrivateDirectory(const QString &path);

} // namespace vellumo
