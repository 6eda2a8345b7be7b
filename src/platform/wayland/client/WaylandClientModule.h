// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Pasteboard.h"

/// Interface of the module that is a Wayland client. It is a shared object, so that X11 sessions do
/// not load the client library.
namespace vellumo {
class LayerShell;
}

namespace vellumo::waylandClientModule {

/// Publication::processIdentifier of a text whose application the compositor does not name.
inline constexpr qint64 unknownProcess = -1;

/// Connects to the session's compositor, without waiting for its answers, and follows PRIMARY. The
/// caller owns the result; null when there is no compositor.
using MakePrimarySelection = PrimarySelection *(*)();

/// Returns whether the compositor has a layer shell. Blocks for at most 2 s.
using OffersLayerShell = bool (*)();

/// The caller owns the result; null when Qt's compositor has no layer shell.
using MakeLayerShell = LayerShell *(*)();

// Names of the exported symbols. They include the version of the interface and must change with it.
inline constexpr const char *makePrimarySelection = "vellumo_wayland_primary_1";
inline constexpr const char *offersLayerShell = "vellumo_wayland_offers_layers_1";
inline constexpr const char *makeLayerShell = "vellumo_wayland_layers_1";

} // namespace vellumo::waylandClientModule
