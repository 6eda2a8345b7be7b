// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QQuickTextDocument>
#include <QSyntaxHighlighter>
#include <QtQml/qqmlregistration.h>

namespace vellumo {

/// Marks the words of a search in the text of an element, ignoring case.
class WordMarks : public QSyntaxHighlighter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickTextDocument *textDocument READ textDocument WRITE setTextDocument NOTIFY
                   marksChanged)
    Q_PROPERTY(QString words READ words WRITE setWords NOTIFY marksChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY marksChanged)

public:
    explicit WordMarks(QObject *parent = nullptr) : QSyntaxHighlighter(parent) { }

    /// Returns the element's textDocument.
    [[nodiscard]] QQuickTextDocument *textDocument() const { return element_; }
    void setTextDocument(QQuickTextDocument *element);

    /// Returns the words, separated by white space. While there are none, nothing is attached to
    /// the document.
    [[nodiscard]] QString words() const { return words_.join(u' '); }
    void setWords(const QString &words);

    /// Returns the colour behind the words.
    [[nodiscard]] QColor color() const { return color_; }
    void setColor(const QColor &color);

    /// Returns the plain text as markup for Text.StyledText, with the words bold and in this
    /// colour.
    [[nodiscard]] static QString markup(const QString &text, const QString &words,
                                        const QColor &color);

Q_SIGNALS:
    void marksChanged();

protected:
    void highlightBlock(const QString &text) override;

private:
    void update();

    QPointer<QQuickTextDocument> element_;
    QStringList words_;
    QColor color_;
};

} // namespace vellumo
