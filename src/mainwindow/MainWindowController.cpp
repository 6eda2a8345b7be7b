// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "mainwindow/MainWindowController.h"

#include "platform/Diagnostics.h"
#include "ui/BilingualText.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {
/// What the frame around a window may take of a small screen, in each direction.
constexpr QSize frameAllowance(16, 48);
} // namespace

MainWindowController::MainWindowController(QQmlEngine &engine,
                                           const MainWindowModel::Collaborators &collaborators,
                                           QObject *parent)
    : QObject(parent)
    , engine_(engine)
    , with_(collaborators)
{
}

MainWindowController::~MainWindowController() = default;

void MainWindowController::show()
{
    hiddenForPanelActivation = false;
    if (!window_ && !create()) {
        return;
    }
    if (!window_->isVisible()) {
        model_->setShown(true);
        if (lastPosition_) {
            window_->setPosition(*lastPosition_);
        }
    }
    window_->setVisible(true);
    window_->setWindowStates(window_->windowStates() & ~Qt::WindowMinimized);
    window_->raise();
    if (onActivate) {
        onActivate(*window_);
    } else {
        window_->requestActivate();
    }
}

bool MainWindowController::create()
{
    model_ = std::make_unique<MainWindowModel>(with_);
    model_->note()->onAskFurther = [this](const QUuid &id) {
        if (onAskFurther) {
            onAskFurther(id);
        }
    };
    model_->note()->onOpenPage = [this](const QUrl &page) {
        return onOpenPage && onOpenPage(page);
    };
    model_->note()->onCopy = [this](const QString &text) {
        if (onCopy) {
            onCopy(text);
        }
    };
    QQmlComponent component(&engine_, QUrl(u"qrc:/qt/qml/Vellumo/MainWindow/MainWindow.qml"_s));
    QObject *object = component.isReady()
        ? component.createWithInitialProperties({{u"texts"_s, QVariant::fromValue(&with_.texts)},
                                                 {u"main"_s, QVariant::fromValue(model_.get())}})
        : nullptr;
    window_.reset(qobject_cast<QQuickWindow *>(object));
    if (!window_) {
        delete object;
        printDiagnostic(component.errorString());
        return false;
    }
    QQmlEngine::setObjectOwnership(window_.get(), QQmlEngine::CppOwnership);
    window_->installEventFilter(this);
    place();
    if (onWindowMade) {
        onWindowMade(*window_);
    }
    return true;
}

void MainWindowController::place()
{
    const QScreen *screen = window_->screen();
    if (!screen) {
        return;
    }
    const QRect available = screen->availableGeometry();
    const QSize size = window_->size().boundedTo(available.size() - frameAllowance);
    window_->setMinimumSize(window_->minimumSize().boundedTo(size));
    QRect frame(QPoint(), size);
    frame.moveCenter(available.center());
    window_->setGeometry(frame);
}

void MainWindowController::hideForPanelActivation()
{
    if (window_ && window_->isVisible()) {
        hiddenForPanelActivation = true;
        lastPosition_ = window_->position();
        window_->setVisible(false);
    }
}

void MainWindowController::orderBack()
{
    hiddenForPanelActivation = false;
    if (window_) {
        if (lastPosition_) {
            window_->setPosition(*lastPosition_);
        }
        model_->setShown(true);
        window_->setProperty("_q_showWithoutActivating", true);
        window_->setVisible(true);
        window_->lower();
        window_->setProperty("_q_showWithoutActivating", false);
    }
}

bool MainWindowController::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::FocusIn:
        model_->setShown(true); // the day may have changed
        break;
    case QEvent::Close:
        lastPosition_ = window_->position();
        break;
    case QEvent::Hide:
        model_->setShown(false);
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace vellumo
