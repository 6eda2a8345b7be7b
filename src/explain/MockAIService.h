// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/AIExplaining.h"

namespace vellumo {

class Clock;

/// Answers with fixed Chinese samples after a short delay, without a network, so that the program
/// can be tried before a service is configured. The answer depends only on the kind of the
/// selection.
class MockAIService : public AIExplaining {
public:
    /// The clock must outlive this object.
    explicit MockAIService(Clock &clock, SampleAnswers reason = SampleAnswers::Unconfigured);

    void explain(const ExplanationRequest &request, QObject *context,
                 ExplanationCompletion<ExplanationResult> completion) override;
    void followUp(const QList<ChatTurn> &transcript, const QString &language, QObject *context,
                  ExplanationCompletion<QString> completion) override;
    [[nodiscard]] SampleAnswers samples() const override { return reason_; }

private:
    Clock &clock_;
    SampleAnswers reason_;
};

} // namespace vellumo
