// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Cells of an exported table are read back unchanged, and no spreadsheet evaluates one,
// whichever separator it uses.
// The input has the source, its translation, a question, its answer and the place, separated
// by NULs.

#include "Fuzzing.h"
#include "export/CsvNotes.h"
#include "export/NotesFormat.h"

using namespace vellumo;
using namespace vellumo::fuzzing;

namespace {

/// Returns the cells of one row as a spreadsheet with this separator reads them. Quotes count at
/// the beginning of a cell; what follows a closing quote is appended unchanged.
QStringList cellsOf(const QString &row, QChar separator)
{
    QStringList cells;
    QString cell;
    bool isQuoted = false;
    bool isAtStart = true;
    for (qsizetype i = 0; i < row.size(); ++i) {
        const QChar c = row[i];
        if (isQuoted) {
            if (c != u'"') {
                cell += c;
            } else if (i + 1 < row.size() && row[i + 1] == u'"') {
                cell += c;
                ++i;
            } else {
                isQuoted = false;
            }
        } else if (isAtStart && c == u'"') {
            isQuoted = true;
        } else if (c == separator || c == u'\n' || c == u'\r') {
            cells.append(cell);
            cell.clear();
            isAtStart = true;
            continue;
        } else {
            cell += c;
        }
        isAtStart = false;
    }
    return cells;
}

bool isFormula(const QString &cell)
{
    for (const QChar c : cell) {
        if (!c.isSpace() && c.category() != QChar::Other_Format) {
            return QStringView(u"=+-@＝＋－＠").contains(c);
        }
    }
    return false;
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QStringList parts = text(data, size).split(QChar(u'\0'));
    parts.resize(5);
    NoteWithContext entry;
    entry.note.sourceText = parts[0];
    entry.note.explanation = parts[1];
    entry.note.followUps = {{{}, parts[2], parts[3]}};
    entry.context = {QStringLiteral("app-window:x"), parts[4], ReadingContextSource::appWindow};
    const QString row = QString::fromUtf8(CsvNotes::row(entry));

    for (const QChar separator : {u',', u';', u'\t'}) {
        for (const QString &cell : cellsOf(row, separator)) {
            require(!isFormula(cell), "no cell is a formula");
        }
    }
    const QStringList cells = cellsOf(row, u',');
    // the row's own end is read as an empty cell more
    require(cells.size() == 8, "there are as many cells as the head names");
    // marks against formulas are apostrophes, which a text may have as well
    const auto isSame = [](QString cell, const QString &text) {
        return cell.remove(u'\'') == QString::fromUtf8(writableText(text).toUtf8()).remove(u'\'');
    };
    require(isSame(cells[0], parts[0]), "the source is what it was");
    require(isSame(cells[2], parts[2] + QStringLiteral("\n\n") + parts[3]),
            "the questions are what they were");
    return 0;
}
