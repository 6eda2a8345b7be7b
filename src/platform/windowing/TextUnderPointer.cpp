// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/TextUnderPointer.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <algorithm>

namespace vellumo {

namespace {

bool isField(const QObject &object)
{
    return object.inherits("QQuickTextInput") || object.inherits("QQuickTextEdit");
}

} // namespace

bool hasSelectableText(const QQuickItem &item, QPointF position)
{
    if (!item.isVisible() || (item.clip() && !item.contains(position))) {
        return false;
    }
    if (isField(item) && item.contains(position) && item.property("selectByMouse").toBool()) {
        return true;
    }
    const auto children = item.childItems();
    return std::ranges::any_of(children, [&](const QQuickItem *child) {
        return hasSelectableText(*child, item.mapToItem(child, position));
    });
}

bool hasTypedText(const QQuickWindow &window)
{
    const QQuickItem *field = window.activeFocusItem();
    return field != nullptr && isField(*field) && !field->property("readOnly").toBool()
        && (!field->property("text").toString().isEmpty()
            || !field->property("preeditText").toString().isEmpty());
}

} // namespace vellumo
