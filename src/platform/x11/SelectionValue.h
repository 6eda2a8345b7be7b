// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <xcb/xcb.h>

namespace vellumo {

/// One target's value of a selection. Type and format are part of it, since a target's name does
/// not determine the type and unit of the property that carries it.
struct SelectionValue {
    xcb_atom_t type = XCB_ATOM_NONE;
    quint8 format = 8; ///< bits of a unit: 8, 16 or 32, in the byte order of this machine
    QByteArray bytes;
};

/// Decodes a text by its type: STRING is Latin-1, anything else UTF-8, including surrogate pairs
/// whose halves are encoded separately, as by Tk. Trailing zero bytes, which some programs include,
/// are dropped.
[[nodiscard]] QString selectionText(const SelectionValue &value);

/// Maximum size of a selection in bytes, all targets together.
constexpr qsizetype maxSelectionBytes = qsizetype{64} * 1024 * 1024;

} // namespace vellumo
