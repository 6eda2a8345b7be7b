// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

namespace vellumo {

class X11Connection;

/// Returns the labels of the eight keys right of the left Shift key in the current layout, from the
/// server. Empty when it does not answer, or when one of the keys types nothing that can be
/// printed.
[[nodiscard]] QStringList bottomRowLabels(X11Connection &connection);

} // namespace vellumo
