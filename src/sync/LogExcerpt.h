// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

namespace vellumo {

/// The beginning of a server's message on one line, for a log. Servers like to repeat what they
/// could not take: wherever eight characters in a row also stand in one of the values that were
/// sent, or a whole shorter value does, an ellipsis stands in their place.
[[nodiscard]] QString logExcerpt(const QString &message, const QStringList &sent);

} // namespace vellumo
