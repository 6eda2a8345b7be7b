// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

namespace vellumo {

/// Qt makes FreeType thicken the stems of CFF fonts, which suits linear blending; with the software
/// renderer it makes regular Chinese text look bold beside Latin text. Turns that off for the
/// calling thread's fonts. Where the running Qt or FreeType has no such switch, nothing happens. To
/// be called after QGuiApplication is made and before any text is drawn.
void disableStemDarkening();

} // namespace vellumo
