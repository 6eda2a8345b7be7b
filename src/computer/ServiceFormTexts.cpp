// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "computer/ServiceForm.h"

#include "computer/FailureText.h"
#include "ui/BilingualText.h"

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {
using Place = ServiceKeys::Place;
}

QString ServiceForm::choiceText() const
{
    if (isForced()) {
        return texts_
            .pick(
                u"%1, set in the environment vellumo was started with. That overrides "
                "everything here."_s,
                u"%1，由启动 vellumo 时的环境变量指定。它优先于这里的一切设置；去掉环境变量后启动，"
                "就可以在这里选择。"_s)
            .arg(host());
    }
    switch (mode()) {
    case Mode::Samples:
        return texts_.pick(
            u"Every double-tap gets a ready-made sample, so you can see how vellumo works. "
            "It has nothing to do with your text."_s,
            u"每次都给出固定的示例，便于了解用法；示例与所选文字无关。"_s);
    case Mode::Configured:
        return texts_
            .pick(u"%1, from Info.json (%2, or the one installed with vellumo)."_s,
                  u"%1，由 Info.json 指定：你自己的（%2）或随安装附带的。"_s)
            .arg(host(), file());
    case Mode::Own:
        break;
    }
    return {};
}

QString ServiceForm::sentText() const
{
    if (host().isEmpty()) {
        return texts_.pick(u"No selected text: the sample answers are built in."_s,
                           u"选中的文字不会发出：示例回答是内置的。"_s);
    }
    return texts_
        .pick(u"To %1: the selected text, your follow-ups with the answers so far, and the "
              "language you want the answer in. Never the address or title of what you read, "
              "nor the application's name."_s,
              u"发到 %1：选中的文字、你的追问和之前的回答，以及你想要的回答语言。不包括所读内"
              "容的网址、标题，也不包括应用名称。"_s)
        .arg(host());
}

QString ServiceForm::keyText() const
{
    switch (keyPlace()) {
    case Place::None:
        if (lacksKey(shownBase())) {
            return texts_.pick(
                u"There is no key for this address yet. Leave this empty if the server needs "
                "none. A key is kept in your keyring, if there is one, and never in a file."_s,
                u"这个地址还没有密钥。服务器不需要密钥时可以留空。密钥只保存在密钥环里（如果有），"
                "不会写进任何文件。"_s);
        }
        return texts_.pick(
            u"Leave it empty for a server that needs none. A key is kept in your "
            "keyring, if there is one, and never in a file."_s,
            u"服务器不需要密钥时可以留空。密钥只保存在密钥环里（如果有），不会写进任何文件。"_s);
    case Place::Awaited:
        return texts_.pick(u"The keyring has not answered yet."_s, u"密钥环还没有响应。"_s);
    case Place::Keyring:
        return texts_.pick(u"The key is in your keyring. Leave this empty to keep it."_s,
                           u"密钥已保存在密钥环里。留空则保持不变。"_s);
    case Place::Storing:
        return texts_.pick(u"In use. It is on its way to the keyring."_s,
                           u"已生效，正在存入密钥环。"_s);
    case Place::Owed:
        return texts_.pick(
            u"In use. The keyring is locked: the key is stored when you unlock it; until "
            "then it lasts only while vellumo runs."_s,
            u"已生效。密钥环已锁定：解锁后密钥会存进去，否则只保留到 vellumo 退出。"_s);
    case Place::Refused:
        return texts_.pick(
            u"In use until vellumo quits: the keyring did not accept it. Save again to retry."_s,
            u"在 vellumo 退出前有效：未能存入密钥环。可以重新填写并保存。"_s);
    case Place::Unkept:
        return texts_
            .pick(u"In use until vellumo quits: there is no keyring here to keep it. Start "
                  "one, or name the service in %1 (OPENAI_API_KEY, OPENAI_BASE_URL), where "
                  "the key can be read by anyone who can read your files."_s,
                  u"在 vellumo "
                  u"退出前有效：这里没有可用的密钥环来保存它。可以启动一个密钥环，或把服务写进 "
                  "%1（OPENAI_API_KEY、OPENAI_BASE_URL），但能读到你文件的人也能读到密钥。"_s)
            .arg(file());
    case Place::Locked:
        return texts_.pick(u"The key is in your keyring, which is locked."_s,
                           u"密钥在密钥环里，而密钥环已锁定。"_s);
    case Place::Missing:
        return failureText({.kind = KeyError::Kind::Missing}, texts_);
    case Place::Unavailable:
        return texts_.pick(u"The key is in a keyring that is not there now. You can enter it again "
                           "for this session."_s,
                           u"密钥所在的密钥环现在不可用。可以为本次会话重新填写。"_s);
    }
    Q_UNREACHABLE();
}

QString ServiceForm::savedText() const
{
    const Place place = setup_.keyPlace(setup_.base());
    if (place == Place::Unkept || place == Place::Refused) {
        return texts_.pick(u"Saved. The key is kept only until vellumo quits."_s,
                           u"已保存，但密钥只保留到 vellumo 退出。"_s);
    }
    if (lacksKey(setup_.base())) {
        return texts_.pick(u"Saved. There is no key for this address yet: enter one if the service "
                           "needs it."_s,
                           u"已保存。这个地址还没有密钥：服务需要时请填写。"_s);
    }
    return texts_.pick(u"Saved. Used from the next double-tap on."_s,
                       u"已保存，从下一次按两下开始生效。"_s);
}

QString ServiceForm::removedText() const
{
    using Removal = ServiceKeys::Removal;
    switch (setup_.keyRemoval(removedBase_)) {
    case Removal::Done:
        return texts_.pick(u"Key removed."_s, u"密钥已移除。"_s);
    case Removal::Asked:
        return texts_.pick(u"The key is not used any more."_s, u"密钥不再使用。"_s);
    case Removal::Owed:
        return texts_.pick(
            u"The key is not used any more. It is deleted from the keyring when that is "
            "unlocked."_s,
            u"密钥不再使用。密钥环解锁后（现在或以后），它就会从中移除。"_s);
    }
    Q_UNREACHABLE();
}

} // namespace vellumo
