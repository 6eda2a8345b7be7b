// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/SelectionValue.h"
#include <QDeadlineTimer>
#include <QList>
#include <QString>
#include <optional>

namespace vellumo {

class X11Connection;

/// Reads a selection from the client that owns it now. The owner may stall, die, send without end
/// or nonsense: no wait lasts beyond the deadline and no more than the limit is kept.
///
/// Lives for one reading. It has a window of its own, so that whatever a stalled owner still sends
/// later goes nowhere.
class X11SelectionReader {
public:
    enum class Outcome : quint8 {
        Value,
        Cut, ///< the beginning of a value that is over the limit; nothing more can be read
        Refused, ///< the owner does not have the contents in this form
        Failed, ///< time or owner at its end; nothing more can be read
    };
    struct Answer {
        Outcome outcome = Outcome::Failed;
        SelectionValue value;
    };

    /// `limit` counts the bytes of all conversions together.
    X11SelectionReader(X11Connection &connection, xcb_atom_t selection, QDeadlineTimer deadline,
                       qsizetype limit = maxSelectionBytes);
    ~X11SelectionReader();
    Q_DISABLE_COPY_MOVE(X11SelectionReader)

    /// The owner when the reading began; XCB_WINDOW_NONE for an empty selection.
    [[nodiscard]] xcb_window_t owner() const { return owner_; }

    /// False when the server did not name the owner in time; there may be one.
    [[nodiscard]] bool isOwnerKnown() const { return isOwnerKnown_; }

    [[nodiscard]] Answer convert(xcb_atom_t target);

    /// The targets that the owner says it can convert to, without duplicates. Absent when the owner
    /// does not say.
    [[nodiscard]] std::optional<QList<xcb_atom_t>> targets();

    /// The contents as text, from the first form that the owner has; cut if they are over the
    /// limit.
    [[nodiscard]] std::optional<QString> text();

private:
    struct Chunk {
        bool exists = false;
        bool isCut = false; ///< over the limit
        SelectionValue value;
    };

    [[nodiscard]] bool waitForNotify(xcb_atom_t target, xcb_atom_t &property);
    [[nodiscard]] bool waitForNewValue();
    [[nodiscard]] std::optional<Chunk> readProperty();
    [[nodiscard]] Answer readIncrements();
    [[nodiscard]] bool isOwnerGone(const xcb_generic_event_t &event) const;

    X11Connection &connection_;
    xcb_atom_t selection_;
    xcb_atom_t property_;
    QDeadlineTimer deadline_;
    qsizetype remaining_;
    xcb_window_t owner_ = XCB_WINDOW_NONE;
    uint32_t ownerMask_ = XCB_EVENT_MASK_NO_EVENT; ///< what this connection had asked for before
    bool isOwnerKnown_ = false;
    xcb_window_t window_ = XCB_WINDOW_NONE;
};

} // namespace vellumo
