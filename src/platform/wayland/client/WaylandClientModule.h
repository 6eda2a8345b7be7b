// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ClipboardText.h"
#include "platform/wayland/client/CopyKeys.h"
#include "platform/wayland/client/ManagedClipboard.h"
#include <optional>

/// Interface of the module that is a Wayland client. It is a shared object, so that X11 sessions do
/// not load the client library.
namespace vellumo {

class LayerShell;
class PrimarySelection;

namespace waylandClientModule {

/// Publication::processIdentifier of a text whose application the compositor does not name.
inline constexpr qint64 unknownProcess = -1;

/// A text that its owner is writing into a pipe.
struct RequestedText {
    int descriptor = -1; ///< the end to read, which does not block; the receiver closes it
    bool isLatin1 = false; ///< otherwise UTF-8
};

/// A client of the session's compositor. Main thread only.
class Client {
public:
    Client() = default;
    virtual ~Client() = default;
    Q_DISABLE_COPY_MOVE(Client)

    /// PRIMARY of all windows. Nothing is published before the compositor has answered, after the
    /// connection is lost, and if the compositor has no data control.
    [[nodiscard]] virtual PrimarySelection &primarySelection() = 0;
    [[nodiscard]] virtual ManagedClipboard &clipboard() = 0;
    [[nodiscard]] virtual CopyKeys &copyKeys() = 0;

    /// Requests a selection's text, which may be secret, without waiting for it. Absent when there
    /// is no text.
    [[nodiscard]] virtual std::optional<RequestedText>
    requestText(ClipboardText::Source source) = 0;
};

/// Connects to the compositor that the environment names, without waiting for its answers. The
/// caller owns the result; null when there is no compositor.
using MakeClient = Client *(*)();

/// Name of the exported symbol. It includes the version of the interface and must change with it.
inline constexpr const char *makeClient = "vellumo_wayland_client_1";
/// Returns whether the compositor has a layer shell. Blocks for at most 2 s.
using OffersLayerShell = bool (*)();

/// The caller owns the result; null when Qt's compositor has no layer shell.
using MakeLayerShell = LayerShell *(*)();

// Names of the exported symbols. They include the version of the interface and must change with it.
inline constexpr const char *offersLayerShell = "vellumo_wayland_offers_layers_1";
inline constexpr const char *makeLayerShell = "vellumo_wayland_layers_1";

} // namespace waylandClientModule

} // namespace vellumo
