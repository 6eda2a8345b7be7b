// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickTextDocument>
#include <QtQml/qqmlregistration.h>

class QTextDocument;

namespace vellumo {

/// Gives the lines of an editable or selectable text a fixed distance, which the text element
/// itself cannot: Latin and Chinese lines keep one rhythm whatever fonts they take.
class ReadingTextFormat : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QObject *document READ document WRITE setDocument NOTIFY changed)
    Q_PROPERTY(qreal lineHeight READ lineHeight WRITE setLineHeight NOTIFY changed)
    Q_PROPERTY(qreal paragraphGap READ paragraphGap WRITE setParagraphGap NOTIFY changed)

public:
    using QObject::QObject;

    /// The element's textDocument.
    [[nodiscard]] QObject *document() const { return document_; }
    void setDocument(QObject *document);

    /// In the item's units; 0 leaves the lines alone.
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
