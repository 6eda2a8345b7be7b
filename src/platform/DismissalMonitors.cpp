// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/DismissalMonitors.h"

namespace vellumo {

void DismissalMonitors::start(const Handlers &handlers)
{
    stop();
    local_ = monitoring_.addLocalMonitor(PanelEvents::local, [handlers](const Event &event) {
        if (event.type == EventType::KeyDown && event.keyCode == KeyCode::Escape) {
            handlers.escaped();
            return false;
        }
        handlers.acted(event.type);
        return true;
    });
    for (const EventMask mask : {PanelEvents::mouseDown, PanelEvents::scroll}) {
        global_.push_back(monitoring_.addGlobalMonitor(
            mask, [acted = handlers.acted](const Event &event) { acted(event.type); }));
    }
}

void DismissalMonitors::stop()
{
    local_.reset();
    global_.clear();
}

} // namespace vellumo
