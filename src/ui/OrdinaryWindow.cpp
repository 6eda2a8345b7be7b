// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "ui/OrdinaryWindow.h"

#include "platform/Diagnostics.h"
#include "ui/ProgramIcon.h"
#include <QQmlComponent>
#include <QQmlEngine>
#include <QScreen>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {
/// Space reserved for the window's frame on a small screen, in each direction.
constexpr QSize frameAllowance(16, 48);
} // namespace

OrdinaryWindows &OrdinaryWindows::of(QQmlEngine &engine)
{
    auto *found = engine.findChild<OrdinaryWindows *>(QString(), Qt::FindDirectChildrenOnly);
    return found != nullptr ? *found : *new OrdinaryWindows(&engine);
}

QWindow *OrdinaryWindows::front() const
{
    return front_ && front_->isVisible() ? front_.get() : nullptr;
}

void OrdinaryWindows::setFront(QWindow &window)
{
    QQmlEngine *const engine = qmlEngine(&window);
    if (engine == nullptr || window.type() == Qt::Dialog) {
        return;
    }
    OrdinaryWindows &windows = of(*engine);
    windows.front_ = &window;
    Q_EMIT windows.broughtToFront(window);
}

QQuickWindow *makeOrdinaryWindow(QQmlEngine &engine, const QString &file,
                                 const QVariantMap &properties, QObject *owner)
{
    QQmlComponent component(&engine, QUrl(u"qrc:/qt/qml/Vellumo/%1.qml"_s.arg(file)));
    QObject *object =
        component.isReady() ? component.createWithInitialProperties(properties) : nullptr;
    auto *window = qobject_cast<QQuickWindow *>(object);
    if (!window) {
        delete object;
        printDiagnostic(component.errorString());
        return nullptr;
    }
    QQmlEngine::setObjectOwnership(window, QQmlEngine::CppOwnership);
    object->setParent(owner);
    window->setIcon(programIcon());
    Q_EMIT OrdinaryWindows::of(engine).made(*window);
    return window;
}

void centreOnScreen(QWindow &window, int roomAbove)
{
    const QScreen *screen = window.screen();
    if (!screen) {
        return;
    }
    const QRect available = screen->availableGeometry();
    const QSize size = window.size().boundedTo(available.size() - frameAllowance);
    window.setMinimumSize(window.minimumSize().boundedTo(size));
    QRect frame(QPoint(), size);
    frame.moveCenter(available.center());
    const int lowest = available.bottom() + 1 - frameAllowance.width() / 2 - size.height();
    frame.moveTop(std::max(frame.top(), std::min(available.top() + roomAbove, lowest)));
    window.setGeometry(frame);
}

void bringToFront(QWindow &window)
{
    window.setVisible(true); // show() would undo a maximized state
    window.raise();
    window.requestActivate();
    OrdinaryWindows::setFront(window);
}

void takeKeyboard(QWindow &window)
{
    window.setVisible(true); // show() would undo a maximized state
    window.raise();
    QQmlEngine *const engine = qmlEngine(&window);
    if (engine != nullptr && OrdinaryWindows::of(*engine).onActivate) {
        OrdinaryWindows::of(*engine).onActivate(window);
    } else {
        window.requestActivate();
    }
    OrdinaryWindows::setFront(window);
}

void closeForGood(QPointer<QQuickWindow> &window)
{
    if (QQuickWindow *closed = window) {
        window.clear();
        closed->hide();
        closed->deleteLater();
    }
}

} // namespace vellumo
