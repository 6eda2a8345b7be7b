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
    const char *title = "vellumo"; ///< for screen readers and lists of windows
    WindowLevel level = WindowLevel::Floating;
    bool canBecomeKey = false; ///< a click can give it the keyboard
    bool hasShadow = true;
    bool ignoresMouseEvents = false;
    bool isMovable = false; ///< a move by the window manager changes the frame
    bool isDrawnAhead = true; ///< drawn once while hidden: showing is quicker, creating slower
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

    /// Changes the frame and the picture at once.
    virtual void setFrame(const Rect &frame) = 0;

    /// Changes the frame at once; the picture follows with ease-in-ease-out timing. `completion`,
    /// if any, runs once when the animation ends, and never when another frame is set before that.
    virtual void animateFrame(const Rect &frame, std::chrono::milliseconds duration,
                              std::function<void()> completion) = 0;

    /// Moves the panel with the pointer, by the point that was pressed, until the button is
    /// released; if the release never arrives, the next press ends the drag. frame() is always
    /// current; moved() is emitted once, at the end. To be called only during the delivery of a
    /// press or a drag motion, of a mouse or a finger.
    virtual void performDrag() = 0;

    /// Where a program is not told of clicks elsewhere, makes them go to this panel, whose local
    /// monitors then see them; the windows below do not get them. For a panel that a click
    /// elsewhere closes, while it is open.
    virtual void setCatchesClicks(bool catches) = 0;

    /// Fades the content to this opacity, 0 to 1, where windows are blended. `completion`, if any,
    /// runs once after the duration, and never when the panel is hidden before that.
    virtual void animateAlpha(double alpha, std::chrono::milliseconds duration,
                              std::function<void()> completion) = 0;

    /// Sets the shape of the pointer over the panel.
    virtual void setCursor(PanelCursor cursor) = 0;

    [[nodiscard]] virtual bool isVisible() const = 0;

    /// Shows and raises the panel without activating it.
    virtual void orderFrontRegardless() = 0;

    /// Hides the panel. If it had the keyboard, the window that had it before gets it back.
    virtual void orderOut() = 0;

    /// As orderOut(), but the picture fades where windows are blended. The panel counts as hidden
    /// from the call on, and takes no clicks. A panel with the keyboard does not fade: hiding it is
    /// what gives the keyboard back.
    virtual void fadeOut(std::chrono::milliseconds duration) = 0;

    /// Gives a panel that can become key the keyboard.
    virtual void makeKey() = 0;

Q_SIGNALS:
    /// Emitted after the frame was changed by the program, the window manager or the user; for a
    /// drag, at its end.
    void moved();

    /// Emitted after moved() when the user moved the panel, by a drag or through the window
    /// manager.
    void movedByUser();

    /// Emitted when the panel is painted for the first time since it was shown.
    void appeared();

    /// Emitted when the user asks the window manager to close the panel. It stays visible until
    /// orderOut().
    void closeRequested();
};

/// Creates floating panels, which must not outlive it. Main thread only.
class FloatingWindows {
public:
    virtual ~FloatingWindows() = default;

    /// Returns a hidden panel, owned by the caller. Its content is created at once, so that showing
    /// it is quick.
    [[nodiscard]] virtual std::unique_ptr<FloatingPanel>
    createPanel(const FloatingPanelStyle &style, const FloatingPanelContent &content) = 0;

    /// Returns the frames of the panels that are on screen.
    [[nodiscard]] virtual QList<Rect> visibleFrames() const = 0;
};

} // namespace vellumo
