// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QSize>
#include <QString>
#include <functional>
#include <memory>

class QScreen;
class QWindow;

namespace vellumo {

/// Properties of a window that is a layer surface.
namespace layerProperty {
/// QPoint: where it is on the desktop, in Qt's coordinates. Qt itself does not know.
inline constexpr auto position = "layerPosition";
/// bool: it gives up the keyboard by itself, not because the user has turned to another window.
inline constexpr auto yieldsKeyboard = "layerYieldsKeyboard";
} // namespace layerProperty

/// A window as a layer surface, above full-screen windows. Destroying it takes the window off the
/// screen; the window must then be hidden before it can become a layer surface again.
class LayerSurface {
public:
    struct State {
        QPoint position; ///< of the top left corner, relative to that of the screen
        QSize size;
        bool takesKeyboard = false; ///< from every other window, for as long as it is set
        friend bool operator==(const State &, const State &) = default;
    };

    LayerSurface() = default;
    virtual ~LayerSurface() = default;
    Q_DISABLE_COPY_MOVE(LayerSurface)

    /// Changes the state together with the window's next frame.
    virtual void set(const State &state) = 0;

    /// Applies the last state without a new frame.
    virtual void commit() = 0;

    /// Called, from the event loop, when the compositor has closed the surface, for example because
    /// its screen was removed. May destroy this object.
    std::function<void()> onClosed;
};

/// The compositor's layer shell, on Qt's own connection. Main thread only. Lengths are in
/// device-independent units.
class LayerShell {
public:
    LayerShell() = default;
    virtual ~LayerShell() = default;
    Q_DISABLE_COPY_MOVE(LayerShell)

    /// Asks the compositor that the environment names whether it has a layer shell. Needs no
    /// application object. Blocks for at most 2 s, usually less than 10 ms.
    [[nodiscard]] static bool isOffered(const QString &clientModule);

    /// Returns null where Qt does not run on Wayland, and when the program was built without it.
    [[nodiscard]] static std::unique_ptr<LayerShell> make(const QString &clientModule);

    /// Shows a hidden window, which must have Qt::BypassWindowManagerHint, on this screen. Blocks
    /// until the compositor has answered, for at most 100 ms, usually less than 1 ms. Without an
    /// answer the window stays hidden and the result is null.
    [[nodiscard]] virtual std::unique_ptr<LayerSurface> show(QWindow &window, QScreen &screen,
                                                             const LayerSurface::State &state) = 0;

    /// Returns the screen where the user works in the compositor's view. Blocks for at most 100 ms,
    /// and not at all with one screen; null when the compositor does not answer in time.
    [[nodiscard]] virtual QScreen *activeScreen() = 0;

    /// Calls back once, from the event loop, when the compositor has processed all earlier
    /// requests.
    virtual void whenProcessed(std::function<void()> callback) = 0;
};

} // namespace vellumo
