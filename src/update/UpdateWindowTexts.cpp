// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// The texts of the update window.
#include "ui/BilingualText.h"
#include "ui/PlainText.h"
#include "update/UpdateWindow.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

constexpr qsizetype maxShownNotes = 4000;
constexpr qsizetype maxShownSite = 80;

} // namespace

QString UpdateWindow::heading() const
{
    switch (state_) {
    case State::Checking:
        return texts_.pick(u"Checking for updates…"_s, u"正在检查更新…"_s);
    case State::NothingNew:
        return texts_.pick(u"vellumo is up to date"_s, u"vellumo 已是最新版本"_s);
    case State::SomethingNew:
        return texts_.pick(u"vellumo %1 is available"_s, u"有新版本：vellumo %1"_s)
            .arg(offer_ ? offer_->version.toString() : QString());
    case State::Failed:
        break;
    }
    return texts_.pick(u"Could not check for updates"_s, u"检查更新失败"_s);
}

QString UpdateWindow::detail() const
{
    switch (state_) {
    case State::Checking:
        break;
    case State::NothingNew:
        return texts_
            .pick(u"You have version %1; there is nothing newer."_s,
                  u"你使用的是 %1 版，目前没有更新的版本。"_s)
            .arg(runningVersion_);
    case State::SomethingNew:
        return texts_
            .pick(u"Released on %1. You have version %2."_s, u"发布于 %1。你使用的是 %2 版。"_s)
            .arg(releaseDate(), runningVersion_);
    case State::Failed:
        return failureText();
    }
    return {};
}

QString UpdateWindow::releaseDate() const
{
    if (!offer_) {
        return {};
    }
    return texts_.isEnglish() ? QLocale(QLocale::English).toString(offer_->date, u"d MMMM yyyy"_s)
                              : offer_->date.toString(u"yyyy年M月d日"_s);
}

QString UpdateWindow::failureText() const
{
    switch (failure_) {
    case Failure::Unreachable:
        break;
    case Failure::Insecure:
        return texts_.pick(u"No secure connection to the update service could be made."_s,
                           u"无法与更新服务建立安全连接，没有读取任何内容。"_s);
    case Failure::TimedOut:
        return texts_.pick(u"The update service did not answer in time."_s,
                           u"更新服务没有及时响应。"_s);
    case Failure::Refused:
        return texts_.pick(u"The update service has a problem at the moment."_s,
                           u"更新服务暂时有问题。"_s);
    case Failure::Untrusted:
        return texts_.pick(u"The answer is not signed by vellumo and was ignored."_s,
                           u"响应没有 vellumo 的签名，已忽略。"_s);
    case Failure::Unreadable:
        return texts_.pick(u"This version of vellumo cannot read the answer."_s,
                           u"此版本的 vellumo 无法识别服务器的响应。"_s);
    case Failure::Expired:
        return texts_.pick(
            u"The answer is out of date and was ignored. If this computer's date is right, "
            "try again another day."_s,
            u"响应已过期，已忽略。如果本机日期正确，请改天再试。"_s);
    case Failure::Incomplete:
        return texts_.pick(
            u"vellumo's signature check is missing, so the answer was ignored. Install "
            "vellumo again."_s,
            u"vellumo 缺少签名校验组件，响应已忽略。请重新安装 vellumo。"_s);
    }
    return texts_.pick(
        u"The update service could not be reached. Is this computer connected to the "
        "internet?"_s,
        u"无法连接到更新服务。这台电脑连上网络了吗？"_s);
}

QString UpdateWindow::notes() const
{
    if (!offer_) {
        return {};
    }
    const QString notes = texts_.pick(offer_->englishNotes, offer_->chineseNotes);
    return presentableText(notes, maxShownNotes).trimmed();
}

QString UpdateWindow::hint() const
{
    if (!offer_) {
        return {};
    }
    if (isPageUnopened_) {
        return texts_
            .pick(u"No browser could be opened. The address is %1"_s,
                  u"无法打开浏览器。网址是 %1"_s)
            .arg(QString::fromLatin1(offer_->page.toEncoded()));
    }
    return texts_
        .pick(
            u"The download page on %1 opens in your browser. vellumo installs nothing by itself."_s,
            u"将在浏览器中打开 %1 上的下载页面。vellumo 不会自行安装任何东西。"_s)
        .arg(presentableLine(offer_->page.host(QUrl::FullyEncoded), maxShownSite));
}

} // namespace vellumo
