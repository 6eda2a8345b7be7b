// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/client/ActiveOutput.h"

#include "platform/wayland/client/LayerShellProtocol.h"
#include <array>
#include <sys/mman.h>
#include <unistd.h>

namespace vellumo {

namespace {

namespace protocol = layerShellProtocol;

constexpr int32_t pixelBytes = 4;

/// Returns a transparent pixel; null when there is no memory.
wl_buffer *makePixel(wl_shm *shm)
{
    const int file = ::memfd_create("vellumo-pixel", MFD_CLOEXEC);
    if (file < 0 || ::ftruncate(file, pixelBytes) != 0) {
        ::close(file);
        return nullptr;
    }
    wl_shm_pool *pool = wl_shm_create_pool(shm, file, pixelBytes);
    wl_buffer *pixel = wl_shm_pool_create_buffer(pool, 0, 1, 1, pixelBytes, WL_SHM_FORMAT_ARGB8888);
    wl_shm_pool_destroy(pool);
    ::close(file);
    return pixel;
}

template <typename... Arguments>
void request(wl_proxy *proxy, uint32_t number, Arguments... arguments)
{
    wl_proxy_marshal_flags(proxy, number, nullptr, wl_proxy_get_version(proxy), 0, arguments...);
}

} // namespace

ActiveOutput::ActiveOutput(EventQueue &queue, wl_compositor *compositor, wl_shm *shm,
                           wl_proxy *layerShell)
    : queue_(queue)
    , shm_(shm)
{
    static constexpr wl_surface_listener surfaceListener{
        &onEnter,
        &onLeave,
#ifdef WL_SURFACE_PREFERRED_BUFFER_SCALE_SINCE_VERSION
        &onPreferredScale,
        &onPreferredTransform,
#endif
    };
    static std::array<void (*)(), 2> roleListener{reinterpret_cast<void (*)()>(&onConfigure),
                                                  reinterpret_cast<void (*)()>(&onClosed)};
    const auto compositorWrapper = queue.wrap(compositor);
    surface_ =
        wl_compositor_create_surface(reinterpret_cast<wl_compositor *>(compositorWrapper.get()));
    wl_surface_add_listener(surface_, &surfaceListener, this);
    wl_region *nothing = wl_compositor_create_region(compositor);
    wl_surface_set_input_region(surface_, nothing);
    wl_region_destroy(nothing);
    const auto shellWrapper = queue.wrap(layerShell);
    role_ = wl_proxy_marshal_flags(shellWrapper.get(), protocol::GetLayerSurface,
                                   &protocol::surface(), wl_proxy_get_version(layerShell), 0,
                                   nullptr, surface_, nullptr, protocol::Overlay, "vellumo");
    wl_proxy_add_listener(role_, roleListener.data(), this);
    request(role_, protocol::SetAnchor, protocol::Top | protocol::Left);
    request(role_, protocol::SetExclusiveZone, protocol::wholeScreen);
    request(role_, protocol::SetSize, 1U, 1U);
    wl_surface_commit(surface_);
}

ActiveOutput::~ActiveOutput()
{
    wl_proxy_marshal_flags(role_, protocol::DestroySurface, nullptr, wl_proxy_get_version(role_),
                           WL_MARSHAL_FLAG_DESTROY);
    wl_surface_destroy(surface_);
}

wl_output *ActiveOutput::ask(QDeadlineTimer deadline)
{
    if (!queue_.waitUntil([this] { return isConfigured_; }, deadline)) {
        return nullptr;
    }
    wl_buffer *pixel = makePixel(shm_);
    if (pixel == nullptr) {
        return nullptr;
    }
    wl_surface_attach(surface_, pixel, 0, 0);
    wl_surface_commit(surface_);
    static_cast<void>(queue_.waitUntil([this] { return output_ != nullptr; }, deadline));
    wl_buffer_destroy(pixel);
    return output_;
}

void ActiveOutput::onConfigure(void *data, wl_proxy *role, uint32_t serial, uint32_t /*width*/,
                               uint32_t /*height*/)
{
    request(role, protocol::AckConfigure, serial);
    static_cast<ActiveOutput *>(data)->isConfigured_ = true;
}

void ActiveOutput::onClosed(void * /*data*/, wl_proxy * /*role*/) { }

void ActiveOutput::onEnter(void *data, wl_surface * /*surface*/, wl_output *output)
{
    static_cast<ActiveOutput *>(data)->output_ = output;
}

#ifdef WL_SURFACE_PREFERRED_BUFFER_SCALE_SINCE_VERSION
void ActiveOutput::onPreferredScale(void * /*data*/, wl_surface * /*surface*/, int32_t /*factor*/)
{
}

void ActiveOutput::onPreferredTransform(void * /*data*/, wl_surface * /*surface*/,
                                        uint32_t /*transform*/)
{
}
#endif

void ActiveOutput::onLeave(void * /*data*/, wl_surface * /*surface*/, wl_output * /*output*/) { }

} // namespace vellumo
