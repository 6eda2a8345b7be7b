// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "ui/WordMarks.h"

#include <QTextCharFormat>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

struct Range {
    qsizetype start;
    qsizetype end;
};

QStringList split(const QString &words)
{
    return words.simplified().split(u' ', Qt::SkipEmptyParts);
}

/// Returns where the words are, in order and without overlaps.
QList<Range> rangesIn(const QString &text, const QStringList &words)
{
    QList<Range> found;
    for (const QString &word : words) {
        for (qsizetype at = text.indexOf(word, 0, Qt::CaseInsensitive); at >= 0;
             at = text.indexOf(word, at + 1, Qt::CaseInsensitive)) {
            found.append({at, at + word.size()});
        }
    }
    std::ranges::sort(found, {}, &Range::start);
    QList<Range> merged;
    for (const Range &range : found) {
        if (!merged.isEmpty() && range.start <= merged.constLast().end) {
            merged.last().end = std::max(merged.constLast().end, range.end);
        } else {
            merged.append(range);
        }
    }
    return merged;
}

} // namespace

void WordMarks::setTextDocument(QQuickTextDocument *element)
{
    element_ = element;
    update();
}

void WordMarks::setWords(const QString &words)
{
    words_ = split(words);
    update();
}

void WordMarks::setColor(const QColor &color)
{
    color_ = color;
    update();
}

void WordMarks::update()
{
    QTextDocument *const wanted =
        element_ && !words_.isEmpty() ? element_->textDocument() : nullptr;
    if (document() != wanted) {
        setDocument(wanted); // removes the marks from the other one
    } else if (wanted != nullptr) {
        rehighlight();
    }
    Q_EMIT marksChanged();
}

void WordMarks::highlightBlock(const QString &text)
{
    QTextCharFormat mark;
    mark.setBackground(color_);
    for (const Range &range : rangesIn(text, words_)) {
        setFormat(static_cast<int>(range.start), static_cast<int>(range.end - range.start), mark);
    }
}

QString WordMarks::markup(const QString &text, const QString &words, const QColor &color)
{
    QString result;
    qsizetype at = 0;
    for (const Range &range : rangesIn(text, split(words))) {
        result += text.sliced(at, range.start - at).toHtmlEscaped();
        result += u"<font color=\"%1\"><b>"_s.arg(color.name());
        result += text.sliced(range.start, range.end - range.start).toHtmlEscaped();
        result += u"</b></font>"_s;
        at = range.end;
    }
    return result + text.sliced(at).toHtmlEscaped();
}

} // namespace vellumo
