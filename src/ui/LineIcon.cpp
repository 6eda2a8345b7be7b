// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "ui/LineIcon.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace vellumo {

LineIcon::LineIcon(QQuickItem *parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    connect(this, &LineIcon::changed, this, [this] { update(); });
}

void LineIcon::setName(const QString &name)
{
    if (name != name_) {
        name_ = name;
        Q_EMIT changed();
    }
}

void LineIcon::setColor(const QColor &color)
{
    if (color != color_) {
        color_ = color;
        Q_EMIT changed();
    }
}

QImage LineIcon::drawing() const
{
    const qreal scale = window()->effectiveDevicePixelRatio();
    QImage image((size() * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    QSvgRenderer(name_.startsWith(u':') ? name_ : u":/qt/qml/Vellumo/Ui/icons/%1.svg"_s.arg(name_))
        .render(&painter, QRectF(QPointF(), size()));
    if (color_.alpha() > 0) {
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(QRectF(QPointF(), size()), color_);
    }
    return image;
}

QSGNode *LineIcon::updatePaintNode(QSGNode *node, UpdatePaintNodeData * /*data*/)
{
    if (name_.isEmpty() || boundingRect().isEmpty()) {
        delete node;
        return nullptr;
    }
    auto *image = static_cast<QSGImageNode *>(node);
    if (image == nullptr) {
        image = window()->createImageNode();
        image->setOwnsTexture(true);
    }
    image->setTexture(
        window()->createTextureFromImage(drawing(), QQuickWindow::TextureHasAlphaChannel));
    image->setRect(boundingRect());
    return image;
}

void LineIcon::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size()) {
        update();
    }
}

} // namespace vellumo
