// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/FloatingWindows.h"
#include "platform/windowing/x11/CompositorWatch.h"
#include <QList>

class QQmlEngine;

namespace vellumo {

class LayerShell;
class QtFloatingPanel;

/// Floating panels as Qt Quick windows. Where Qt runs on X11, hints to the window manager and the
/// compositor are added; where there is a layer shell, panels are layer surfaces; elsewhere a panel
/// is a plain frameless window that stays on top.
class QtFloatingWindows final : public FloatingWindows {
public:
    /// Selects the software renderer for all Qt Quick windows. To be called before the first one is
    /// created.
    static void chooseRenderer();

    /// `isMotionReduced` is called at the start of each animation. The engine must outlive this
    /// object, and this object every panel. `layerShell` is null where there is none.
    QtFloatingWindows(QQmlEngine &engine, std::function<bool()> isMotionReduced,
                      LayerShell *layerShell = nullptr);
    ~QtFloatingWindows() override;

    [[nodiscard]] std::unique_ptr<FloatingPanel>
    createPanel(const FloatingPanelStyle &style, const FloatingPanelContent &content) override;
    [[nodiscard]] QList<Rect> visibleFrames() const override;

    // called by the panels

    [[nodiscard]] const CompositorWatch &compositor() const { return compositor_; }
    [[nodiscard]] LayerShell *layerShell() const { return layerShell_; }
    void refreshCompositor() { compositor_.refresh(); }
    [[nodiscard]] bool isMotionReduced() const { return isMotionReduced_ && isMotionReduced_(); }

    /// Restacks visible panels of a higher level above `panel`, which has just been raised.
    void restackAbove(const QtFloatingPanel &panel);
    void forget(QtFloatingPanel *panel) { panels_.removeOne(panel); }

private:
    QQmlEngine &engine_;
    std::function<bool()> isMotionReduced_;
    LayerShell *layerShell_;
    CompositorWatch compositor_;
    QList<QtFloatingPanel *> panels_;
};

} // namespace vellumo
