// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/client/LayerShellClient.h"

#include "platform/wayland/client/ActiveOutput.h"
#include "platform/wayland/client/LayerShellProtocol.h"
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <array>
#include <cstring>
#include <qpa/qplatformnativeinterface.h>
#include <type_traits>
#include <utility>

using namespace std::chrono_literals;

namespace vellumo {

namespace {

namespace protocol = layerShellProtocol;

constexpr auto startTimeout = 2s;
constexpr auto configureTimeout = 100ms;
constexpr auto activeScreenTimeout = 100ms;

QPlatformNativeInterface &native()
{
    return *QGuiApplication::platformNativeInterface();
}

wl_surface *surfaceOf(QWindow &window)
{
    return static_cast<wl_surface *>(native().nativeResourceForWindow("surface", &window));
}

template <typename... Arguments>
void request(wl_proxy *proxy, uint32_t number, Arguments... arguments)
{
    wl_proxy_marshal_flags(proxy, number, nullptr, wl_proxy_get_version(proxy), 0, arguments...);
}

class Surface : public LayerSurface {
public:
    Surface(wl_proxy *shell, EventQueue &queue, QWindow &window, QScreen &screen)
        : queue_(queue)
        , surface_(surfaceOf(window))
    {
        const auto wrapper = queue.wrap(shell);
        role_ = wl_proxy_marshal_flags(
            wrapper.get(), protocol::GetLayerSurface, &protocol::surface(),
            wl_proxy_get_version(shell), 0, nullptr, surface_,
            native().nativeResourceForScreen("output", &screen), protocol::Overlay, "vellumo");
        static std::array<void (*)(), 2> listener{reinterpret_cast<void (*)()>(&onConfigure),
                                                  reinterpret_cast<void (*)()>(&onClosedEvent)};
        wl_proxy_add_listener(role_, listener.data(), this);
        request(role_, protocol::SetAnchor, protocol::Top | protocol::Left);
        request(role_, protocol::SetExclusiveZone, protocol::wholeScreen);
    }

    ~Surface() override
    {
        wl_proxy_marshal_flags(role_, protocol::DestroySurface, nullptr,
                               wl_proxy_get_version(role_), WL_MARSHAL_FLAG_DESTROY);
    }
    Q_DISABLE_COPY_MOVE(Surface)

    /// Blocks until the surface may be drawn. Returns whether it may.
    [[nodiscard]] bool configure(const State &state)
    {
        set(state);
        commit();
        const bool isDone = queue_.waitUntil([this] { return isConfigured_ || isClosed_; },
                                             QDeadlineTimer(configureTimeout));
        wl_proxy_set_queue(role_, nullptr); // Qt processes further events
        queue_.dispatchPending();
        return isDone && !isClosed_;
    }

    void set(const State &state) override
    {
        request(role_, protocol::SetSize, static_cast<uint32_t>(state.size.width()),
                static_cast<uint32_t>(state.size.height()));
        request(role_, protocol::SetMargin, state.position.y(), 0, 0, state.position.x());
        request(role_, protocol::SetKeyboardInteractivity,
                state.takesKeyboard ? protocol::Exclusive : protocol::None);
    }

    void commit() override { wl_surface_commit(surface_); }

private:
    static void onConfigure(void *data, wl_proxy *role, uint32_t serial, uint32_t /*width*/,
                            uint32_t /*height*/)
    {
        request(role, protocol::AckConfigure, serial);
        static_cast<Surface *>(data)->isConfigured_ = true;
    }

    static void onClosedEvent(void *data, wl_proxy * /*role*/)
    {
        auto *self = static_cast<Surface *>(data);
        self->isClosed_ = true;
        if (const auto closed = self->onClosed) {
            closed();
        }
    }

    EventQueue &queue_;
    wl_surface *surface_;
    wl_proxy *role_ = nullptr;
    bool isConfigured_ = false;
    bool isClosed_ = false;
};

} // namespace

std::unique_ptr<LayerShellClient> LayerShellClient::connect()
{
    auto *display = static_cast<wl_display *>(native().nativeResourceForIntegration("wl_display"));
    if (display == nullptr) {
        return nullptr;
    }
    std::unique_ptr<LayerShellClient> client(new LayerShellClient(display));
    return client->shell_ != nullptr ? std::move(client) : nullptr;
}

LayerShellClient::LayerShellClient(wl_display *display) : display_(display), queue_(display)
{
    static constexpr wl_registry_listener registryListener{
        &onGlobal, [](void * /*data*/, wl_registry * /*registry*/, uint32_t /*name*/) {}};
    static constexpr wl_callback_listener doneListener{
        [](void *isDone, wl_callback * /*answer*/, uint32_t /*serial*/) {
            *static_cast<bool *>(isDone) = true;
        }};
    const auto wrapper = queue_.wrap(display_);
    auto *wrapped = reinterpret_cast<wl_display *>(wrapper.get());
    wl_registry *registry = wl_display_get_registry(wrapped);
    wl_registry_add_listener(registry, &registryListener, this);
    bool isDone = false;
    wl_callback *answer = wl_display_sync(wrapped);
    wl_callback_add_listener(answer, &doneListener, &isDone);
    static_cast<void>(queue_.waitUntil([&isDone] { return isDone; }, QDeadlineTimer(startTimeout)));
    wl_callback_destroy(answer);
    wl_registry_destroy(registry);
}

LayerShellClient::~LayerShellClient()
{
    for (const Awaited &each : awaited_) {
        wl_callback_destroy(each.answer);
    }
    // version 1 of the shell has no request for it
    for (wl_proxy *proxy :
         {shell_, reinterpret_cast<wl_proxy *>(compositor_), reinterpret_cast<wl_proxy *>(shm_)}) {
        if (proxy != nullptr) {
            wl_proxy_destroy(proxy);
        }
    }
}

/// A hidden window has a surface before it is shown for the first time; later, with some versions
/// of Qt, only afterwards. The first frame is drawn from the event loop in any case.
std::unique_ptr<LayerSurface> LayerShellClient::show(QWindow &window, QScreen &screen,
                                                     const LayerSurface::State &state)
{
    const bool hadSurface = surfaceOf(window) != nullptr;
    if (!hadSurface) {
        window.show();
    }
    if (surfaceOf(window) == nullptr) {
        return nullptr;
    }
    auto surface = std::make_unique<Surface>(shell_, queue_, window, screen);
    if (!surface->configure(state)) {
        surface.reset();
        window.hide();
        return nullptr;
    }
    if (hadSurface) {
        window.show();
    }
    return surface;
}

QScreen *LayerShellClient::activeScreen()
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    if (screens.size() < 2 || compositor_ == nullptr || shm_ == nullptr) {
        return QGuiApplication::primaryScreen();
    }
    const wl_output *output =
        ActiveOutput(queue_, compositor_, shm_, shell_).ask(QDeadlineTimer(activeScreenTimeout));
    const auto found = std::ranges::find_if(screens, [output](QScreen *screen) {
        return native().nativeResourceForScreen("output", screen) == output;
    });
    return found != screens.end() ? *found : nullptr;
}

void LayerShellClient::whenProcessed(std::function<void()> callback)
{
    static constexpr wl_callback_listener listener{&onProcessed};
    awaited_.push_back({wl_display_sync(display_), std::move(callback), &awaited_});
    wl_callback_add_listener(awaited_.back().answer, &listener, &awaited_.back());
    static_cast<void>(wl_display_flush(display_));
}

void LayerShellClient::onProcessed(void *data, wl_callback *answer, uint32_t /*serial*/)
{
    auto &awaited = *static_cast<Awaited *>(data);
    const auto callback = std::move(awaited.callback);
    awaited.all->remove_if([answer](const Awaited &each) { return each.answer == answer; });
    wl_callback_destroy(answer);
    callback();
}

void LayerShellClient::onGlobal(void *data, wl_registry *registry, uint32_t name,
                                const char *interface, uint32_t /*version*/)
{
    auto &self = *static_cast<LayerShellClient *>(data);
    const auto bind = [&](auto *&object, const wl_interface &wanted) {
        if (object == nullptr && std::strcmp(interface, wanted.name) == 0) {
            object = static_cast<std::remove_reference_t<decltype(object)>>(
                wl_registry_bind(registry, name, &wanted, 1));
        }
    };
    bind(self.compositor_, wl_compositor_interface);
    bind(self.shm_, wl_shm_interface);
    bind(self.shell_, protocol::shell());
}

} // namespace vellumo

extern "C" __attribute__((visibility("default"))) vellumo::LayerShell *vellumo_wayland_layers_1()
{
    return vellumo::LayerShellClient::connect().release();
}
