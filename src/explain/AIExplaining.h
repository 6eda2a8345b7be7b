// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/ExplanationError.h"
#include "explain/ExplanationTypes.h"
#include "platform/Result.h"
#include <QList>
#include <QObject>
#include <functional>

namespace vellumo {

template <typename T>
using ExplanationCompletion = std::function<void(Result<T, ExplanationError>)>;

/// Explains selections and answers questions about them. Main thread only.
///
/// A completion runs exactly once, on the main thread and never before the call returns; when
/// `context` is destroyed first, the operation is cancelled and the completion never runs.
class AIExplaining {
public:
    virtual ~AIExplaining() = default;

    virtual void explain(const ExplanationRequest &request, QObject *context,
                         ExplanationCompletion<ExplanationResult> completion) = 0;

    /// Answers the last user turn of the transcript, in the given output language.
    virtual void followUp(const QList<ChatTurn> &transcript, const QString &language,
                          QObject *context, ExplanationCompletion<QString> completion) = 0;

    /// Returns whether answers to later questions are samples, which must be marked as such.
    [[nodiscard]] virtual SampleAnswers samples() const { return SampleAnswers::None; }
    [[nodiscard]] bool answersAreSamples() const { return samples() != SampleAnswers::None; }
};

} // namespace vellumo
