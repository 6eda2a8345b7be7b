// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QImage>
#include <QQuickItem>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

namespace vellumo {

/// A drawing of one colour, in the colour of the current theme; or in its own colours, if the given
/// one is transparent.
class LineIcon : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY changed)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY changed)

public:
    explicit LineIcon(QQuickItem *parent = nullptr);

    /// Returns the name of a file in the icons folder, without its suffix; or a path that begins
    /// with a colon.
    [[nodiscard]] QString name() const { return name_; }
    void setName(const QString &name);

    [[nodiscard]] QColor color() const { return color_; }
    void setColor(const QColor &color);

Q_SIGNALS:
    void changed();

protected:
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *data) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;

private:
    [[nodiscard]] QImage drawing() const;

    QString name_;
    QColor color_ = Qt::black;
};

} // namespace vellumo
