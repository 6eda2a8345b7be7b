// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/wayland/LayerShell.h"
#include "platform/wayland/client/EventQueue.h"
#include <list>
#include <wayland-client.h>

namespace vellumo {

/// The layer shell of the compositor that Qt is connected to. Surfaces are Qt's: with
/// Qt::BypassWindowManagerHint and QT_WAYLAND_USE_BYPASSWINDOWMANAGERHINT in the environment Qt
/// leaves their role to us.
class LayerShellClient : public LayerShell {
public:
    /// Returns null when the compositor has no layer shell or does not answer in time.
    [[nodiscard]] static std::unique_ptr<LayerShellClient> connect();
    ~LayerShellClient() override;
    Q_DISABLE_COPY_MOVE(LayerShellClient)

    [[nodiscard]] std::unique_ptr<LayerSurface> show(QWindow &window, QScreen &screen,
                                                     const LayerSurface::State &state) override;
    [[nodiscard]] QScreen *activeScreen() override;
    void whenProcessed(std::function<void()> callback) override;

private:
    struct Awaited {
        wl_callback *answer = nullptr;
        std::function<void()> callback;
        std::list<Awaited> *all = nullptr;
    };

    explicit LayerShellClient(wl_display *display);

    static void onGlobal(void *data, wl_registry *registry, uint32_t name, const char *interface,
                         uint32_t version);
    static void onProcessed(void *data, wl_callback *answer, uint32_t serial);

    wl_display *display_;
    EventQueue queue_; ///< of what is waited for
    wl_proxy *shell_ = nullptr;
    wl_compositor *compositor_ = nullptr;
    wl_shm *shm_ = nullptr;
    std::list<Awaited> awaited_;
};

} // namespace vellumo
