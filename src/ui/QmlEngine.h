// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

class QQmlEngine;

namespace vellumo {

/// Lets the engine find the program's own modules, which are compiled in.
void prepareEngine(QQmlEngine &engine);

} // namespace vellumo
