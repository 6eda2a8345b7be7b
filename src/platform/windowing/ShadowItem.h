// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/windowing/ShadowImage.h"
#include <QQuickItem>

namespace vellumo {

/// Draws a panel's shadow as a nine-patch, since the software renderer has no effects. The item's
/// rectangle is the panel's with shadowMargin around it.
class ShadowItem final : public QQuickItem {
    Q_OBJECT

public:
    ShadowItem(qreal topRadius, qreal bottomRadius, QQuickItem *parent);

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void geometryChange(const QRectF &now, const QRectF &before) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    qreal topRadius_;
    qreal bottomRadius_;
    ShadowImage shadow_;
    QSizeF imageSize_;
    bool isImageNew_ = false;
};

} // namespace vellumo
