// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "computer/ServiceForm.h"

#include "computer/FailureText.h"
#include "explain/ServiceAddress.h"
#include "platform/Clock.h"
#include "ui/BilingualText.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

using Use = ServiceSetup::Use;
using Place = ServiceSetup::KeyPlace;
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

QString ServiceForm::mode() const
{
    if (showsOwn_) {
        return u"own"_s;
    }
    switch (setup_.use()) {
    case Use::samples:
        return u"samples"_s;
    case Use::configured:
    case Use::environment:
        return u"configured"_s;
    case Use::own:
        return u"own"_s;
    }
    Q_UNREACHABLE();
}

bool ServiceForm::sendsToken() const
{
    const Use use = setup_.use();
    const AppConfig &config = setup_.config();
    return (use == Use::configured || use == Use::environment)
        && (config.value(u"VELLUMO_PROXY_URL"_s) || setup_.base().isEmpty());
}

bool ServiceForm::isBaseFixed() const
{
    return setup_.config().layerOf(u"OPENAI_BASE_URL"_s) == AppConfig::Layer::environment;
}

bool ServiceForm::isModelFixed() const
{
    return setup_.config().layerOf(u"VELLUMO_MODEL"_s) == AppConfig::Layer::environment;
}

QString ServiceForm::keyText() const
{
    switch (setup_.keyPlace()) {
    case Place::none:
        return texts_.pick(
            u"Leave it empty for a server that needs none. A key is kept in your "
            "keyring, if there is one, and never in a file."_s,
            u"服务器不需要密钥时可以留空。密钥只保存在密钥环里(如果有),不会写进任何文件。"_s);
    case Place::configuration:
        return texts_.pick(u"A key stands in Info.json. One that you enter here goes before it and "
                           "is kept in your keyring."_s,
                           u"Info.json 里有一个密钥。在这里填写的密钥优先,并保存在密钥环里。"_s);
    case Place::awaited:
        return texts_.pick(u"The keyring has not answered yet."_s, u"密钥环还没有回应。"_s);
    case Place::keyring:
        return texts_.pick(u"The key is in your keyring. Leave this empty to keep it."_s,
                           u"密钥已保存在密钥环里。留空则保持不变。"_s);
    case Place::session:
        if (setup_.keyringAnswer() == SecretAnswer::Kind::locked) {
            return texts_.pick(
                u"In use. The keyring is locked: the key is kept there once you "
                "unlock it, and otherwise only until vellumo ends."_s,
                u"已生效。密钥环已锁定:解锁后密钥会存进去,否则只保留到 vellumo 退出。"_s);
        }
        if (setup_.keyringAnswer() == SecretAnswer::Kind::unavailable) {
            return texts_
                .pick(
                    u"In use until vellumo ends: there is no keyring here to keep it. "
                    "Start one, or write OPENAI_API_KEY into %1, where it can be "
                    "read by whoever can read your files."_s,
                    u"在 vellumo 退出前有效:这里没有可用的密钥环来保存它。可以启动一个密钥环,或把 "
                    "OPENAI_API_KEY 写进 %1,但能读到你文件的人也能读到它。"_s)
                .arg(file());
        }
        return texts_.pick(u"In use. It is on its way to the keyring."_s,
                           u"已生效,正在存入密钥环。"_s);
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
    const Place place = setup_.keyPlace();
    return place == Place::keyring || place == Place::session || place == Place::configuration;
}

bool ServiceForm::canForgetKey() const
{
    const Place place = setup_.keyPlace();
    return place != Place::none && place != Place::configuration;
}

bool ServiceForm::canUnlock() const
{
    const Place place = setup_.keyPlace();
    return place == Place::locked
        || (place == Place::session && setup_.keyringAnswer() == SecretAnswer::Kind::locked);
}

QString ServiceForm::addressError() const
{
    switch (static_cast<Problem>(addressProblem_)) {
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
        return texts_.pick(u"The key is removed."_s, u"密钥已移除。"_s);
    case Said::saved:
        if (setup_.keyPlace() == Place::session
            && setup_.keyringAnswer() == SecretAnswer::Kind::unavailable) {
            return texts_.pick(u"Saved, but the key only until vellumo ends."_s,
                               u"已保存,但密钥只保留到 vellumo 退出。"_s);
        }
        return texts_.pick(u"Saved. It counts from the next double-tap."_s,
                           u"已保存,从下一次双击开始生效。"_s);
    case Said::fileFault:
        return texts_
            .pick(u"Not saved: %1 cannot be written, or something else than an object "
                  "stands there."_s,
                  u"没有保存:无法写入 %1,或其中的内容不是 JSON 对象。"_s)
            .arg(file());
    case Said::works:
        return texts_.pick(u"It works: the service has explained a word."_s,
                           u"可以使用:服务成功解释了一个词。"_s);
    case Said::failure:
        return failure_ ? failureText(*failure_, texts_) : QString();
    }
    Q_UNREACHABLE();
}

void ServiceForm::choose(const QString &mode)
{
    edited();
    showsOwn_ = false;
    if (mode == "samples"_L1) {
        setup_.useSamples();
    } else if (mode == "configured"_L1) {
        setup_.useConfigured();
    } else {
        // What was entered earlier counts again; for the rest there is "Save".
        const bool isEntered = setup_.keyPlace() != Place::configuration
            && (setup_.keyPlace() != Place::none || !setup_.base().isEmpty());
        showsOwn_ = !isEntered || !setup_.useOwn({setup_.base(), setup_.model(), {}});
    }
    Q_EMIT changed();
}

std::optional<ServiceSetup::Entry> ServiceForm::entryOf(const QString &base, const QString &model,
                                                        const QString &key)
{
    const ServiceAddress address = ServiceAddress::fromInput(base);
    addressProblem_ = static_cast<int>(address.problem);
    if (address.problem != Problem::none) {
        say(Said::nothing, false);
        return std::nullopt;
    }
    return ServiceSetup::Entry{address.base, model.trimmed(), key.trimmed()};
}

bool ServiceForm::save(const QString &base, const QString &model, const QString &key)
{
    trial_.reset();
    const auto entry = entryOf(base, model, key);
    if (!entry) {
        return false;
    }
    if (entry->base.isEmpty() && entry->key.isEmpty() && !setup_.hasKeyFor({})) {
        failure_ = ExplanationFailure{.kind = KeyError::Kind::missing};
        say(Said::failure, false);
        return false;
    }
    const bool isSaved = setup_.useOwn(*entry);
    showsOwn_ = showsOwn_ && !isSaved;
    say(isSaved ? Said::saved : Said::fileFault, isSaved);
    return isSaved;
}

void ServiceForm::tryOut(const QString &base, const QString &model, const QString &key)
{
    const auto entry = entryOf(base, model, key);
    if (!entry) {
        return;
    }
    trial_ = std::make_unique<QObject>();
    say(Said::nothing, false);
    const KeyedService::Ready service = setup_.serviceOf(*entry);
    if (!service.isOk()) {
        endTrial(ExplanationFailure{.kind = service.error().kind});
        return;
    }
    // Whichever comes first, the answer or the end of its time, ends the trial.
    const auto end = [this,
                      trial = trial_.get()](const std::optional<ExplanationFailure> &failure) {
        if (trial == trial_.get()) {
            endTrial(failure);
        }
    };
    const QString language = texts_.isEnglish() ? u"English"_s : u"Chinese"_s;
    OpenAIService(service.value())
        .explain({u"serendipity"_s, language}, trial_.get(), [end](const auto &answer) {
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
    edited();
    setup_.forgetKey();
    say(Said::removed, true);
}

void ServiceForm::unlock()
{
    setup_.unlockKeyring();
}

void ServiceForm::edited()
{
    trial_.reset();
    addressProblem_ = 0;
    say(Said::nothing, false);
}

void ServiceForm::say(Said said, bool isGood)
{
    said_ = said;
    isGood_ = isGood;
    Q_EMIT changed();
}

} // namespace vellumo
