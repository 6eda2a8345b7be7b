// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "explain/ForwardingExplainer.h"

#include "platform/Clock.h"

#include <QPointer>
#include <utility>

namespace vellumo {

ForwardingExplainer::ForwardingExplainer(std::unique_ptr<AIExplaining> service, Clock &clock)
    : service_(std::move(service))
    , clock_(clock)
{
}

ForwardingExplainer::~ForwardingExplainer() = default;

void ForwardingExplainer::setService(std::unique_ptr<AIExplaining> service)
{
    service_ = std::move(service);
    setLastFailure(std::nullopt);
}

void ForwardingExplainer::explain(const ExplanationRequest &request, QObject *context,
                                  ExplanationCompletion<ExplanationResult> completion)
{
    service_->explain(request, context, watched(std::move(completion)));
}

void ForwardingExplainer::followUp(const QList<ChatTurn> &transcript, const QString &language,
                                   QObject *context, ExplanationCompletion<QString> completion)
{
    service_->followUp(transcript, language, context, watched(std::move(completion)));
}

template <typename T>
ExplanationCompletion<T> ForwardingExplainer::watched(ExplanationCompletion<T> completion)
{
    // keeps the service alive until it has answered
    return [self = QPointer(this), service = service_,
            completion = std::move(completion)](const Result<T, ExplanationError> &answer) {
        if (self && !answer.isOk() && service == self->service_) {
            self->setLastFailure(summary(answer.error(), self->clock_.secondsSinceReferenceDate()));
        }
        completion(answer);
    };
}

void ForwardingExplainer::setLastFailure(std::optional<ExplanationFailure> failure)
{
    if (lastFailure_ != failure) {
        lastFailure_ = failure;
        Q_EMIT lastFailureChanged();
    }
}

} // namespace vellumo
