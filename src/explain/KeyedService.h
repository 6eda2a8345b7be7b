// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/OpenAIService.h"

namespace vellumo {

/// Asks a service whose key is in the user's keyring. Each question waits until the key is
/// available or known to be unavailable.
class KeyedService final : public AIExplaining {
public:
    using Ready = Result<OpenAIService, KeyError>;
    using Completion = std::function<void(const Ready &)>;
    /// Completes exactly once, never before it returns and never after `context` is destroyed.
    using Source = std::function<void(QObject *context, Completion completion)>;

    explicit KeyedService(Source source) : source_(std::move(source)) { }

    void explain(const ExplanationRequest &request, QObject *context,
                 ExplanationCompletion<ExplanationResult> completion) override;
    void followUp(const QList<ChatTurn> &transcript, const QString &language, QObject *context,
                  ExplanationCompletion<QString> completion) override;

private:
    Source source_;
};

} // namespace vellumo
