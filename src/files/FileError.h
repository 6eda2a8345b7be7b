// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace vellumo {

/// Why the system refused something about a file.
struct FileError {
    QString action; ///< a verb, such as "write"
    QString path;
    int code = 0; ///< `errno`
    friend bool operator==(const FileError &, const FileError &) = default;

    /// Returns the system's message, such as "No space left on device".
    [[nodiscard]] QString reason() const;
    /// Returns for example "cannot write PATH: No space left on device".
    [[nodiscard]] QString text() const;
};

} // namespace vellumo
