// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/StatusItem.h"

#include "app/TemplateIcon.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {
constexpr auto hostTimeout = 3s;
}

StatusItem::StatusItem(QObject *parent) : QObject(parent)
{
    connect(&hosts_, &TrayHosts::changed, this, &StatusItem::showOrHide);
    connect(&trays_, &EmbeddingTrays::appeared, this, &StatusItem::embed);
    connect(&waiting_, &QTimer::timeout, this, &StatusItem::embed);
    waiting_.setSingleShot(true);
    waiting_.start(hostTimeout);
}

StatusItem::~StatusItem() = default;

void StatusItem::showOrHide(bool hasHost)
{
    if (isEmbedded_) {
        return; // the toolkit decides once in a process of which kind icons are
    }
    icon_.reset();
    if (hasHost) {
        hadHost_ = true;
        show();
    }
}

void StatusItem::embed()
{
    if (!hadHost_ && !isEmbedded_ && !waiting_.isActive() && trays_.isPresent()) {
        isEmbedded_ = true;
        show();
    }
}

void StatusItem::show()
{
    icon_ = std::make_unique<QSystemTrayIcon>(templateIcon(dark_));
    icon_->setToolTip(u"vellumo"_s);
    icon_->setContextMenu(&menu_);
    connect(icon_.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger) {
                    Q_EMIT activated();
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
