// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/x11/X11Backend.h"

#include "platform/x11/KeyLabels.h"

namespace vellumo {

X11Backend::X11Backend(const QByteArray &display)
    : inputConnection_(problems_, display)
    , windowConnection_(problems_, display)
    , clipboardConnection_(problems_, display)
    , selectionConnection_(problems_, display)
    , windows_(windowConnection_)
    , eventMonitors_(inputConnection_, problems_)
    , keyPosting_(inputConnection_, eventMonitors_, windows_, problems_)
    , workspace_(windowConnection_, windows_,
                 DesktopEntries(DesktopEntries::standardFolders(), desktopEntryLanguages()))
    , pasteboard_(clipboardConnection_, problems_)
    , selectionHistory_(selectionConnection_)
    , primarySelection_(windowConnection_, selectionHistory_)
{
    problems_.print();
}

KeyboardFace X11Backend::keyboardFace()
{
    KeyboardFace face;
    face.hasRightOption = optionKeys().right;
    if (const QStringList labels = bottomRowLabels(inputConnection_); !labels.isEmpty()) {
        face.letters = labels;
    }
    return face;
}

} // namespace vellumo
