// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/ReportedWindow.h"

#include <QCoreApplication>

namespace vellumo {

bool ReportedWindow::set(const QString &window, const FrontWindow &report)
{
    const bool isOwn = report.processIdentifier == QCoreApplication::applicationPid();
    if (isOwn || window == window_) {
        if (!state_) {
            return false;
        }
        state_->isBehindOwn = isOwn;
        if (state_->isActive || window_.isEmpty()) {
            return false;
        }
        state_->isActive = true;
        state_->since = since_;
        return true;
    }
    since_ = std::chrono::steady_clock::now();
    window_ = window;
    state_ = report;
    state_->since = since_;
    state_->isActive = true;
    state_->isOfCompositor = true;
    return true;
}

bool ReportedWindow::setNone()
{
    if (!state_) {
        state_.emplace().isOfCompositor = true;
    }
    state_->isBehindOwn = false;
    if (!state_->isActive) {
        return false;
    }
    state_->isActive = false;
    state_->since = std::chrono::steady_clock::now();
    return true;
}

} // namespace vellumo
