// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "panel/CompositionRoute.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QQuickWindow>

namespace vellumo {

void CompositionRoute::setScope(QQuickItem *scope)
{
    if (scope == scope_) {
        return;
    }
    scope_ = scope;
    if (scope_) {
        connect(scope_, &QQuickItem::windowChanged, this, &CompositionRoute::followWindow);
    }
    followWindow();
    Q_EMIT changed();
}

void CompositionRoute::setField(QQuickItem *field)
{
    if (field != field_) {
        field_ = field;
        followFocus();
        Q_EMIT changed();
    }
}

void CompositionRoute::followWindow()
{
    disconnect(window_);
    if (scope_ && scope_->window()) {
        window_ = connect(scope_->window(), &QQuickWindow::activeFocusItemChanged, this,
                          &CompositionRoute::followFocus);
    }
    followFocus();
}

void CompositionRoute::followFocus()
{
    QQuickItem *item = scope_ && scope_->window() ? scope_->window()->activeFocusItem() : nullptr;
    if (!field_ || item == field_ || (item && item != scope_ && !scope_->isAncestorOf(item))) {
        item = nullptr;
    }
    if (item == focused_) {
        return;
    }
    if (focused_) {
        focused_->removeEventFilter(this);
    }
    focused_ = item;
    if (focused_) {
        focused_->installEventFilter(this);
    }
    QGuiApplication::inputMethod()->update(Qt::ImEnabled);
}

bool CompositionRoute::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != focused_ || !field_) {
        return false;
    }
    if (event->type() == QEvent::InputMethodQuery) {
        QCoreApplication::sendEvent(field_, event);
        auto &query = static_cast<QInputMethodQueryEvent &>(*event);
        for (const auto rectangle : {Qt::ImCursorRectangle, Qt::ImAnchorRectangle}) {
            if (query.queries().testFlag(rectangle)) {
                query.setValue(rectangle,
                               focused_->mapRectFromItem(field_, query.value(rectangle).toRectF()));
            }
        }
        return true;
    }
    if (event->type() == QEvent::InputMethod) {
        QCoreApplication::sendEvent(field_, event);
        if (static_cast<QInputMethodEvent *>(event)->preeditString().isEmpty()) {
            field_->forceActiveFocus(Qt::OtherFocusReason);
        }
        return true;
    }
    return false;
}

} // namespace vellumo
