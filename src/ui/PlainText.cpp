// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "ui/PlainText.h"

#include <QTextBoundaryFinder>

namespace vellumo {

namespace {

bool isUnshowable(QChar c)
{
    const char16_t u = c.unicode();
    return (u < 0x20 && u != u'\n' && u != u'\t') || (u >= 0x7F && u < 0xA0) || u == 0xFFFC
        || u == 0xFEFF;
}

/// Returns the last character boundary at or before `limit`. Examines only a little text beyond it.
qsizetype boundaryBefore(const QString &text, qsizetype limit)
{
    constexpr qsizetype lookAround = 64;
    const qsizetype start = std::max<qsizetype>(0, limit - lookAround);
    const QString around = text.sliced(start, std::min(text.size() - start, 2 * lookAround));
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, around);
    finder.setPosition(limit - start);
    const qsizetype position =
        finder.isAtBoundary() ? finder.position() : finder.toPreviousBoundary();
    return position > 0 ? start + position : limit;
}

} // namespace

QString presentableText(const QString &text, qsizetype limit)
{
    QString result;
    result.reserve(std::min(text.size(), limit + 1));
    for (qsizetype i = 0; i < text.size(); ++i) {
        // a little more than the limit, for the boundary
        if (result.size() > limit + 64) {
            break;
        }
        const QChar c = text[i];
        if (c == u'\r') {
            if (i + 1 == text.size() || text[i + 1] != u'\n') {
                result += u'\n';
            }
        } else if (c == QChar::LineSeparator || c == QChar::ParagraphSeparator) {
            result += u'\n';
        } else if (!isUnshowable(c)) {
            result += c;
        }
    }
    if (result.size() > limit) {
        result.truncate(boundaryBefore(result, limit));
        result += u'…';
    }
    return result;
}

QString presentableLine(const QString &text, qsizetype limit)
{
    // limits the work on long runs of white space to four times the limit
    return presentableText(presentableText(text, 4 * limit).simplified(), limit);
}

} // namespace vellumo
