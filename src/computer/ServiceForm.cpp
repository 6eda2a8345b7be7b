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

constexpr auto trialTimeout = 20s;

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
    case Use::Samples:
        return Mode::Samples;
    case Use::Configured:
    case Use::Environment:
        return Mode::Configured;
    case Use::Own:
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
    return setup_.keyPlace(base) == Place::None && !base.isEmpty() && !isLoopback(QUrl(base));
}

bool ServiceForm::hasKey() const
{
    switch (keyPlace()) {
    case Place::Keyring:
    case Place::Storing:
    case Place::Owed:
    case Place::Refused:
    case Place::Unkept:
        return true;
    default:
        return false;
    }
}

bool ServiceForm::canForgetKey() const
{
    return keyPlace() != Place::None;
}

bool ServiceForm::canUnlock() const
{
    return keyPlace() == Place::Locked || keyPlace() == Place::Owed;
}

QString ServiceForm::addressError() const
{
    switch (addressProblem_) {
    case Problem::None:
        return {};
    case Problem::NoAddress:
        return texts_.pick(
            u"This is not a web address. It should look like https://example.org/v1."_s,
            u"这不是网址。它应该像 https://example.org/v1 这样。"_s);
    case Problem::Insecure:
        return texts_.pick(
            u"Use https. Plain http is allowed only for this computer and for IP addresses "
            "on your local network."_s,
            u"地址必须以 https 开头。只有这台电脑，以及局域网内的 IP 地址，才能使用 http。"_s);
    case Problem::Credentials:
        return texts_.pick(
            u"Remove the user name and password before the @; enter the key below."_s,
            u"请去掉 @ 前面的用户名和密码；密钥填在下面。"_s);
    case Problem::Query:
        return texts_.pick(u"Remove everything from the ? or # on."_s,
                           u"请去掉 ? 或 # 之后的部分。"_s);
    }
    Q_UNREACHABLE();
}

QString ServiceForm::outcome() const
{
    switch (outcome_) {
    case Outcome::Nothing:
        return {};
    case Outcome::Removed:
        return removedText();
    case Outcome::Saved:
        return savedText();
    case Outcome::Works:
        return texts_.pick(u"It works: the service has explained a word."_s,
                           u"可以使用：服务成功解释了一个词。"_s);
    case Outcome::Failure:
        return failure_ ? failureText(*failure_, texts_) : QString();
    }
    Q_UNREACHABLE();
}

void ServiceForm::choose(Mode mode)
{
    if (mode == this->mode()) {
        return;
    }
    trial_.reset();
    addressProblem_ = Problem::None;
    showsOwn_ = false;
    if (mode == Mode::Samples) {
        setup_.useSamples();
    } else if (mode == Mode::Configured) {
        setup_.useConfigured();
    } else {
        // applies stored values again; new input is applied by "Save"
        showsOwn_ = !setup_.resumeOwn();
    }
    show(Outcome::Nothing, false);
}

std::optional<ServiceSetup::Entry> ServiceForm::entryOf(const QString &base, const QString &model,
                                                        const QString &key)
{
    // a value from the environment is not validated
    const ServiceAddress address =
        isBaseFixed() ? ServiceAddress{.base = setup_.base()} : ServiceAddress::fromInput(base);
    addressProblem_ = address.problem;
    if (address.problem != Problem::None) {
        show(Outcome::Nothing, false);
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
    if (entry->base.isEmpty() && entry->key.isEmpty() && setup_.keyPlace({}) == Place::None) {
        failure_ = ExplanationFailure{.kind = KeyError::Kind::Missing};
        show(Outcome::Failure, false);
        return false;
    }
    setup_.useOwn(*entry);
    typedBase_.reset();
    showsOwn_ = false;
    show(Outcome::Saved, true);
    return true;
}

void ServiceForm::tryOut(const QString &base, const QString &model, const QString &key)
{
    const auto entry = entryOf(base, model, key);
    if (!entry) {
        return;
    }
    trial_ = std::make_unique<QObject>();
    show(Outcome::Nothing, false);
    // the answer or the timeout ends the trial, whichever comes first
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
    clock_.after(trialTimeout, trial_.get(),
                 [end] { end(ExplanationFailure{.kind = HttpError::Kind::TimedOut}); });
}

void ServiceForm::endTrial(const std::optional<ExplanationFailure> &failure)
{
    trial_.release()->deleteLater(); // it may be the caller
    failure_ = failure;
    show(failure ? Outcome::Failure : Outcome::Works, !failure);
}

void ServiceForm::forgetKey()
{
    trial_.reset();
    addressProblem_ = Problem::None;
    removedBase_ = shownBase();
    showsOwn_ = true; // the default service is not in use without its key
    setup_.forgetKey(removedBase_);
    show(Outcome::Removed, true);
}

void ServiceForm::unlock()
{
    setup_.unlockKeyring();
}

void ServiceForm::edited(const QString &base)
{
    trial_.reset();
    addressProblem_ = Problem::None;
    const ServiceAddress address = ServiceAddress::fromInput(base);
    if (!isBaseFixed() && address.problem == Problem::None && address.base != shownBase()) {
        typedBase_ = address.base;
        setup_.loadKey(address.base);
    }
    show(Outcome::Nothing, false);
}

void ServiceForm::show(Outcome outcome, bool isGood)
{
    outcome_ = outcome;
    isGood_ = isGood;
    Q_EMIT changed();
}

} // namespace vellumo
