// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/x11/X11PrimarySelection.h"

#include "platform/x11/ToolkitClipboard.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11SelectionReader.h"
#include "platform/x11/X11Windows.h"
#include <unistd.h>

namespace vellumo {

std::optional<qint64> X11PrimarySelection::ownerProcess()
{
    const auto owner = connection_.reply<xcb_get_selection_owner_reply_t>(
        xcb_get_selection_owner(connection_.xcb(), XCB_ATOM_PRIMARY));
    return owner ? X11Windows(connection_).clientProcess(owner->owner) : std::nullopt;
}

std::optional<QString> X11PrimarySelection::string(QDeadlineTimer deadline)
{
    X11SelectionReader reader(connection_, XCB_ATOM_PRIMARY, deadline);
    if (X11Windows(connection_).clientProcess(reader.owner()) == getpid()) {
        return toolkitClipboardText(QClipboard::Selection);
    }
    return reader.text();
}

} // namespace vellumo
