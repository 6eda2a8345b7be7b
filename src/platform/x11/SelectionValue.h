// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <xcb/xcb.h>

namespace vellumo {

/// One form of a selection's contents as it travels: the bytes alone are not enough to give it
/// back, since a target's name does not determine the type and unit of the property that carries
/// it.
struct SelectionValue {
    xcb_atom_t type = XCB_ATOM_NONE;
    quint8 format = 8; ///< bits of a unit: 8, 16 or 32, in the byte order of this machine
    QByteArray bytes;
};

/// The text in a value whose type names its encoding: STRING is Latin-1, anything else is taken as
/// UTF-8, also where each half of a surrogate pair is encoded by itself, as Tk does. Trailing zero
/// bytes, which some programs count in, are dropped.
[[nodiscard]] QString selectionText(const SelectionValue &value);

/// Most bytes that are taken over from one selection, all targets together.
constexpr qsizetype maxSelectionBytes = qsizetype{64} * 1024 * 1024;

} // namespace vellumo
