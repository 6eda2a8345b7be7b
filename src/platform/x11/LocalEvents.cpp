// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/x11/LocalEvents.h"

#include "platform/x11/ModifierFlags.h"
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWindow>

namespace vellumo {

namespace {

Event inputEvent(EventType type, const QInputEvent &input)
{
    Event event;
    event.type = type;
    event.modifierFlags = modifierFlags(input.modifiers());
    event.timestampMs = static_cast<qint64>(input.timestamp());
    return event;
}

std::optional<Event> pointerEvent(EventType type, const QSinglePointEvent &input,
                                  const QWindow &window)
{
    if (!QRectF(QPointF(), QSizeF(window.size())).contains(input.position())) {
        return std::nullopt;
    }
    return inputEvent(type, input);
}

std::optional<Event> buttonEvent(const QMouseEvent &input, const QWindow &window)
{
    switch (input.button()) {
    case Qt::LeftButton:
        return pointerEvent(EventType::LeftMouseDown, input, window);
    case Qt::RightButton:
        return pointerEvent(EventType::RightMouseDown, input, window);
    default:
        return std::nullopt;
    }
}

Event keyEvent(const QKeyEvent &input)
{
    Event event = inputEvent(EventType::KeyDown, input);
    event.keyCode = input.key() == Qt::Key_Escape ? KeyCode::Escape : KeyCode::Other;
    return event;
}

} // namespace

std::optional<Event> localEvent(const QWindow &window, const QEvent &event)
{
    switch (event.type()) {
    case QEvent::Enter:
    case QEvent::Leave: {
        Event moved;
        moved.type = EventType::MouseMoved;
        return moved;
    }
    default:
        break;
    }
    if (!event.spontaneous()) {
        return std::nullopt;
    }
    switch (event.type()) {
    case QEvent::KeyPress:
        return keyEvent(static_cast<const QKeyEvent &>(event));
    case QEvent::MouseButtonPress:
        return buttonEvent(static_cast<const QMouseEvent &>(event), window);
    case QEvent::Wheel:
        return pointerEvent(EventType::ScrollWheel, static_cast<const QWheelEvent &>(event),
                            window);
    case QEvent::MouseMove:
        return pointerEvent(EventType::MouseMoved, static_cast<const QMouseEvent &>(event), window);
    default:
        return std::nullopt;
    }
}

} // namespace vellumo
