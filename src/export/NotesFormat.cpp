// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "export/NotesFormat.h"

#include "export/CsvNotes.h"
#include "export/JsonNotes.h"
#include "export/MarkdownNotes.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vellumo {

QString fileSuffix(ExportFormat format)
{
    switch (format) {
    case ExportFormat::Markdown:
        return u"md"_s;
    case ExportFormat::Csv:
        return u"csv"_s;
    case ExportFormat::Json:
        break;
    }
    return u"json"_s;
}

NotesFormat notesFormat(ExportFormat format, qsizetype count, const QDateTime &at, bool english)
{
    switch (format) {
    case ExportFormat::Markdown:
        return {MarkdownNotes::head(count, at.date(), english),
                [english](const NoteWithContext &entry, const NoteWithContext *before) {
                    return MarkdownNotes::note(entry, before, english);
                },
                {}};
    case ExportFormat::Csv:
        return {CsvNotes::head(),
                [](const NoteWithContext &entry, const NoteWithContext * /*before*/) {
                    return CsvNotes::row(entry);
                },
                {}};
    case ExportFormat::Json:
        break;
    }
    return {JsonNotes::head(at),
            [](const NoteWithContext &entry, const NoteWithContext *before) {
                return JsonNotes::note(entry, before == nullptr);
            },
            JsonNotes::tail()};
}

QString placeName(const ReadingContext &context)
{
    return context.key == cloudKey ? QString() : context.displayName;
}

QString writableText(const QString &text)
{
    const auto isControl = [](QChar c) {
        return (c.unicode() < 0x20 && c != u'\n' && c != u'\t')
            || (c.unicode() >= 0x7F && c.unicode() < 0xA0) || c == QChar::LineSeparator
            || c == QChar::ParagraphSeparator;
    };
    if (std::none_of(text.begin(), text.end(), isControl)) {
        return text;
    }
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        const bool endsWithNext = c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n';
        if (c == QChar::LineSeparator || c == QChar::ParagraphSeparator
            || (c == u'\r' && !endsWithNext)) {
            result += u'\n';
        } else if (!isControl(c)) {
            result += c;
        }
    }
    return result;
}

} // namespace vellumo
