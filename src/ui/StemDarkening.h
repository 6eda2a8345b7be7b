// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

namespace vellumo {

/// Turns off stem darkening for the calling thread's fonts. Qt enables it for CFF fonts, which
/// suits linear blending; with the software renderer it makes regular Chinese text look bold beside
/// Latin text. Does nothing where Qt or FreeType lacks the switch. To be called after
/// QGuiApplication is created and before any text is drawn.
void disableStemDarkening();

} // namespace vellumo
