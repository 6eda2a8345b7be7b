// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QtGlobal>

namespace vellumo {

/// Returns the first 15 bytes of a process's name; empty when it has exited.
[[nodiscard]] QByteArray processName(qint64 processIdentifier);

/// Returns whether one process is an ancestor of the other.
[[nodiscard]] bool isAncestor(qint64 ancestor, qint64 processIdentifier);

/// Returns whether the process has a descendant of this name, within a few generations.
[[nodiscard]] bool hasDescendant(qint64 processIdentifier, const QByteArray &name);

} // namespace vellumo
