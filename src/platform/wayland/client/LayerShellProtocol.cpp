// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/client/LayerShellProtocol.h"

#include <array>
#include <wayland-client-protocol.h>

namespace vellumo::layerShellProtocol {

namespace {

constexpr int version = 1;

// The types of arguments that are not objects, or objects that are never sent.
std::array<const wl_interface *, 4> noTypes{};

std::array<wl_message, 8> surfaceRequests{{{"set_size", "uu", noTypes.data()},
                                           {"set_anchor", "u", noTypes.data()},
                                           {"set_exclusive_zone", "i", noTypes.data()},
                                           {"set_margin", "iiii", noTypes.data()},
                                           {"set_keyboard_interactivity", "u", noTypes.data()},
                                           {"get_popup", "o", noTypes.data()},
                                           {"ack_configure", "u", noTypes.data()},
                                           {"destroy", "", noTypes.data()}}};
std::array<wl_message, 2> surfaceEvents{
    {{"configure", "uuu", noTypes.data()}, {"closed", "", noTypes.data()}}};

const wl_interface surfaceInterface{"zwlr_layer_surface_v1", version,
                                    surfaceRequests.size(),  surfaceRequests.data(),
                                    surfaceEvents.size(),    surfaceEvents.data()};

std::array<const wl_interface *, 5> getTypes{&surfaceInterface, &wl_surface_interface,
                                             &wl_output_interface, nullptr, nullptr};
std::array<wl_message, 1> shellRequests{{{"get_layer_surface", "no?ous", getTypes.data()}}};

const wl_interface shellInterface{"zwlr_layer_shell_v1", version, shellRequests.size(),
                                  shellRequests.data(),  0,       nullptr};

} // namespace

const wl_interface &shell()
{
    return shellInterface;
}

const wl_interface &surface()
{
    return surfaceInterface;
}

} // namespace vellumo::layerShellProtocol
