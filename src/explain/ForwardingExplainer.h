// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/AIExplaining.h"
#include <QObject>
#include <memory>
#include <optional>

namespace vellumo {

class Clock;

/// Forwards questions to the current service, which can be replaced at run time, and records the
/// last failure.
class ForwardingExplainer final : public QObject, public AIExplaining {
    Q_OBJECT

public:
    /// The clock must outlive this object.
    ForwardingExplainer(std::unique_ptr<AIExplaining> service, Clock &clock);
    ~ForwardingExplainer() override;
    Q_DISABLE_COPY_MOVE(ForwardingExplainer)

    /// Replaces the service for later questions; pending ones are answered by the previous service.
    /// Resets the last failure.
    void setService(std::unique_ptr<AIExplaining> service);

    [[nodiscard]] const std::optional<ExplanationFailure> &lastFailure() const
    {
        return lastFailure_;
    }

    void explain(const ExplanationRequest &request, QObject *context,
                 ExplanationCompletion<ExplanationResult> completion) override;
    void followUp(const QList<ChatTurn> &transcript, const QString &language, QObject *context,
                  ExplanationCompletion<QString> completion) override;
    [[nodiscard]] SampleAnswers samples() const override { return service_->samples(); }

Q_SIGNALS:
    /// Emitted before a failed question completes, and when the failure is reset.
    void lastFailureChanged();

private:
    template <typename T>
    [[nodiscard]] ExplanationCompletion<T> watched(ExplanationCompletion<T> completion);
    void setLastFailure(std::optional<ExplanationFailure> failure);

    std::shared_ptr<AIExplaining> service_;
    Clock &clock_;
    std::optional<ExplanationFailure> lastFailure_;
};

} // namespace vellumo
