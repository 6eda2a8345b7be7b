// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <algorithm>
#include <array>

namespace vellumo {

/// Returns whether a selection's owner offers contents under this type, an X11 target name or a
/// MIME type. Others are metadata of the selection, requests for an action, and ids of objects in
/// the owner's memory or on the X server that end with the owner. Inline, since modules that do not
/// link the platform use it.
[[nodiscard]] inline bool hasContents(QByteArrayView type)
{
    constexpr std::array<const char *, 13> others{"TARGETS",
                                                  "MULTIPLE",
                                                  "TIMESTAMP",
                                                  "SAVE_TARGETS",
                                                  "DELETE",
                                                  "INSERT_PROPERTY",
                                                  "INSERT_SELECTION",
                                                  "PIXMAP",
                                                  "BITMAP",
                                                  "DRAWABLE",
                                                  "COLORMAP",
                                                  "GTK_TEXT_BUFFER_CONTENTS",
                                                  "application/x-qt-image"};
    return !type.isEmpty() && std::none_of(others.begin(), others.end(), [type](const char *other) {
        return type == QByteArrayView(other);
    });
}

} // namespace vellumo
