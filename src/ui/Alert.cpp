// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "ui/Alert.h"

#include "ui/OrdinaryWindow.h"

#include <QEventLoop>

using namespace Qt::StringLiterals;

namespace vellumo {

Alert::Alert(QQmlEngine &engine, QObject *parent) : QObject(parent), engine_(engine) { }

Alert::~Alert() = default;

void Alert::show(const Text &text, QWindow *over)
{
    if (!window_) {
        if (!create(text)) {
            return;
        }
        if (over != nullptr) {
            window_->setTransientParent(over);
            window_->setModality(Qt::WindowModal);
        }
    }
    bringToFront(*window_);
}

void Alert::showAboveAll(const Text &text)
{
    if (!window_) {
        if (!create(text)) {
            return;
        }
        window_->setFlag(Qt::WindowStaysOnTopHint);
    }
    takeKeyboard(*window_);
}

bool Alert::ask(const Text &text)
{
    bool isAgreed = false;
    QEventLoop loop;
    connect(this, &Alert::answered, &loop, [&](bool answer) {
        isAgreed = answer;
        loop.quit();
    });
    show(text);
    if (window_) {
        loop.exec();
    }
    return isAgreed;
}

bool Alert::create(const Text &text)
{
    window_ = makeOrdinaryWindow(engine_, u"Ui/Alert"_s,
                                 {{u"message"_s, text.message},
                                  {u"informativeText"_s, text.informativeText},
                                  {u"button"_s, text.button},
                                  {u"refusal"_s, text.refusal},
                                  {u"returnAgrees"_s, text.returnAgrees}},
                                 this);
    if (!window_) {
        return false;
    }
    connect(window_, SIGNAL(dismissed()), this, SLOT(onDismissed()));
    connect(window_, SIGNAL(agreed()), this, SLOT(onAgreed()));
    return true;
}

void Alert::onDismissed()
{
    answer(false);
}

void Alert::onAgreed()
{
    answer(true);
}

void Alert::answer(bool isAgreed)
{
    if (!window_) {
        return;
    }
    close();
    Q_EMIT answered(isAgreed);
}

void Alert::close()
{
    if (window_) {
        window_->disconnect(this);
        closeForGood(window_);
    }
}

} // namespace vellumo
