// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Geometry.h"
#include <QList>
#include <QObject>
#include <QUrl>
#include <QVariantMap>
#include <chrono>
#include <functional>
#include <memory>

namespace vellumo {

enum class WindowLevel : quint8 { Floating = 3, Status = 25 };

enum class PanelCursor : quint8 { Arrow, PointingHand };

struct FloatingPanelStyle {
    WindowLevel level = WindowLevel::Floating;
    bool canBecomeKey = false; ///< a click may give it the keyboard
    bool hasShadow = true;
    bool ignoresMouseEvents = false;
    bool isMovable = false; ///< a move through the window manager is taken over
    bool isDrawnAhead = true; ///< once while hidden: showing is quicker, making it takes longer
    bool isShapedByContent = false; ///< without blending, only opaque pixels are visible
    double topCornerRadius = 0;
    double bottomCornerRadius = 0;
};

/// What a panel shows: a QML component whose root is an item that fills the panel, and its required
/// properties. Objects among them must outlive the panel.
struct FloatingPanelContent {
    QUrl source;
    QVariantMap properties;
};

/// A borderless window above ordinary ones, on every workspace and over full-screen windows, that
/// never takes the keyboard by being shown. Frames are logical: a shadow's margin is not part of
/// them, and clicks in the margin go to the window behind. Main thread only.
class FloatingPanel : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    [[nodiscard]] virtual Rect frame() const = 0;

    /// The frame is the new one at once, for every rule; without animation so is the picture.
    virtual void setFrame(const Rect &frame) = 0;

    /// As setFrame(), but the picture follows with ease-in-ease-out timing. `completion`, if any,
    /// runs once when the picture has arrived, not when another frame was set before.
    virtual void animateFrame(const Rect &frame, std::chrono::milliseconds duration,
                              std::function<void()> completion) = 0;

    /// Lets the panel follow the pointer, by where it was pressed, until the button is let go; a
    /// release that never arrives is made up for by the next press. The frame is always current;
    /// moved() comes once, at the end. Only from within the delivery of a press or a drag motion,
    /// of a mouse or of a finger.
    virtual void performDrag() = 0;

    /// Fades the content to this opacity, 0 to 1, where windows are blended. `completion`, if any,
    /// runs once after the duration, not when the panel was hidden before.
    virtual void animateAlpha(double alpha, std::chrono::milliseconds duration,
                              std::function<void()> completion) = 0;

    /// The pointer's form while it is over the panel.
    virtual void setCursor(PanelCursor cursor) = 0;

    [[nodiscard]] virtual bool isVisible() const = 0;

    /// Shows and raises the panel without activating it.
    virtual void orderFrontRegardless() = 0;

    /// Hides the panel; a keyboard that it had goes back to the window that had it before.
    virtual void orderOut() = 0;

    /// Gives a panel that can become key the keyboard.
    virtual void makeKey() = 0;

Q_SIGNALS:
    /// The frame has changed, by the program, the window manager or the user; for a drag, at its
    /// end.
    void moved();

    /// After moved(): it was the user who put the panel where it is, by a drag or with the window
    /// manager's help.
    void movedByUser();

    /// The panel has been painted for the first time since it was shown.
    void appeared();

    /// The user asked the window manager to close the panel. It stays until orderOut().
    void closeRequested();
};

class FloatingWindows {
public:
    virtual ~FloatingWindows() = default;

    /// A hidden panel. Its content is created at once, so that showing it costs little.
    [[nodiscard]] virtual std::unique_ptr<FloatingPanel>
    createPanel(const FloatingPanelStyle &style, const FloatingPanelContent &content) = 0;

    /// The frames of the panels that are on screen.
    [[nodiscard]] virtual QList<Rect> visibleFrames() const = 0;
};

} // namespace vellumo
