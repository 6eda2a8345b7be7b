// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Text of a note stays text: a reader of the document finds no markup but ours. The source
// and its translation are separated by a NUL.

#include "Fuzzing.h"
#include "export/MarkdownNotes.h"
#include <QGuiApplication>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>

using namespace vellumo;
using namespace vellumo::fuzzing;

namespace {

QGuiApplication &application()
{
    static int count = 3;
    static char arguments[3][24] = {"fuzz_markdown_export", "-platform", "offscreen"};
    static char *list[] = {arguments[0], arguments[1], arguments[2], nullptr};
    static QGuiApplication made(count, list);
    return made;
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static_cast<void>(application());
    QStringList parts = text(data, size).split(QChar(u'\0'));
    parts.resize(2);
    NoteWithContext entry;
    entry.note.sourceText = parts[0];
    entry.note.explanation = parts[1];
    QTextDocument document;
    document.setMarkdown(QString::fromUtf8(MarkdownNotes::note(entry, &entry, true)));
    int headings = 0;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        headings += block.blockFormat().headingLevel() > 0 ? 1 : 0;
        require(block.textList() == nullptr, "no list begins");
        require(!block.blockFormat().hasProperty(QTextFormat::BlockCodeFence), "no code begins");
        require(!block.blockFormat().hasProperty(QTextFormat::BlockTrailingHorizontalRulerWidth),
                "no rule is drawn");
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextCharFormat format = part.fragment().charFormat();
            require(!format.isImageFormat(), "no picture is shown");
            require(!format.fontItalic() && !format.fontStrikeOut(), "no letter leans");
            // a bare address may be shown as a link to itself
            require(!format.isAnchor() || format.anchorHref().endsWith(part.fragment().text()),
                    "no link leads elsewhere");
        }
    }
    require(headings == 1, "the note's heading is the only one");
    return 0;
}
