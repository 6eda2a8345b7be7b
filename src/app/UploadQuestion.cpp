// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/UploadQuestion.h"

#include "account/Authenticating.h"
#include "sync/NotesOwnership.h"
#include "sync/SyncReporting.h"
#include "ui/BilingualText.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

UploadQuestion::UploadQuestion(const Collaborators &with) : with_(with), alert_(with.engine)
{
    connect(&alert_, &Alert::answered, this, &UploadQuestion::takeAnswer);
    // Queued: the window may be about to be shown, and a pass asks for more than one reason.
    connect(&with_.ownership, &NotesOwnership::changed, this, &UploadQuestion::update,
            Qt::QueuedConnection);
}

void UploadQuestion::takeAnswer(bool isAgreed)
{
    const auto user = with_.auth.user();
    if (!user || user->uid != std::exchange(askedFor_, {})) {
        return;
    }
    if (isAgreed) {
        with_.sync.uploadWithheld();
    } else {
        with_.ownership.decline();
    }
}

void UploadQuestion::update()
{
    const auto user = with_.auth.user();
    const bool isUnanswered = user && with_.ownership.isUnanswered();
    if (alert_.window() != nullptr && (!isUnanswered || user->uid != askedFor_)) {
        askedFor_.clear();
        alert_.close();
    }
    if (isUnanswered && alert_.window() == nullptr) {
        ask();
    }
}

void UploadQuestion::ask()
{
    QWindow *const over = window ? window() : nullptr;
    const auto user = with_.auth.user();
    if (over == nullptr || !user) {
        return;
    }
    askedFor_ = user->uid;
    const int count = with_.sync.pending();
    const QString question = count == 1 ? with_.texts.pick(u"Signed in as %1 — upload %2 note?"_s,
                                                           u"已登录为 %1，要上传 %2 条笔记吗？"_s)
                                        : with_.texts.pick(u"Signed in as %1 — upload %2 notes?"_s,
                                                           u"已登录为 %1，要上传 %2 条笔记吗？"_s);
    const QString account = user->email.isEmpty() ? user->uid : user->email;
    alert_.show({.message = question.arg(account, QString::number(count)),
                 .informativeText = with_.texts.pick(
                     u"Uploaded notes can be read wherever this account is signed in."_s,
                     u"上传后，在登录这个账号的其他地方也能看到这些笔记。"_s),
                 .button = with_.texts.pick(u"Upload"_s, u"上传"_s),
                 .refusal = with_.texts.pick(u"Not now"_s, u"暂不"_s)},
                over);
}

} // namespace vellumo
