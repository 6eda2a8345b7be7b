// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "ui/ReadingTextFormat.h"

#include <QQuickTextDocument>
#include <QTextBlockFormat>
#include <QTextCursor>
#include <QTextDocument>

namespace vellumo {

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
    cursor.setPosition(std::clamp(position, 0, end));
    cursor.setPosition(std::clamp(position + length, 0, end), QTextCursor::KeepAnchor);
    block.setBottomMargin(paragraphGap_);
    cursor.mergeBlockFormat(block);
    isFormatting_ = false;
}

} // namespace vellumo
