// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/wayland/client/EventQueue.h"
#include <wayland-client.h>

namespace vellumo {

/// Finds out on which output the compositor puts a layer surface that names none, which is the one
/// where the user works, by showing an invisible one for a moment.
class ActiveOutput {
public:
    /// All must outlive this object.
    ActiveOutput(EventQueue &queue, wl_compositor *compositor, wl_shm *shm, wl_proxy *layerShell);
    ~ActiveOutput();
    Q_DISABLE_COPY_MOVE(ActiveOutput)

    /// Blocks until the compositor has answered. Returns null when it does not in time. The result
    /// belongs to the caller's connection.
    [[nodiscard]] wl_output *ask(QDeadlineTimer deadline);

private:
    static void onConfigure(void *data, wl_proxy *role, uint32_t serial, uint32_t width,
                            uint32_t height);
    static void onClosed(void *data, wl_proxy *role);
    static void onEnter(void *data, wl_surface *surface, wl_output *output);
    static void onLeave(void *data, wl_surface *surface, wl_output *output);
#ifdef WL_SURFACE_PREFERRED_BUFFER_SCALE_SINCE_VERSION // from libwayland 1.22 on
    static void onPreferredScale(void *data, wl_surface *surface, int32_t factor);
    static void onPreferredTransform(void *data, wl_surface *surface, uint32_t transform);
#endif

    EventQueue &queue_;
    wl_shm *shm_;
    wl_surface *surface_ = nullptr;
    wl_proxy *role_ = nullptr;
    wl_output *output_ = nullptr;
    bool isConfigured_ = false;
};

} // namespace vellumo
