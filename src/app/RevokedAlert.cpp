// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/RevokedAlert.h"

#include "ui/BilingualText.h"

using namespace Qt::StringLiterals;

namespace vellumo {

RevokedAlert::RevokedAlert(QQmlEngine &engine, const BilingualText &texts)
    : texts_(texts)
    , alert_(engine)
{
    connect(&alert_, &Alert::answered, this, &RevokedAlert::closed);
}

void RevokedAlert::show()
{
    alert_.showAboveAll(
        {.message = texts_.pick(u"vellumo lost Accessibility permission"_s,
                                u"vellumo 的辅助功能权限被关闭了"_s),
         .informativeText = texts_.pick(
             u"Reading your selection and the Option-Option gesture need Accessibility. "
             "Re-enable vellumo in System Settings → Privacy & Security → "
             "Accessibility, and it will resume automatically."_s,
             u"读取选中文字和 Option-Option 手势需要辅助功能权限。请在 系统设置 → "
             "隐私与安全性 → 辅助功能 里重新勾选 vellumo,开启后会自动恢复,无需重启。"_s),
         .button = texts_.pick(u"Open System Settings"_s, u"打开系统设置"_s),
         .refusal = texts_.pick(u"Later"_s, u"稍后"_s),
         .returnAgrees = true});
}

void RevokedAlert::close()
{
    if (alert_.window() != nullptr) {
        alert_.close();
        Q_EMIT closed(false);
    }
}

} // namespace vellumo
