// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "mainwindow/AccountStatus.h"

#include "account/AuthService.h"
#include "notes/NoteDates.h"
#include "sync/SyncReporting.h"
#include "ui/BilingualText.h"

using namespace Qt::StringLiterals;

namespace vellumo {

AccountStatus::AccountStatus(AuthService &auth, SyncReporting *sync, BilingualText &texts,
                             QObject *parent)
    : QObject(parent)
    , auth_(auth)
    , sync_(sync)
    , texts_(texts)
{
    connect(&auth_, &AuthService::userChanged, this, &AccountStatus::changed);
    connect(&auth_, &AuthService::problemChanged, this, &AccountStatus::changed);
    connect(&texts_, &BilingualText::languageChanged, this, &AccountStatus::changed);
    if (sync_ != nullptr) {
        connect(sync_, &SyncReporting::changed, this, &AccountStatus::changed);
    }
}

QString AccountStatus::account() const
{
    if (!auth_.isSignedIn()) {
        return texts_.pick(u"Notes stay on this computer"_s, u"笔记只保存在这台电脑上"_s);
    }
    return auth_.email().isEmpty() ? texts_.pick(u"Signed in"_s, u"已登录"_s) : auth_.email();
}

bool AccountStatus::syncs() const
{
    return auth_.isSignedIn() && sync_ != nullptr;
}

AccountStatus::Light AccountStatus::light() const
{
    if (!syncs() || sync_->isSyncing()) {
        return Light::Neutral;
    }
    return sync_->pending() > 0 || sync_->problem() != SyncError::Kind::None
            || !auth_.problem().isEmpty()
        ? Light::Trouble
        : Light::Good;
}

QString AccountStatus::countText(int count, const QString &one, const QString &many,
                                 const QString &chinese) const
{
    const QString text = texts_.pick(count == 1 ? one : many, chinese);
    return text.contains("%1"_L1) ? text.arg(count) : text;
}

QString AccountStatus::syncText() const
{
    if (!syncs()) {
        return {};
    }
    if (sync_->arriving() > 0) {
        return countText(sync_->arriving(), u"Downloading one note…"_s, u"Downloading %1 notes…"_s,
                         u"正在下载 %1 条笔记"_s);
    }
    if (sync_->isSyncing()) {
        return texts_.pick(u"Syncing…"_s, u"正在同步…"_s);
    }
    const QString problem = problemText();
    const QString trouble = problem.isEmpty() ? auth_.problem() : problem;
    if (sync_->pending() == 0) {
        return trouble.isEmpty() ? upToDateText() : trouble;
    }
    const QString left = countText(sync_->pending(), u"1 note waiting to sync"_s,
                                   u"%1 notes waiting to sync"_s, u"还有 %1 条笔记待同步"_s);
    return trouble.isEmpty() ? left : trouble + u'\n' + left;
}

QString AccountStatus::upToDateText() const
{
    const QDateTime time = sync_->lastFetched();
    return time.isValid()
        ? texts_.pick(u"Synced at %1"_s, u"%1 已同步"_s).arg(NoteDates::clockTime(time))
        : texts_.pick(u"All notes uploaded"_s, u"笔记已全部上传"_s);
}

QString AccountStatus::uploadText() const
{
    return syncs()
        ? countText(sync_->pending(), u"Upload 1 note"_s, u"Upload %1 notes"_s, u"上传 %1 条笔记"_s)
        : QString();
}

QString AccountStatus::problemText() const
{
    switch (sync_->problem()) {
    case SyncError::Kind::None:
        break;
    case SyncError::Kind::NotConfigured:
        return texts_.pick(u"No sync service is set up here"_s, u"这里没有设置同步服务"_s);
    case SyncError::Kind::SignedOut:
        return texts_.pick(u"Sync failed: sign in again"_s, u"同步失败，请重新登录"_s);
    case SyncError::Kind::Unreachable:
        return texts_.pick(u"Sync failed: no connection"_s, u"同步失败，无法连接"_s);
    case SyncError::Kind::Refused:
        return texts_.pick(u"Sync failed: the service refused"_s, u"同步失败，服务拒绝了请求"_s);
    case SyncError::Kind::Untrusted:
        return texts_.pick(u"Sync failed: untrusted connection"_s, u"同步失败，连接不可信"_s);
    case SyncError::Kind::AddressNotAllowed:
        return texts_.pick(u"Sync failed: the service's address is not allowed"_s,
                           u"同步失败，服务地址不可用"_s);
    case SyncError::Kind::ListTooLarge:
        return texts_.pick(u"Sync failed: too much to download"_s, u"同步失败，账号里的内容太多"_s);
    case SyncError::Kind::NoteTooLarge:
        return texts_.pick(u"Sync failed: a note is too large"_s, u"同步失败，有一条笔记太大"_s);
    case SyncError::Kind::Unreadable:
        return texts_.pick(u"Sync failed: unreadable answer"_s, u"同步失败，服务响应异常"_s);
    }
    return {};
}

QString AccountStatus::advice() const
{
    if (!syncs()) {
        return {};
    }
    switch (sync_->problem()) {
    case SyncError::Kind::None:
        break;
    case SyncError::Kind::NotConfigured:
        return texts_.pick(u"This installation knows no place to sync with."_s,
                           u"这个安装没有配置同步服务。"_s);
    case SyncError::Kind::SignedOut:
        return texts_.pick(
            u"Your session is no longer accepted. Sign out and in again; notes that are not "
            "synced yet stay here meanwhile."_s,
            u"登录状态已失效。请退出后重新登录；还没同步的笔记会先保留在这里。"_s);
    case SyncError::Kind::Unreachable:
        return texts_.pick(u"No answer came. Check the connection, then choose “Sync now”."_s,
                           u"没有收到响应。请检查网络，然后点“立即同步”。"_s);
    case SyncError::Kind::Refused:
        return texts_.pick(u"The account's service did not take the notes. They stay here; try "
                           "“Sync now” later."_s,
                           u"账号服务没有接收笔记。笔记仍在这里；请稍后再点“立即同步”。"_s);
    case SyncError::Kind::Unreadable:
        return texts_.pick(u"What answered is not the account's service. A network that asks for a "
                           "login first may be in the way."_s,
                           u"响应的不是账号服务。可能是需要先登录的网络拦截了请求。"_s);
    case SyncError::Kind::Untrusted:
        return texts_.pick(
            u"No trusted connection: the certificate of the account's service is "
            "not known here. Check this computer's clock, and whether something on "
            "the network reads along. Notes stay here meanwhile."_s,
            u"无法建立可信的连接：这台电脑不认可账号服务的证书。请检查系统时间，以及网络中是"
            "否有设备在拦截。笔记会先保留在这里。"_s);
    case SyncError::Kind::AddressNotAllowed:
        return texts_.pick(
            u"Not sent: the address of the account's service must be a web address "
            "that begins with https. Check VELLUMO_DATACONNECT_URL and "
            "VELLUMO_SECURETOKEN_URL, in the environment or in Info.json."_s,
            u"没有发送：账号服务的地址必须是以 https 开头的网址。请检查环境变量或 Info.json 里的 "
            "VELLUMO_DATACONNECT_URL 和 VELLUMO_SECURETOKEN_URL。"_s);
    case SyncError::Kind::ListTooLarge:
        return texts_.pick(
            u"The account has more than vellumo reads at once (32 MiB), so nothing "
            "new was taken over. Delete notes there that you do not need."_s,
            u"账号里的笔记超过了 vellumo 一次能读取的大小（32 MiB），所以没有取回新的内容。"
            "请在那里删除不需要的笔记。"_s);
    case SyncError::Kind::NoteTooLarge:
        return texts_.pick(u"A note is larger than the account's service takes. It stays on this "
                           "computer."_s,
                           u"有一条笔记太大，账号服务不接收。它会保留在这台电脑上。"_s);
    }
    return {};
}

} // namespace vellumo
