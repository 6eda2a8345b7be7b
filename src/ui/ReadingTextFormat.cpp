// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "ui/ReadingTextFormat.h"

#include "ui/ApplicationFonts.h"

#include <QQuickTextDocument>
#include <QTextBlockFormat>
#include <QTextCursor>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

bool isWide(QChar character)
{
    return character.script() == QChar::Script_Han || character.unicode() == 0xFF0C
        || (character.unicode() >= 0x3000 && character.unicode() <= 0x303F);
}

/// Quotation marks are the same characters in Latin and in Chinese, where they are as wide as the
/// others.
void widenChineseQuotes(QTextCursor cursor, int begin, int end)
{
    const QTextDocument &text = *cursor.document();
    QTextCharFormat wide;
    for (int i = begin; i < end; ++i) {
        const QChar mark = text.characterAt(i);
        if ((mark == u'“' && isWide(text.characterAt(i + 1)))
            || (mark == u'”' && i > 0 && isWide(text.characterAt(i - 1)))) {
            wide.setFontFamilies({chineseFamily()});
            cursor.setPosition(i);
            cursor.setPosition(i + 1, QTextCursor::KeepAnchor);
            cursor.mergeCharFormat(wide);
        }
    }
}

} // namespace

QTextDocument *ReadingTextFormat::textDocument() const
{
    return document_ ? document_->textDocument() : nullptr;
}

void ReadingTextFormat::setDocument(QObject *object)
{
    auto *document = qobject_cast<QQuickTextDocument *>(object);
    if (document == document_) {
        return;
    }
    if (QTextDocument *old = textDocument()) {
        old->disconnect(this);
    }
    document_ = document;
    if (QTextDocument *text = textDocument()) {
        connect(text, &QTextDocument::contentsChange, this,
                [this](int position, int /*removed*/, int added) { format(position, added); });
        format(0, text->characterCount());
    }
    Q_EMIT changed();
}

void ReadingTextFormat::setLineHeight(qreal height)
{
    if (height != lineHeight_) {
        lineHeight_ = height;
        if (const QTextDocument *text = textDocument()) {
            format(0, text->characterCount());
        }
        Q_EMIT changed();
    }
}

void ReadingTextFormat::setParagraphGap(qreal gap)
{
    if (gap != paragraphGap_) {
        paragraphGap_ = gap;
        if (const QTextDocument *text = textDocument()) {
            format(0, text->characterCount());
        }
        Q_EMIT changed();
    }
}

void ReadingTextFormat::format(int position, int length)
{
    QTextDocument *text = textDocument();
    if (isFormatting_ || !text || lineHeight_ <= 0) {
        return;
    }
    isFormatting_ = true; // changing the format emits contentsChanged
    QTextBlockFormat block;
    block.setLineHeight(lineHeight_, QTextBlockFormat::FixedHeight);
    QTextCursor cursor(text);
    const int end = text->characterCount() - 1;
    const int first = std::clamp(position, 0, end);
    const int last = std::clamp(position + length, 0, end);
    cursor.beginEditBlock();
    cursor.setPosition(first);
    cursor.setPosition(last, QTextCursor::KeepAnchor);
    block.setBottomMargin(paragraphGap_);
    cursor.mergeBlockFormat(block);
    widenChineseQuotes(cursor, first, last);
    cursor.endEditBlock();
    isFormatting_ = false;
}

} // namespace vellumo
