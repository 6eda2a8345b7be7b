// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "mainwindow/MainWindowController.h"

#include "library/OpenedNote.h"
#include "mainwindow/WindowPlace.h"
#include "ui/BilingualText.h"
#include "ui/OrdinaryWindow.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

MainWindowController::MainWindowController(QQmlEngine &engine,
                                           MainWindowModel::Collaborators collaborators,
                                           PageHosting &host, QObject *parent)
    : QObject(parent)
    , engine_(engine)
    , with_(std::move(collaborators))
    , host_(host)
{
}

MainWindowController::~MainWindowController()
{
    if (window_ && window_->isVisible()) {
        storePlace(*window_, with_.defaults);
    }
}

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
    window_->setWindowStates(window_->windowStates() & ~Qt::WindowMinimized);
    takeKeyboard(*window_);
    if (onShown) {
        onShown();
    }
}

void MainWindowController::showService()
{
    show();
    if (model_) {
        model_->goToService();
    }
}

void MainWindowController::showNote(const QUuid &id)
{
    show();
    if (model_) {
        model_->goToNote(id);
    }
}

bool MainWindowController::create()
{
    model_ = std::make_unique<MainWindowModel>(with_, host_);
    window_.reset(makeOrdinaryWindow(engine_, u"MainWindow/MainWindow"_s,
                                     {{u"texts"_s, QVariant::fromValue(&with_.texts)},
                                      {u"main"_s, QVariant::fromValue(model_.get())}}));
    if (!window_) {
        return false;
    }
    window_->installEventFilter(this);
    restorePlace(*window_, with_.defaults);
    return true;
}

std::optional<ReadingContext> MainWindowController::openNoteContext() const
{
    return window_ && window_->isActive() ? model_->note()->context() : std::nullopt;
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
        storePlace(*window_, with_.defaults);
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
