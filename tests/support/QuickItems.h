// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>

/// Finds and reads the items that a window shows.
namespace vellumo::test {

/// Doubles the text size as long as it exists.
class LargeText {
public:
    explicit LargeText(qreal points = 20)
    {
        QFont font = before_;
        font.setPointSizeF(points);
        QGuiApplication::setFont(font);
    }
    ~LargeText() { QGuiApplication::setFont(before_); }
    Q_DISABLE_COPY_MOVE(LargeText)

private:
    QFont before_ = QGuiApplication::font();
};

/// Returns the visible item of this name, at or below `item`, or null.
inline QQuickItem *findItem(QQuickItem *item, const QString &name)
{
    if (!item->isVisible() || item->objectName() == name) {
        return item->isVisible() ? item : nullptr;
    }
    const auto children = item->childItems();
    for (QQuickItem *child : children) {
        if (QQuickItem *found = findItem(child, name)) {
            return found;
        }
    }
    return nullptr;
}

/// Returns all visible texts.
inline QStringList textsOf(const QQuickItem *item)
{
    QStringList texts;
    if (!item->isVisible()) {
        return texts;
    }
    const QString text = item->property("text").toString();
    const bool isDrawn = item->metaObject()->indexOfProperty("truncated") >= 0
        || item->metaObject()->indexOfProperty("readOnly") >= 0;
    if (!text.isEmpty() && isDrawn) {
        texts << text;
    }
    const auto children = item->childItems();
    for (const QQuickItem *child : children) {
        texts << textsOf(child);
    }
    return texts;
}

/// Returns buttons that are cut, or outside the window.
inline QStringList cutButtons(const QQuickItem *item)
{
    QStringList cut;
    if (!item->isVisible()) {
        return cut;
    }
    if (item->metaObject()->indexOfProperty("iconHasColors") >= 0) {
        const QRectF place = item->mapRectToScene(QRectF(QPointF(), item->size()));
        if (item->width() < item->implicitWidth() || place.left() < 0
            || place.right() > item->window()->width()) {
            cut << item->property("text").toString();
        }
    }
    const auto children = item->childItems();
    for (const QQuickItem *child : children) {
        cut << cutButtons(child);
    }
    return cut;
}

} // namespace vellumo::test
