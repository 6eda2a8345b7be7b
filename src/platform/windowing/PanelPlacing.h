// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPoint>
#include <QRect>
#include <limits>

class QEvent;
class QPointerEvent;

namespace vellumo {

/// Puts a panel's window on the desktop in the way of one window system. Geometries are Qt's; they
/// include a shadow's margin. Main thread only.
class PanelPlacing : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Moves and resizes the window, also while it is hidden.
    virtual void setGeometry(const QRect &geometry) = 0;
    [[nodiscard]] virtual QRect geometry() const = 0;

    /// Shows the window, or raises it if it is shown, without giving it the keyboard.
    virtual void show() = 0;

    /// Hides the window. If it had the keyboard, the window that had it before gets it back.
    virtual void hide() = 0;

    /// Returns whether the window was shown and not hidden since. The desktop may still have to
    /// show it.
    [[nodiscard]] virtual bool isShown() const = 0;

    virtual void raise() = 0;
    virtual void takeKeyboard() = 0;

    /// Prepares new areas of the window for a desktop that blends windows, or one that does not.
    virtual void setBlended(bool isBlended) = 0;

    /// Makes the whole window visible if it is blended, else only what the picture covers. Relative
    /// to the window.
    virtual void outline(const QRect &picture, bool isBlended) = 0;

    /// Returns the topmost row that the desktop lets the window cover, as far as it is known. A
    /// window that reaches above it, if only with its shadow, is moved down as a whole.
    [[nodiscard]] virtual int topLimit() const { return std::numeric_limits<int>::min(); }

    /// Passes clicks outside of the frame to the window behind. Relative to the window.
    virtual void takeClicks(const QRect &frame) = 0;

    /// Returns the position of the pointer, or the first finger, in an event of the window.
    [[nodiscard]] virtual QPoint pointerPosition(const QPointerEvent &event) = 0;

    /// Returns whether presses in other programs' windows are reported to the program.
    [[nodiscard]] virtual bool seesClicksElsewhere() const = 0;

    /// Returns whether the window can show a picture on its way between these places.
    [[nodiscard]] virtual bool canAnimate(const QRect &from, const QRect &to) const = 0;

    /// Returns the area that the window is to cover while the user drags the picture in it, or
    /// while it catches clicks.
    [[nodiscard]] virtual QRect dragArea(const QRect &picture) const = 0;

    /// To be called when the user has finished dragging.
    virtual void finishDrag() = 0;

    /// To be called with every event of the window, before the window processes it.
    virtual void handle(const QEvent &event) = 0;

Q_SIGNALS:
    /// Emitted when the desktop has moved the window, by itself or for the user. geometry() is
    /// the new one already.
    void movedByDesktop(QPoint distance, bool isByUser);
};

} // namespace vellumo
