// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/StatusItem.h"

#include "app/TemplateIcon.h"

using namespace Qt::StringLiterals;

namespace vellumo {

StatusItem::StatusItem(QObject *parent) : QObject(parent)
{
    connect(&hosts_, &TrayHosts::changed, this, &StatusItem::showOrHide);
}

StatusItem::~StatusItem() = default;

void StatusItem::showOrHide(bool hasHost)
{
    icon_.reset();
    if (!hasHost) {
        return;
    }
    icon_ = std::make_unique<QSystemTrayIcon>(templateIcon(dark_));
    icon_->setToolTip(u"vellumo"_s);
    icon_->setContextMenu(&menu_);
    connect(icon_.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger && onActivated) {
                    onActivated();
                }
            });
    icon_->show();
}

void StatusItem::setDark(bool dark)
{
    if (dark == dark_) {
        return;
    }
    dark_ = dark;
    if (icon_) {
        icon_->setIcon(templateIcon(dark_));
    }
}

} // namespace vellumo
