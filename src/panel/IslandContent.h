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

/// What the result panel shows.
struct IslandContent {
    struct Loading {
        QString sourceText;
        friend bool operator==(const Loading &, const Loading &) = default;
    };
    struct Result {
        ExplanationResult result;
        std::optional<QString> sourceText; ///< absent for errors, which take no follow-ups
        QList<ThreadItem> thread;
        bool isFresh = true; ///< has just come from the explainer, and not from a note
        friend bool operator==(const Result &, const Result &) = default;
    };
    struct Demo {
        ExplanationResult result;
        friend bool operator==(const Demo &, const Demo &) = default;
    };

    std::variant<Loading, Result, Demo> value;

    static IslandContent loading(QString sourceText) { return {Loading{std::move(sourceText)}}; }
    static IslandContent result(ExplanationResult result, std::optional<QString> sourceText,
                                QList<ThreadItem> thread)
    {
        return {Result{std::move(result), std::move(sourceText), std::move(thread)}};
    }
    static IslandContent reopened(ExplanationResult result, QString sourceText,
                                  QList<ThreadItem> thread)
    {
        return {Result{std::move(result), std::move(sourceText), std::move(thread), false}};
    }
    static IslandContent demo(ExplanationResult result) { return {Demo{std::move(result)}}; }
    /// A message that has nothing to do with a selection; takes no follow-ups.
    static IslandContent notice(QString message) { return {Demo{{{}, std::move(message)}}}; }

    friend bool operator==(const IslandContent &, const IslandContent &) = default;
};

} // namespace vellumo
