// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/QtFloatingWindows.h"

#include "platform/windowing/QtFloatingPanel.h"
#include <QQuickWindow>
#include <QSGRendererInterface>

namespace vellumo {

void QtFloatingWindows::chooseRenderer()
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
}

QtFloatingWindows::QtFloatingWindows(QQmlEngine &engine, std::function<bool()> isMotionReduced,
                                     LayerShell *layerShell)
    : engine_(engine)
    , isMotionReduced_(std::move(isMotionReduced))
    , layerShell_(layerShell)
{
}

QtFloatingWindows::~QtFloatingWindows() = default;

std::unique_ptr<FloatingPanel> QtFloatingWindows::createPanel(const FloatingPanelStyle &style,
                                                              const FloatingPanelContent &content)
{
    auto panel = std::make_unique<QtFloatingPanel>(*this, engine_, style, content);
    panels_ << panel.get();
    return panel;
}

QList<Rect> QtFloatingWindows::visibleFrames() const
{
    QList<Rect> frames;
    for (const QtFloatingPanel *panel : panels_) {
        if (panel->isVisible()) {
            frames.append(panel->frame());
        }
    }
    return frames;
}

void QtFloatingWindows::restackAbove(const QtFloatingPanel &panel)
{
    for (QtFloatingPanel *other : std::as_const(panels_)) {
        if (other->isVisible() && other->level() > panel.level()) {
            other->raise();
        }
    }
}

} // namespace vellumo
