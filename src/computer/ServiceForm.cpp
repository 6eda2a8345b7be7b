// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "computer/ServiceForm.h"

#include "computer/FailureText.h"
#include "platform/Clock.h"
#include "platform/WebAddress.h"
#include "ui/BilingualText.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

using Use = ServiceSetup::Use;
using Place = ServiceKeys::Place;
using Problem = ServiceAddress::Problem;

constexpr auto trialPatience = 20s;

} // namespace

ServiceForm::ServiceForm(ServiceSetup &setup, Clock &clock, const BilingualText &texts,
                         QObject *parent)
    : QObject(parent)
    , setup_(setup)
    , clock_(clock)
    , texts_(texts)
{
    connect(&setup_, &ServiceSetup::changed, this, &ServiceForm::changed);
    connect(&texts_, &BilingualText::languageChanged, this, &ServiceForm::changed);
}

ServiceForm::Mode ServiceForm::mode() const
{
    if (showsOwn_) {
        return Mode::Own;
    }
    switch (setup_.use()) {
    case Use::samples:
        return Mode::Samples;
    case Use::configured:
    case Use::environment:
        return Mode::Configured;
    case Use::own:
        return Mode::Own;
    }
    Q_UNREACHABLE();
}

QString ServiceForm::fault() const
{
    const auto fault = setup_.configurationFault();
    return fault ? faultText(*fault, texts_) : QString();
}

bool ServiceForm::lacksKey(const QString &base) const
{
    return setup_.keyPlace(base) == Place::none && !base.isEmpty() && !isLoopback(QUrl(base));
}

QString ServiceForm::keyText() const
{
    switch (keyPlace()) {
    case Place::none:
        if (lacksKey(shownBase())) {
            return texts_.pick(
                u"There is no key for this address yet. Leave this empty if the server needs "
                "none. A key is kept in your keyring, if there is one, and never in a file."_s,
                u"这个地址还没有密钥。服务器不需要密钥时可以留空。密钥只保存在密钥环里(如果有),"
                "不会写进任何文件。"_s);
        }
        return texts_.pick(
            u"Leave it empty for a server that needs none. A key is kept in your "
            "keyring, if there is one, and never in a file."_s,
            u"服务器不需要密钥时可以留空。密钥只保存在密钥环里(如果有),不会写进任何文件。"_s);
    case Place::awaited:
        return texts_.pick(u"The keyring has not answered yet."_s, u"密钥环还没有回应。"_s);
    case Place::keyring:
        return texts_.pick(u"The key is in your keyring. Leave this empty to keep it."_s,
                           u"密钥已保存在密钥环里。留空则保持不变。"_s);
    case Place::storing:
        return texts_.pick(u"In use. It is on its way to the keyring."_s,
                           u"已生效,正在存入密钥环。"_s);
    case Place::owed:
        return texts_.pick(
            u"In use. The keyring is locked: the key is kept there once you "
            "unlock it, and otherwise only until vellumo ends."_s,
            u"已生效。密钥环已锁定:解锁后密钥会存进去,否则只保留到 vellumo 退出。"_s);
    case Place::refused:
        return texts_.pick(u"In use until vellumo ends: the keyring has not taken it. Save it "
                           "again to try once more."_s,
                           u"在 vellumo 退出前有效:密钥环没有收下它。可以重新填写并保存。"_s);
    case Place::unkept:
        return texts_
            .pick(u"In use until vellumo ends: there is no keyring here to keep it. Start one, or "
                  "name the service in %1 (OPENAI_API_KEY, OPENAI_BASE_URL), where the key can be "
                  "read by whoever can read your files."_s,
                  u"在 vellumo "
                  u"退出前有效:这里没有可用的密钥环来保存它。可以启动一个密钥环,或把服务写进 "
                  "%1(OPENAI_API_KEY、OPENAI_BASE_URL),但能读到你文件的人也能读到密钥。"_s)
            .arg(file());
    case Place::locked:
        return texts_.pick(u"The key is in your keyring, which is locked."_s,
                           u"密钥在密钥环里,而密钥环已锁定。"_s);
    case Place::missing:
        return failureText({.kind = KeyError::Kind::missing}, texts_);
    case Place::unavailable:
        return texts_.pick(u"The key is in a keyring that is not there now. You can enter it again "
                           "for this session."_s,
                           u"密钥所在的密钥环现在不可用。可以为本次会话重新填写。"_s);
    }
    Q_UNREACHABLE();
}

bool ServiceForm::hasKey() const
{
    switch (keyPlace()) {
    case Place::keyring:
    case Place::storing:
    case Place::owed:
    case Place::refused:
    case Place::unkept:
        return true;
    default:
        return false;
    }
}

bool ServiceForm::canForgetKey() const
{
    return keyPlace() != Place::none;
}

bool ServiceForm::canUnlock() const
{
    return keyPlace() == Place::locked || keyPlace() == Place::owed;
}

QString ServiceForm::addressError() const
{
    switch (addressProblem_) {
    case Problem::none:
        return {};
    case Problem::noAddress:
        return texts_.pick(u"This is no web address. It looks like https://example.org/v1."_s,
                           u"这不是网址。它应该像 https://example.org/v1 这样。"_s);
    case Problem::insecure:
        return texts_.pick(
            u"It must begin with https. Only this computer, and addresses by number "
            "of your own network, are asked over http."_s,
            u"地址必须以 https 开头。只有这台电脑,以及局域网内用数字表示的地址,才能使用 http。"_s);
    case Problem::credentials:
        return texts_.pick(u"Leave the name and password before the @ out; the key goes below."_s,
                           u"请去掉 @ 前面的用户名和密码;密钥填在下面。"_s);
    case Problem::query:
        return texts_.pick(u"Leave out what follows the ? or #."_s,
                           u"请去掉 ? 或 # 之后的部分。"_s);
    }
    Q_UNREACHABLE();
}

QString ServiceForm::outcome() const
{
    switch (said_) {
    case Said::nothing:
        return {};
    case Said::removed:
        return removedText();
    case Said::saved:
        return savedText();
    case Said::works:
        return texts_.pick(u"It works: the service has explained a word."_s,
                           u"可以使用:服务成功解释了一个词。"_s);
    case Said::failure:
        return failure_ ? failureText(*failure_, texts_) : QString();
    }
    Q_UNREACHABLE();
}

QString ServiceForm::savedText() const
{
    const Place place = setup_.keyPlace(setup_.base());
    if (place == Place::unkept || place == Place::refused) {
        return texts_.pick(u"Saved, but the key only until vellumo ends."_s,
                           u"已保存,但密钥只保留到 vellumo 退出。"_s);
    }
    if (lacksKey(setup_.base())) {
        return texts_.pick(u"Saved. There is no key for this address yet: enter one if the service "
                           "needs it."_s,
                           u"已保存。这个地址还没有密钥:服务需要时请填写。"_s);
    }
    return texts_.pick(u"Saved. It counts from the next double-tap."_s,
                       u"已保存,从下一次双击开始生效。"_s);
}

QString ServiceForm::removedText() const
{
    using Removal = ServiceKeys::Removal;
    switch (setup_.keyRemoval(removedBase_)) {
    case Removal::done:
        return texts_.pick(u"The key is removed."_s, u"密钥已移除。"_s);
    case Removal::asked:
        return texts_.pick(u"The key is not used any more."_s, u"密钥不再使用。"_s);
    case Removal::owed:
        return texts_.pick(u"The key is not used any more. It leaves the keyring as soon as that "
                           "is unlocked, now or later."_s,
                           u"密钥不再使用。密钥环解锁后(现在或以后),它就会从中移除。"_s);
    }
    Q_UNREACHABLE();
}

void ServiceForm::choose(Mode mode)
{
    if (mode == this->mode()) {
        return;
    }
    trial_.reset();
    addressProblem_ = Problem::none;
    showsOwn_ = false;
    if (mode == Mode::Samples) {
        setup_.useSamples();
    } else if (mode == Mode::Configured) {
        setup_.useConfigured();
    } else {
        // What was entered earlier counts again; for the rest there is "Save".
        showsOwn_ = !setup_.resumeOwn();
    }
    say(Said::nothing, false);
}

std::optional<ServiceSetup::Entry> ServiceForm::entryOf(const QString &base, const QString &model,
                                                        const QString &key)
{
    // What the environment says is taken as it is.
    const ServiceAddress address =
        isBaseFixed() ? ServiceAddress{.base = setup_.base()} : ServiceAddress::fromInput(base);
    addressProblem_ = address.problem;
    if (address.problem != Problem::none) {
        say(Said::nothing, false);
        return std::nullopt;
    }
    return ServiceSetup::Entry{address.base, isModelFixed() ? setup_.model() : model.trimmed(),
                               key.trimmed()};
}

bool ServiceForm::save(const QString &base, const QString &model, const QString &key)
{
    trial_.reset();
    const auto entry = entryOf(base, model, key);
    if (!entry) {
        return false;
    }
    if (entry->base.isEmpty() && entry->key.isEmpty() && setup_.keyPlace({}) == Place::none) {
        failure_ = ExplanationFailure{.kind = KeyError::Kind::missing};
        say(Said::failure, false);
        return false;
    }
    setup_.useOwn(*entry);
    typedBase_.reset();
    showsOwn_ = false;
    say(Said::saved, true);
    return true;
}

void ServiceForm::tryOut(const QString &base, const QString &model, const QString &key)
{
    const auto entry = entryOf(base, model, key);
    if (!entry) {
        return;
    }
    trial_ = std::make_unique<QObject>();
    say(Said::nothing, false);
    // Whichever comes first, the answer or the end of its time, ends the trial.
    const auto end = [this,
                      trial = trial_.get()](const std::optional<ExplanationFailure> &failure) {
        if (trial == trial_.get()) {
            endTrial(failure);
        }
    };
    const QString language = texts_.isEnglish() ? u"English"_s : u"Chinese"_s;
    KeyedService([this, entry = *entry](QObject *context, const auto &ready) {
        setup_.whenReady(entry, context, ready);
    }).explain({u"serendipity"_s, language}, trial_.get(), [end](const auto &answer) {
        end(answer.isOk() ? std::nullopt : std::optional(summary(answer.error(), 0)));
    });
    clock_.after(trialPatience, trial_.get(),
                 [end] { end(ExplanationFailure{.kind = HttpError::Kind::timedOut}); });
}

void ServiceForm::endTrial(const std::optional<ExplanationFailure> &failure)
{
    trial_.release()->deleteLater(); // it may be what calls this
    failure_ = failure;
    say(failure ? Said::failure : Said::works, !failure);
}

void ServiceForm::forgetKey()
{
    trial_.reset();
    addressProblem_ = Problem::none;
    removedBase_ = shownBase();
    showsOwn_ = true; // the usual service is not in use without its key
    setup_.forgetKey(removedBase_);
    say(Said::removed, true);
}

void ServiceForm::unlock()
{
    setup_.unlockKeyring();
}

void ServiceForm::edited(const QString &base)
{
    trial_.reset();
    addressProblem_ = Problem::none;
    const ServiceAddress address = ServiceAddress::fromInput(base);
    if (!isBaseFixed() && address.problem == Problem::none && address.base != shownBase()) {
        typedBase_ = address.base;
        setup_.loadKey(address.base);
    }
    say(Said::nothing, false);
}

void ServiceForm::say(Said said, bool isGood)
{
    said_ = said;
    isGood_ = isGood;
    Q_EMIT changed();
}

} // namespace vellumo
