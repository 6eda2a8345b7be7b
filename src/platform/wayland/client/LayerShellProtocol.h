// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <wayland-client-core.h>

/// Version 1 of zwlr_layer_shell_v1 (wlr-layer-shell-unstable-v1.xml of wlr-protocols).
namespace vellumo::layerShellProtocol {

[[nodiscard]] const wl_interface &shell();
[[nodiscard]] const wl_interface &surface();

// Numbers of the requests that are used, and values of their arguments.

enum ShellRequest { GetLayerSurface = 0 };
enum SurfaceRequest {
    SetSize = 0,
    SetAnchor = 1,
    SetExclusiveZone = 2,
    SetMargin = 3,
    SetKeyboardInteractivity = 4,
    AckConfigure = 6,
    DestroySurface = 7,
};
enum Layer : uint32_t { Overlay = 3 };
enum Anchor : uint32_t { Top = 1, Left = 4 };
enum KeyboardInteractivity : uint32_t { None = 0, Exclusive = 1 };

/// An exclusive zone that ignores those of others.
inline constexpr int32_t wholeScreen = -1;

} // namespace vellumo::layerShellProtocol
