// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/ExplanationTypes.h"
#include <QList>
#include <optional>
#include <variant>

namespace vellumo {

/// One row of the follow-up thread.
struct ThreadItem {
    QString question = {};
    std::optional<QString> answer = {}; ///< absent while the answer is awaited
    bool failed = false; ///< the answer is an apology
    bool kept = true; ///< goes into the note; what failed never does
    friend bool operator==(const ThreadItem &, const ThreadItem &) = default;
};

/// What the panel offers beside an error.
enum class ErrorHelp : quint8 {
    none,
    permission, ///< to allow accessibility
    service, ///< to open the settings of the explanation service
};

/// What the result panel shows.
struct IslandContent {
    struct Loading {
        QString sourceText;
        friend bool operator==(const Loading &, const Loading &) = default;
    };
    struct Result {
        ExplanationResult result;
        std::optional<QString> sourceText = {}; ///< absent for errors, which take no follow-ups
        QList<ThreadItem> thread = {};
        SampleAnswers samples = SampleAnswers::none; ///< marked, unless none
        ErrorHelp help = ErrorHelp::none; ///< beside an error
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
                                SampleAnswers samples = SampleAnswers::none)
    {
        return {Result{std::move(result), std::move(sourceText), std::move(thread), samples}};
    }
    /// A message without source text, context or thread.
    static IslandContent error(QString message, ErrorHelp help)
    {
        return {Result{.result = {{}, std::move(message)}, .help = help}};
    }
    static IslandContent demo(ExplanationResult result) { return {Demo{std::move(result)}}; }
    /// A message that has nothing to do with a selection; takes no follow-ups.
    static IslandContent notice(QString message) { return {Demo{{{}, std::move(message)}}}; }

    friend bool operator==(const IslandContent &, const IslandContent &) = default;
};

} // namespace vellumo
