// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "update/UpdateController.h"

#include "platform/Clock.h"
#include "platform/Diagnostics.h"
#include "platform/ReferenceDate.h"
#include "platform/Workspace.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

using Failure = UpdateWindow::Failure;

Failure failureOf(HttpError::Kind kind)
{
    switch (kind) {
    case HttpError::Kind::TimedOut:
        return Failure::TimedOut;
    case HttpError::Kind::Untrusted:
        return Failure::Insecure;
    case HttpError::Kind::TooLarge:
        return Failure::Untrusted;
    case HttpError::Kind::CutShort:
        return Failure::Refused;
    case HttpError::Kind::CannotResolve:
    case HttpError::Kind::Refused:
    case HttpError::Kind::Insecure:
    case HttpError::Kind::NoAddress:
    case HttpError::Kind::Unsendable:
    case HttpError::Kind::Cancelled:
    case HttpError::Kind::Other:
        return Failure::Unreachable;
    }
    Q_UNREACHABLE();
}

struct FailureReport {
    Failure failure;
    QString reason;
};

FailureReport reportOf(FeedFault fault)
{
    switch (fault) {
    case FeedFault::Unverifiable:
        return {Failure::Incomplete, u"the module that checks signatures cannot be loaded"_s};
    case FeedFault::Unsigned:
        return {Failure::Untrusted, u"the feed is not signed by the key of this build"_s};
    case FeedFault::Foreign:
        return {Failure::Untrusted, u"the feed is for another program"_s};
    case FeedFault::Malformed:
        return {Failure::Unreadable, u"the feed is malformed"_s};
    case FeedFault::Expired:
        return {Failure::Expired, u"the feed has expired"_s};
    }
    Q_UNREACHABLE();
}

} // namespace

std::optional<UpdateSource> UpdateSource::from(const QString &feed, const QString &key)
{
    const QUrl url(feed, QUrl::StrictMode);
    auto parsedKey = Ed25519PublicKey::fromBase64(key.toUtf8());
    if (!url.isValid() || url.scheme() != "https"_L1 || url.host().isEmpty() || !parsedKey) {
        return std::nullopt;
    }
    return UpdateSource{url, std::move(*parsedKey)};
}

UpdateController::UpdateController(UpdateSource source, DebianVersion running,
                                   SignatureCheck signatures, const Collaborators &collaborators)
    : source_(std::move(source))
    , running_(std::move(running))
    , signatures_(std::move(signatures))
    , with_(collaborators)
    , window_(collaborators.engine, collaborators.texts, running_.toString())
{
    connect(&window_, &UpdateWindow::retryRequested, this, &UpdateController::check);
    connect(&window_, &UpdateWindow::downloadRequested, this, &UpdateController::openPage);
    connect(&window_, &UpdateWindow::closedByUser, this, [this] { request_.reset(); });
}

UpdateController::~UpdateController() = default;

void UpdateController::checkForUpdates()
{
    const bool isBusy = window_.state() == UpdateWindow::State::Checking
        || window_.state() == UpdateWindow::State::SomethingNew;
    if (!window_.raise() || !isBusy) {
        check();
    }
}

void UpdateController::checkInBackground()
{
    if (!window_.window()) {
        isQuiet_ = true;
        send();
    }
}

void UpdateController::check()
{
    isQuiet_ = false;
    window_.showChecking();
    send();
}

void UpdateController::send()
{
    request_ = std::make_unique<QObject>();
    with_.http.send({.url = source_.feed,
                     .timeout = 15s,
                     .totalTimeout = 30s,
                     .bodyLimit = UpdateFeed::maxSize},
                    request_.get(),
                    [this](const Result<HttpResponse, HttpError> &answer) { take(answer); });
}

void UpdateController::take(const Result<HttpResponse, HttpError> &answer)
{
    constexpr int ok = 200;
    if (!answer.isOk()) {
        fail(failureOf(answer.error().kind), describe(answer.error().kind));
    } else if (answer.value().status != ok) {
        fail(Failure::Refused, u"status %1"_s.arg(answer.value().status));
    } else {
        take(UpdateFeed::fromSigned(
            answer.value().body, source_.key, signatures_,
            localTime(with_.clock.secondsSinceReferenceDate()).toUTC().date()));
    }
}

void UpdateController::take(const Result<UpdateFeed, FeedFault> &feed)
{
    if (!feed.isOk()) {
        const auto [failure, reason] = reportOf(feed.error());
        fail(failure, reason);
    } else if (feed.value().version > running_) {
        page_ = feed.value().page;
        window_.showOffer(feed.value());
    } else if (!isQuiet_) {
        window_.showNothingNew();
    }
}

void UpdateController::fail(Failure failure, const QString &reason)
{
    printDiagnostic(u"could not check for updates: %1"_s.arg(reason));
    if (!isQuiet_) {
        window_.showFailure(failure);
    }
}

void UpdateController::openPage()
{
    if (page_.scheme() == "https"_L1 && with_.workspace.openUrl(page_)) {
        window_.close();
    } else {
        window_.showUnopenedPage();
    }
}

} // namespace vellumo
