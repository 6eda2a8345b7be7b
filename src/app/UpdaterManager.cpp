// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/UpdaterManager.h"

using namespace Qt::StringLiterals;

namespace vellumo {

UpdaterManager::~UpdaterManager()
{
    delete alert_;
}

void UpdaterManager::checkForUpdates()
{
    if (controller) {
        controller->checkForUpdates();
        return;
    }
    if (!alert_) {
        alert_ = new QMessageBox(QMessageBox::NoIcon, u"vellumo"_s, u"Updates unavailable"_s,
                                 QMessageBox::Ok);
        alert_->setInformativeText(u"Automatic updates are disabled in development builds."_s);
        alert_->setAttribute(Qt::WA_DeleteOnClose);
        alert_->setWindowModality(Qt::ApplicationModal);
        alert_->show();
    }
    alert_->raise();
    alert_->activateWindow();
}

} // namespace vellumo
