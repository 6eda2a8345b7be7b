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

/// Reads a selection from its current owner. The owner may stall, exit, send invalid data or never
/// stop sending: no wait exceeds the deadline, and no more than the limit is kept.
///
/// One object serves one read. It has a window of its own, so that what a stalled owner sends later
/// is discarded.
class X11SelectionReader {
public:
    enum class Outcome : quint8 {
        Value,
        Cut, ///< the beginning of a value above the limit; nothing more can be read
        Refused, ///< the owner does not have the contents in this form
        Failed, ///< the deadline has passed or the owner has exited; nothing more can be read
    };
    struct Answer {
        Outcome outcome = Outcome::Failed;
        SelectionValue value;
    };

    /// `limit` is the size in bytes of all conversions together.
    X11SelectionReader(X11Connection &connection, xcb_atom_t selection, QDeadlineTimer deadline,
                       qsizetype limit = maxSelectionBytes);
    ~X11SelectionReader();
    Q_DISABLE_COPY_MOVE(X11SelectionReader)

    /// Returns the owner at the beginning of the read; XCB_WINDOW_NONE for an empty selection.
    [[nodiscard]] xcb_window_t owner() const { return owner_; }

    /// Returns false when the server did not report the owner in time; there may be one.
    [[nodiscard]] bool isOwnerKnown() const { return isOwnerKnown_; }

    [[nodiscard]] Answer convert(xcb_atom_t target);

    /// Returns the owner's targets, without duplicates. Absent when the owner does not report them.
    [[nodiscard]] std::optional<QList<xcb_atom_t>> targets();

    /// Returns the contents as text, from the first text target that the owner has, truncated at
    /// the limit.
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
    uint32_t ownerMask_ = XCB_EVENT_MASK_NO_EVENT; ///< event mask of this connection before
    bool isOwnerKnown_ = false;
    xcb_window_t window_ = XCB_WINDOW_NONE;
};

} // namespace vellumo
