// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/PanelWindow.h"

#include "platform/Diagnostics.h"
#include "platform/windowing/x11/X11Hints.h"
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

using namespace Qt::StringLiterals;

namespace vellumo {

std::unique_ptr<QQuickWindow> makePanelWindow(const FloatingPanelStyle &style, bool isLayer)
{
    auto window = std::make_unique<QQuickWindow>();
    QSurfaceFormat format = window->format();
    format.setAlphaBufferSize(8);
    window->setFormat(format);
    window->setColor(Qt::transparent);
    window->setTitle(QString::fromLatin1(style.title));
    Qt::WindowFlags flags = Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;
    if (!style.canBecomeKey) {
        flags |= Qt::WindowDoesNotAcceptFocus;
    }
    if (isLayer) {
        flags |= Qt::BypassWindowManagerHint;
        flags.setFlag(Qt::WindowTransparentForInput, style.ignoresMouseEvents);
    } else if (style.ignoresMouseEvents) {
        // Decoration only, which the window manager need not manage.
        flags |= Qt::X11BypassWindowManagerHint;
    }
    window->setFlags(flags);
    window->setProperty("_q_showWithoutActivating", true);
    window->create();
    if (style.isMovable) {
        x11::keepContentAtBottomRight(window->winId());
    }
    return window;
}

QQuickItem *makePanelContent(QQmlEngine &engine, const FloatingPanelContent &content,
                             QQuickWindow &window)
{
    QQmlComponent component(&engine, content.source);
    QObject *object =
        component.isReady() ? component.createWithInitialProperties(content.properties) : nullptr;
    auto *item = qobject_cast<QQuickItem *>(object);
    if (!item) {
        delete object;
        printDiagnostic(component.errorString());
        return nullptr;
    }
    QQmlEngine::setObjectOwnership(item, QQmlEngine::CppOwnership);
    item->setParent(window.contentItem());
    item->setParentItem(window.contentItem());
    return item;
}

void FullScreenLift::apply(QQuickWindow &panel, WindowLevel level, WId active)
{
    // a transient window is minimized and closed with its parent, which is right for a temporary
    // panel only
    const bool isNeeded = level == WindowLevel::Status && active != 0 && active != panel.winId()
        && x11::isFullScreen(active);
    if (isNeeded) {
        x11::setTransientFor(panel.winId(), active);
    } else if (isLifted_ && active != panel.winId()) {
        x11::setTransientFor(panel.winId(), 0);
    }
    isLifted_ = isNeeded || (isLifted_ && active == panel.winId());
}

void FullScreenLift::undo(QQuickWindow &panel)
{
    if (isLifted_) {
        x11::setTransientFor(panel.winId(), 0);
        isLifted_ = false;
    }
}

} // namespace vellumo
