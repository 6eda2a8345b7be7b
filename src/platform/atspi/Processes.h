// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QtGlobal>

namespace vellumo {

/// The first 15 bytes of a process's name; empty when it has gone.
[[nodiscard]] QByteArray processName(qint64 processIdentifier);

/// Whether one process has started the other, itself or through others.
[[nodiscard]] bool isAncestor(qint64 ancestor, qint64 processIdentifier);

/// Whether a process of this name was started by the process, itself or through a few others.
[[nodiscard]] bool hasDescendant(qint64 processIdentifier, const QByteArray &name);

} // namespace vellumo
