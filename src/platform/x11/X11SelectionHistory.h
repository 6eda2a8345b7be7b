// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Pasteboard.h"
#include "platform/x11/ServerClock.h"
#include "platform/x11/X11Windows.h"
#include <QSet>
#include <xcb/xcb.h>

namespace vellumo {

class X11Connection;

/// Follows PRIMARY and what ends a selection after it was published, in the order in which the
/// server reports both: presses of buttons and touches, the active window, the window's title.
/// Wheel buttons and presses in another application do not end a selection.
class X11SelectionHistory {
public:
    /// `connection` must outlive this object and be used by no other object, since events are
    /// selected on other clients' windows.
    explicit X11SelectionHistory(X11Connection &connection);
    ~X11SelectionHistory();
    Q_DISABLE_COPY_MOVE(X11SelectionHistory)

    /// Processes all events that the server has sent so far.
    [[nodiscard]] std::optional<Publication> publication();

    [[nodiscard]] bool publishes(qint64 processIdentifier) const
    {
        return publishers_.contains(processIdentifier);
    }

    void noteRead();

private:
    struct Published {
        xcb_window_t owner = XCB_WINDOW_NONE;
        std::optional<qint64> process;
        qint64 at = 0; ///< on the server's clock, like readAt
        xcb_window_t window = XCB_WINDOW_NONE; ///< the window with the selection, once known
        QString title;
        bool isTitleWatched = false;
        bool isOver = false;
        bool isOfPress = false; ///< published right after a single press
        std::optional<qint64> readAt;
    };

    void selectEvents();
    void handleEvent(const xcb_generic_event_t &event);
    void handlePropertyChange(const xcb_property_notify_event_t &event);
    void handlePress(quint32 time);
    void publish(xcb_window_t owner, qint64 at);
    void bind();
    void setTitleWatched(bool watched);
    void look();
    [[nodiscard]] bool isPressInside(qint64 time);

    X11Connection &connection_;
    X11Windows windows_;
    ServerClock clock_;
    quint8 fixesEvent_ = 0; ///< 0 without the extension, like xinputOpcode_
    quint8 xinputOpcode_ = 0;
    xcb_window_t activeWindow_ = XCB_WINDOW_NONE;
    std::optional<qint64> activeProcess_;
    std::optional<qint64> pressedAt_; ///< the last press
    bool isLonePress_ = false; ///< the last press does not belong to a double click
    Published published_;
    QSet<qint64> publishers_;
};

} // namespace vellumo
