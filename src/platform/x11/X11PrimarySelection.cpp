// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/x11/X11PrimarySelection.h"

#include "platform/Accessibility.h"
#include "platform/x11/ToolkitClipboard.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11SelectionHistory.h"
#include "platform/x11/X11SelectionReader.h"
#include "platform/x11/X11Windows.h"
#include <unistd.h>

namespace vellumo {

std::optional<Publication> X11PrimarySelection::publication()
{
    return history_.publication();
}

bool X11PrimarySelection::publishes(qint64 processIdentifier)
{
    return history_.publishes(processIdentifier);
}

std::optional<QString> X11PrimarySelection::string(QDeadlineTimer deadline)
{
    history_.noteRead();
    // A longer text exceeds maxSelectionLength in any encoding.
    constexpr qsizetype maxBytes = 4 * (maxSelectionLength + 1);
    X11SelectionReader reader(connection_, XCB_ATOM_PRIMARY, deadline, maxBytes);
    if (X11Windows(connection_).clientProcess(reader.owner()) == getpid()) {
        return toolkitClipboardText(QClipboard::Selection);
    }
    return reader.text();
}

} // namespace vellumo
