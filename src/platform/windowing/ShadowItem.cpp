// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/ShadowItem.h"

#include <QQuickWindow>
#include <QSGNinePatchNode>

namespace vellumo {

ShadowItem::ShadowItem(qreal topRadius, qreal bottomRadius, QQuickItem *parent)
    : QQuickItem(parent)
    , topRadius_(topRadius)
    , bottomRadius_(bottomRadius)
{
    setFlag(ItemHasContents);
}

QSGNode *ShadowItem::updatePaintNode(QSGNode *old, UpdatePaintNodeData * /*data*/)
{
    auto *node = static_cast<QSGNinePatchNode *>(old);
    const qreal scale = window()->effectiveDevicePixelRatio();
    const QSizeF imageSize = shadowImageSize(size(), std::max(topRadius_, bottomRadius_));
    if (imageSize.isEmpty()) {
        delete old;
        return nullptr;
    }
    if (imageSize != imageSize_ || shadow_.image.devicePixelRatio() != scale) {
        shadow_ = drawShadow(imageSize, topRadius_, bottomRadius_, scale);
        imageSize_ = imageSize;
        isImageNew_ = true;
    }
    if (!node) {
        node = window()->createNinePatchNode();
        isImageNew_ = true;
    }
    if (!node) {
        return nullptr;
    }
    if (isImageNew_) {
        node->setTexture(
            window()->createTextureFromImage(shadow_.image, QQuickWindow::TextureHasAlphaChannel));
        node->setDevicePixelRatio(scale);
        const QSizeF padding = shadow_.padding;
        node->setPadding(padding.width(), padding.height(), padding.width(), padding.height());
        isImageNew_ = false;
    }
    node->setBounds(boundingRect());
    node->update();
    return node;
}

void ShadowItem::geometryChange(const QRectF &now, const QRectF &before)
{
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size()) {
        update();
    }
}

void ShadowItem::itemChange(ItemChange change, const ItemChangeData &data)
{
    if (change == ItemDevicePixelRatioHasChanged) {
        update();
    }
    QQuickItem::itemChange(change, data);
}

} // namespace vellumo
