// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickTextDocument>
#include <QtQml/qqmlregistration.h>

class QTextDocument;

namespace vellumo {

/// Sets a fixed line height on an editable or selectable text, which the text element itself does
/// not offer, so that Latin and Chinese lines have the same distance in any font; and takes the
/// quotation marks of Chinese words from a Chinese font.
class ReadingTextFormat : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QObject *document READ document WRITE setDocument NOTIFY changed)
    Q_PROPERTY(qreal lineHeight READ lineHeight WRITE setLineHeight NOTIFY changed)
    Q_PROPERTY(qreal paragraphGap READ paragraphGap WRITE setParagraphGap NOTIFY changed)

public:
    using QObject::QObject;

    /// Returns the element's textDocument.
    [[nodiscard]] QObject *document() const { return document_; }
    void setDocument(QObject *document);

    /// In the item's units; 0 keeps the natural height.
    [[nodiscard]] qreal lineHeight() const { return lineHeight_; }
    void setLineHeight(qreal height);

    [[nodiscard]] qreal paragraphGap() const { return paragraphGap_; }
    void setParagraphGap(qreal gap);

Q_SIGNALS:
    void changed();

private:
    void format(int position, int length);
    [[nodiscard]] QTextDocument *textDocument() const;

    QPointer<QQuickTextDocument> document_;
    qreal lineHeight_ = 0;
    qreal paragraphGap_ = 0;
    bool isFormatting_ = false;
};

} // namespace vellumo
