// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

namespace vellumo {

/// The beginning of a server's message on one line, for a log. Servers like to repeat what they
/// could not take: an ellipsis replaces every run of eight characters that also occurs in one of
/// the values that were sent, and every shorter value that occurs whole.
[[nodiscard]] QString logExcerpt(const QString &message, const QStringList &sent);

} // namespace vellumo
