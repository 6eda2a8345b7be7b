// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/ExplanationError.h"
#include "explain/ExplanationTypes.h"
#include <QList>
#include <optional>
#include <variant>

namespace vellumo {

/// One row of the follow-up thread.
struct ThreadItem {
    QString question = {};
    std::optional<QString> answer = {}; ///< absent while pending
    std::optional<ExplanationFailure> failure = {}; ///< then the answer is an error message
    bool kept = true; ///< saved with the note; never true after a failure
    friend bool operator==(const ThreadItem &, const ThreadItem &) = default;
};

/// The action that the panel offers with an error.
enum class ErrorHelp : quint8 {
    None,
    Permission, ///< allow accessibility
    Service, ///< open the settings of the explanation service
};

/// The content of the result panel.
struct IslandContent {
    struct Loading {
        QString sourceText;
        friend bool operator==(const Loading &, const Loading &) = default;
    };
    struct Result {
        ExplanationResult result;
        std::optional<QString> sourceText = {}; ///< absent for errors, which take no follow-ups
        QList<ThreadItem> thread = {};
        SampleAnswers samples = SampleAnswers::None; ///< marked, unless None
        ErrorHelp help = ErrorHelp::None; ///< beside an error
        std::optional<ExplanationFailure> failure = {}; ///< of an error that can be tried again
        friend bool operator==(const Result &, const Result &) = default;
    };
    struct Demo {
        ExplanationResult result;
        friend bool operator==(const Demo &, const Demo &) = default;
    };

    std::variant<Loading, Result, Demo> value;

    static IslandContent loading(QString sourceText) { return {Loading{std::move(sourceText)}}; }
    static IslandContent result(ExplanationResult result, std::optional<QString> sourceText,
                                QList<ThreadItem> thread,
                                SampleAnswers samples = SampleAnswers::None)
    {
        return {Result{std::move(result), std::move(sourceText), std::move(thread), samples}};
    }
    /// Returns a message without source text, context or thread.
    static IslandContent error(QString message, ErrorHelp help,
                               const std::optional<ExplanationFailure> &failure = {})
    {
        return {Result{.result = {{}, std::move(message)}, .help = help, .failure = failure}};
    }
    static IslandContent demo(ExplanationResult result) { return {Demo{std::move(result)}}; }
    /// Returns a message that belongs to no selection and takes no follow-ups.
    static IslandContent notice(QString message) { return {Demo{{{}, std::move(message)}}}; }

    friend bool operator==(const IslandContent &, const IslandContent &) = default;
};

} // namespace vellumo
