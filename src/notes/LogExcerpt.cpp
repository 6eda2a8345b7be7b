// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "notes/LogExcerpt.h"

#include <algorithm>

namespace vellumo {

namespace {

constexpr qsizetype longest = 200;
constexpr qsizetype window = 8;
constexpr qsizetype shortestHidden = 3; // shorter values would hide half of every message
constexpr QChar ellipsis = u'\u2026';

QString folded(const QString &text)
{
    return text.simplified().toLower();
}

/// How many characters from this position on repeat something that was sent.
qsizetype repeatedAt(const QString &text, qsizetype position, const QStringList &sent)
{
    qsizetype repeated = 0;
    for (const QString &value : sent) {
        const qsizetype length = std::min(window, value.size());
        const QStringView piece = QStringView(text).mid(position, length);
        if (length >= shortestHidden && piece.size() == length && value.contains(piece)) {
            repeated = std::max(repeated, length);
        }
    }
    return repeated;
}

} // namespace

QString logExcerpt(const QString &message, const QStringList &sent)
{
    // More than is shown, so that a value at the edge is still recognised.
    const QString text = message.left(4 * longest).simplified().left(longest + window);
    QStringList hidden;
    hidden.reserve(sent.size());
    for (const QString &value : sent) {
        hidden.append(folded(value));
    }
    const QString lower = text.toLower();
    if (lower.size() != text.size()) {
        return {ellipsis}; // positions in one would not be those in the other
    }
    QString shown;
    qsizetype hiddenUntil = 0;
    for (qsizetype i = 0; i < text.size() && i < longest; ++i) {
        hiddenUntil = std::max(hiddenUntil, i + repeatedAt(lower, i, hidden));
        if (i >= hiddenUntil) {
            shown.append(text.at(i));
        } else if (!shown.endsWith(ellipsis)) {
            shown.append(ellipsis);
        }
    }
    if (text.size() > longest && !shown.endsWith(ellipsis)) {
        shown.append(ellipsis);
    }
    return shown;
}

} // namespace vellumo
