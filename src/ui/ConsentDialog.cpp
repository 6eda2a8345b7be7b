// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "ui/ConsentDialog.h"

#include "ui/BilingualText.h"
#include "ui/OrdinaryWindow.h"

using namespace Qt::StringLiterals;

namespace vellumo {

ConsentDialog::ConsentDialog(QQmlEngine &engine, BilingualText &texts, QObject *parent)
    : QObject(parent)
    , engine_(engine)
    , texts_(texts)
{
}

ConsentDialog::~ConsentDialog() = default;

void ConsentDialog::ask(std::function<void(bool)> answered)
{
    answered_ = std::move(answered);
    if (!isHeld_) {
        show();
    }
}

void ConsentDialog::hold()
{
    isHeld_ = true;
    if (window_) {
        window_->hide();
    }
}

void ConsentDialog::release(bool isStillWanted)
{
    isHeld_ = false;
    if (!isStillWanted) {
        closeWindow();
        answered_ = nullptr;
    } else if (answered_) {
        show();
    }
}

void ConsentDialog::show()
{
    if (!window_) {
        window_ = makeOrdinaryWindow(engine_, u"Ui/ConsentDialog"_s,
                                     {{u"texts"_s, QVariant::fromValue(&texts_)}}, this);
        if (!window_) {
            onAnswered(false);
            return;
        }
        connect(window_, SIGNAL(answered(bool)), this, SLOT(onAnswered(bool)));
        const OrdinaryWindows &windows = OrdinaryWindows::of(engine_);
        connect(&windows, &OrdinaryWindows::broughtToFront, window_,
                [this](QWindow &window) { stayAbove(window); });
        window_->setTransientParent(windows.front());
    }
    takeKeyboard(*window_);
}

void ConsentDialog::stayAbove(QWindow &window)
{
    const bool isShown = window_->isVisible();
    if (window_->transientParent() != &window) {
        window_->hide(); // a window manager takes note of the parent when the window is mapped
        window_->setTransientParent(&window);
    }
    if (isShown) {
        takeKeyboard(*window_);
    }
}

void ConsentDialog::closeWindow()
{
    if (window_) {
        window_->disconnect(this);
        closeForGood(window_);
    }
}

void ConsentDialog::onAnswered(bool allowed)
{
    closeWindow();
    if (const auto answered = std::exchange(answered_, nullptr)) {
        answered(allowed);
    }
}

} // namespace vellumo
