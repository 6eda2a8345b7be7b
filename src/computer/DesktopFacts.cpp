// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "computer/DesktopFacts.h"

#include "computer/DesktopReporting.h"
#include "platform/Accessibility.h"
#include "ui/BilingualText.h"

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

/// Returns which installed browsers expose the addresses of pages, and when.
QString browsersText(const DesktopReporting &desktop, const BilingualText &texts)
{
    const auto listed = [&texts](const QStringList &names) {
        return names.join(texts.pick(u", "_s, u"、"_s));
    };
    const QStringList always = desktop.browsers();
    const QStringList atStart = desktop.browsersDecidingAtStart();
    QStringList lines;
    if (!always.isEmpty()) {
        lines << texts.pick(u"%1: notes are grouped by page."_s, u"%1：笔记归到所在网页下。"_s)
                     .arg(listed(always));
    }
    if (!atStart.isEmpty()) {
        lines << texts
                     .pick(
                         u"%1: notes are grouped by page if accessibility was on when the "
                         "browser started. If they are grouped by window, restart it."_s,
                         u"%1：浏览器启动时辅助功能已打开，笔记才归到所在网页下。如果归到了窗口下，"
                         "请重新启动浏览器。"_s)
                     .arg(listed(atStart));
    }
    return lines.isEmpty()
        ? texts.pick(u"No supported browser found."_s, u"没有找到支持的浏览器。"_s)
        : lines.join(u'\n');
}

DesktopFact accessibilityFact(const DesktopReporting &desktop, const Accessibility &accessibility,
                              const BilingualText &texts)
{
    DesktopFact fact{.name = u"accessibility"_s,
                     .title = texts.pick(u"Accessibility service"_s, u"辅助功能服务"_s),
                     .isKnown = desktop.isConnected() || !desktop.isConnecting(),
                     .works = desktop.isConnected(),
                     .needsAction = !desktop.isConnected() && !desktop.isConnecting()
                         && accessibility.isProcessTrusted()};
    if (desktop.isConnected()) {
        fact.text = texts.pick(
            u"Most applications report what is selected. For the rest, vellumo reads what "
            "they publish when you select."_s,
            u"多数应用会提供选中的文字；其余应用则读取它们在选中时公开的内容。"_s);
    } else if (!accessibility.isProcessTrusted()) {
        fact.text = texts.pick(u"Waiting for the permission above."_s, u"等待授权。"_s);
    } else if (desktop.isConnecting()) {
        fact.text = texts.pick(u"Connecting…"_s, u"正在连接…"_s);
    } else {
        fact.text = texts.pick(
            u"Not responding. Log out and in again, or check that at-spi2-core is installed."_s,
            u"没有响应。请注销后重新登录，或检查是否安装了 at-spi2-core。"_s);
    }
    return fact;
}

DesktopFact copyingFact(const DesktopReporting &desktop, const BilingualText &texts)
{
    const bool isEverywhere = desktop.roads().copiesEverywhere;
    return {.name = u"copying"_s,
            .title = texts.pick(u"Reading by copying"_s, u"通过复制读取"_s),
            .text = isEverywhere
                ? texts.pick(u"Possible in every window, where nothing else gives the text."_s,
                             u"其他方法都读不到文字时，可以在所有窗口中使用。"_s)
                : texts.pick(u"Possible in X11 windows only: this desktop lets no program send "
                             "keys to the others."_s,
                             u"只能在 X11 窗口中使用：这个桌面不允许程序向其他窗口发送按键。"_s),
            .works = isEverywhere};
}

DesktopFact keyringFact(const DesktopReporting &desktop, const BilingualText &texts)
{
    using Keyring = DesktopReporting::Keyring;
    const Keyring keyring = desktop.keyring();
    DesktopFact fact{.name = u"keyring"_s,
                     .title = texts.pick(u"Keyring"_s, u"密钥环"_s),
                     .isKnown = keyring != Keyring::Asking,
                     .works = keyring == Keyring::Open,
                     .needsAction = keyring == Keyring::Locked || keyring == Keyring::Absent};
    switch (keyring) {
    case Keyring::Open:
        fact.text = texts.pick(u"Stores your sign-in and your API key."_s,
                               u"保存你的登录状态和 API 密钥。"_s);
        break;
    case Keyring::Locked:
        fact.text = texts.pick(u"Locked. It is read as soon as you unlock it."_s,
                               u"已锁定。解锁后会立即读取其中的内容。"_s);
        break;
    case Keyring::Absent:
        fact.text = texts.pick(
            u"None found (gnome-keyring, KWallet). Your sign-in and key are kept only until "
            "vellumo quits."_s,
            u"没有可用的密钥环（如 gnome-keyring 或 KWallet）：登录状态和密钥只保留到 vellumo "
            "退出。"_s);
        break;
    case Keyring::Asking:
        fact.text = texts.pick(u"Checking…"_s, u"正在检查…"_s);
        break;
    }
    return fact;
}

DesktopFact trayFact(const DesktopReporting &desktop, const BilingualText &texts)
{
    return {
        .name = u"tray"_s,
        .title = texts.pick(u"Tray icon"_s, u"托盘图标"_s),
        .text = desktop.hasTray()
            ? texts.pick(u"A click on it opens this window."_s, u"点击即可打开这个窗口。"_s)
            : texts.pick(u"This desktop has no tray. Start vellumo again to open this window."_s,
                         u"这个桌面不显示图标。再次启动 vellumo 即可打开这个窗口。"_s),
        .works = desktop.hasTray()};
}

DesktopFact compositorFact(const DesktopReporting &desktop, const BilingualText &texts)
{
    return {.name = u"compositor"_s,
            .title = texts.pick(u"Round corners and shadows"_s, u"圆角与阴影"_s),
            .text = desktop.hasCompositor()
                ? texts.pick(u"A compositor is running."_s, u"合成器正在运行。"_s)
                : texts.pick(u"Without a compositor the panel's corners are a little rough and it "
                             "casts no shadow; everything else is the same."_s,
                             u"没有合成器，面板的圆角略显粗糙，也没有阴影，其余不受影响。"_s),
            .works = desktop.hasCompositor()};
}

} // namespace

QList<DesktopFact> desktopFacts(const DesktopReporting &desktop, const Accessibility &accessibility,
                                const BilingualText &texts)
{
    return {accessibilityFact(desktop, accessibility, texts),
            copyingFact(desktop, texts),
            {.name = u"browsers"_s,
             .title = texts.pick(u"Web page addresses"_s, u"网页地址"_s),
             .text = browsersText(desktop, texts)},
            keyringFact(desktop, texts),
            trayFact(desktop, texts),
            compositorFact(desktop, texts)};
}

} // namespace vellumo
