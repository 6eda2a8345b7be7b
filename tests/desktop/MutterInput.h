// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace vellumo::test {

/// A keyboard for the windows of GNOME Shell, native ones included, through the shell's interface
/// for remote desktops. Key codes are those of linux/input-event-codes.h; those of buttons press
/// the buttons of a pointer.
class MutterInput {
public:
    MutterInput();

    /// Leaves the overview, in which a session begins. Returns whether it is left.
    [[nodiscard]] static bool closeOverview();

    /// Turns vellumo's extension on or off. Returns whether the shell has agreed.
    [[nodiscard]] static bool switchExtension(bool isOn);

    void press(quint32 key) const { notify(key, true); }
    void release(quint32 key) const { notify(key, false); }
    void chord(quint32 modifier, quint32 key) const;
    /// Taps Alt twice, as fast as a person does.
    void doubleTap() const;

private:
    void notify(quint32 key, bool isPress) const;

    QString session_; ///< its object path
};

} // namespace vellumo::test
