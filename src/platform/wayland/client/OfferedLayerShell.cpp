// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/client/EventQueue.h"
#include "platform/wayland/client/LayerShellProtocol.h"

#include <cstring>
#include <memory>
#include <wayland-client.h>

using namespace std::chrono_literals;

namespace {

/// A compositor may be busy while a session starts.
constexpr auto probeTimeout = 2s;

struct DisplayDeleter {
    void operator()(wl_display *display) const { wl_display_disconnect(display); }
};

struct Probe {
    bool isOffered = false;
    bool isDone = false;
};

void onGlobal(void *data, wl_registry * /*registry*/, uint32_t /*name*/, const char *interface,
              uint32_t /*version*/)
{
    if (std::strcmp(interface, vellumo::layerShellProtocol::shell().name) == 0) {
        static_cast<Probe *>(data)->isOffered = true;
    }
}

void onGlobalRemoved(void * /*data*/, wl_registry * /*registry*/, uint32_t /*name*/) { }

void onDone(void *data, wl_callback * /*callback*/, uint32_t /*serial*/)
{
    static_cast<Probe *>(data)->isDone = true;
}

} // namespace

extern "C" __attribute__((visibility("default"))) bool vellumo_wayland_offers_layers_1()
{
    const std::unique_ptr<wl_display, DisplayDeleter> display(wl_display_connect(nullptr));
    if (!display) {
        return false;
    }
    static constexpr wl_registry_listener registryListener{&onGlobal, &onGlobalRemoved};
    static constexpr wl_callback_listener callbackListener{&onDone};
    vellumo::EventQueue queue(display.get());
    Probe probe;
    const auto wrapper = queue.wrap(display.get());
    auto *wrapped = reinterpret_cast<wl_display *>(wrapper.get());
    wl_registry *registry = wl_display_get_registry(wrapped);
    wl_registry_add_listener(registry, &registryListener, &probe);
    wl_callback *callback = wl_display_sync(wrapped);
    wl_callback_add_listener(callback, &callbackListener, &probe);
    static_cast<void>(
        queue.waitUntil([&probe] { return probe.isDone; }, QDeadlineTimer(probeTimeout)));
    wl_callback_destroy(callback);
    wl_registry_destroy(registry);
    return probe.isOffered;
}
