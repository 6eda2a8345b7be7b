// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Screens.h"
#include "platform/windowing/x11/StrutWatch.h"
#include <QTimer>

class QScreen;

namespace vellumo {

class LayerShell;
class OwnPointer;

/// The screens of Qt; the main screen is the primary one.
class QtScreens final : public Screens {
    Q_OBJECT

public:
    explicit QtScreens(QObject *parent = nullptr);

    [[nodiscard]] QList<Screen> screens() const override;
    [[nodiscard]] std::optional<Screen> mainScreen() const override;
    /// Queries the display server, since motion outside of our windows is not delivered. With
    /// followPointer() the result is outside of every screen where the position is unknown.
    [[nodiscard]] Point pointerLocation() const override;

    [[nodiscard]] Point activeLocation() const override;

    /// Takes the position of the pointer from `pointer`, and asks the shell where that is unknown.
    /// Both must outlive this object.
    void followPointer(const OwnPointer &pointer, LayerShell &shell)
    {
        pointer_ = &pointer;
        shell_ = &shell;
    }

private:
    void watch(const QScreen &screen);

    StrutWatch struts_;
    const OwnPointer *pointer_ = nullptr;
    LayerShell *shell_ = nullptr;
    QTimer settling_; ///< combines the changes of one new layout
};

} // namespace vellumo
