// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/LayerShell.h"
#include "platform/wayland/WaylandSession.h"

namespace vellumo {

std::unique_ptr<WaylandSession> WaylandSession::make(X11Backend & /*x11*/, SessionBus & /*session*/,
                                                     AtspiBus & /*accessibility*/,
                                                     const QString & /*clientModule*/)
{
    return nullptr;
}

bool LayerShell::isOffered(const QString & /*clientModule*/)
{
    return false;
}

std::unique_ptr<LayerShell> LayerShell::make(const QString & /*clientModule*/)
{
    return nullptr;
}

} // namespace vellumo
