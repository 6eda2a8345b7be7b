// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/OwnPointer.h"

#include "platform/wayland/LayerShell.h"
#include <QCoreApplication>
#include <QEnterEvent>
#include <QVariant>

namespace vellumo {

OwnPointer::OwnPointer()
{
    qApp->installEventFilter(this);
}

std::optional<QPoint> OwnPointer::position() const
{
    const QVariant origin = window_ ? window_->property(layerProperty::position) : QVariant();
    return origin.isValid() ? std::optional(origin.toPoint() + inside_) : std::nullopt;
}

bool OwnPointer::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Enter:
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::Wheel:
        if (auto *window = qobject_cast<QWindow *>(watched)) {
            window_ = window;
            inside_ = static_cast<QSinglePointEvent *>(event)->position().toPoint();
        }
        break;
    case QEvent::Leave:
    case QEvent::Hide:
        if (watched == window_) {
            window_ = nullptr;
        }
        break;
    default:
        break;
    }
    return false;
}

} // namespace vellumo
