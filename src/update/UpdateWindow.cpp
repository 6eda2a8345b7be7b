// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "update/UpdateWindow.h"

#include "ui/BilingualText.h"
#include "ui/OrdinaryWindow.h"

using namespace Qt::StringLiterals;

namespace vellumo {

UpdateWindow::UpdateWindow(QQmlEngine &engine, BilingualText &texts, QString runningVersion,
                           QObject *parent)
    : QObject(parent)
    , engine_(engine)
    , texts_(texts)
    , runningVersion_(std::move(runningVersion))
{
    connect(&texts_, &BilingualText::languageChanged, this, &UpdateWindow::changed);
}

UpdateWindow::~UpdateWindow()
{
    // delete open and pending windows while this object is still complete for their bindings
    const QObjectList windows = children();
    qDeleteAll(windows);
}

void UpdateWindow::showChecking()
{
    show(State::Checking);
}

void UpdateWindow::showNothingNew()
{
    show(State::NothingNew);
}

void UpdateWindow::showOffer(const UpdateFeed &offer)
{
    offer_ = offer;
    show(State::SomethingNew);
}

void UpdateWindow::showFailure(Failure failure)
{
    failure_ = failure;
    show(State::Failed);
}

void UpdateWindow::show(State state)
{
    state_ = state;
    isPageUnopened_ = false;
    Q_EMIT changed();
    if (window_) {
        Q_EMIT stateShown();
    } else if (create()) {
        if (state == State::Checking) {
            raise(); // the user has asked for it
        } else {
            bringToFront(*window_);
        }
    }
}

bool UpdateWindow::create()
{
    window_ = makeOrdinaryWindow(
        engine_, u"Update/UpdateWindow"_s,
        {{u"texts"_s, QVariant::fromValue(&texts_)}, {u"report"_s, QVariant::fromValue(this)}},
        this);
    if (window_) {
        window_->setTransientParent(OrdinaryWindows::of(engine_).front());
    }
    return window_;
}

bool UpdateWindow::raise()
{
    if (window_) {
        takeKeyboard(*window_);
    }
    return window_;
}

void UpdateWindow::showUnopenedPage()
{
    if (offer_) {
        isPageUnopened_ = true;
        Q_EMIT changed();
    }
}

void UpdateWindow::close()
{
    closeForGood(window_);
}

void UpdateWindow::download()
{
    if (state_ == State::SomethingNew) {
        Q_EMIT downloadRequested();
    }
}

void UpdateWindow::tryAgain()
{
    if (state_ == State::Failed) {
        Q_EMIT retryRequested();
    }
}

void UpdateWindow::userClosed()
{
    if (!window_) {
        return;
    }
    close();
    Q_EMIT closedByUser();
}

} // namespace vellumo
