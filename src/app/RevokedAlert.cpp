// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/RevokedAlert.h"

#include "platform/windowing/x11/X11Hints.h"
#include "ui/BilingualText.h"
#include "ui/ProgramIcon.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

namespace vellumo {

RevokedAlert::~RevokedAlert()
{
    if (box_) {
        box_->disconnect();
        delete box_;
    }
}

void RevokedAlert::show()
{
    if (!box_) {
        box_ = new QMessageBox(QMessageBox::Warning, u"vellumo"_s,
                               texts_.pick(u"vellumo lost Accessibility permission"_s,
                                           u"vellumo 的辅助功能权限被关闭了"_s));
        box_->setWindowIcon(programIcon());
        box_->setTextFormat(Qt::PlainText);
        box_->setInformativeText(texts_.pick(
            u"Reading your selection and the Option-Option gesture need Accessibility. "
            "Re-enable vellumo in System Settings → Privacy & Security → "
            "Accessibility, and it will resume automatically."_s,
            u"读取选中文字和 Option-Option 手势需要辅助功能权限。请在 系统设置 → "
            "隐私与安全性 → 辅助功能 里重新勾选 vellumo,开启后会自动恢复,无需重启。"_s));
        QPushButton *settings = box_->addButton(
            texts_.pick(u"Open System Settings"_s, u"打开系统设置"_s), QMessageBox::AcceptRole);
        box_->setDefaultButton(settings); // also where the desktop puts it last
        box_->setEscapeButton(
            box_->addButton(texts_.pick(u"Later"_s, u"稍后"_s), QMessageBox::RejectRole));
        box_->setAttribute(Qt::WA_DeleteOnClose);
        box_->setWindowModality(Qt::ApplicationModal);
        box_->setWindowFlag(Qt::WindowStaysOnTopHint);
        connect(box_, &QMessageBox::finished, this,
                [this, settings] { Q_EMIT closed(box_->clickedButton() == settings); });
        box_->show();
    }
    box_->raise();
    x11::activate(box_->winId());
}

void RevokedAlert::close()
{
    if (box_) {
        box_->reject();
    }
}

} // namespace vellumo
