// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/ExplanationTypes.h"
#include <QByteArray>
#include <optional>

/// Every text that is sent to the language model, and the form of its reply.
namespace vellumo::ExplanationPrompt {

enum class Language : quint8 { chinese, english };

/// English for "english", "en" and "en-us" in any mix of cases, Chinese for everything else.
[[nodiscard]] Language language(const QString &setting);

[[nodiscard]] QString englishSystem(SelectedTextKind kind);
[[nodiscard]] QString chineseSystem(SelectedTextKind kind);

/// The system prompt of an explanation, in the request's reply language and for its kind.
[[nodiscard]] QString system(const ExplanationRequest &request);

/// The message that carries the selection, unchanged.
[[nodiscard]] QString user(const ExplanationRequest &request);

/// The system prompt of a follow-up answer in the language of the setting.
[[nodiscard]] QString followUpSystem(const QString &languageSetting);

/// The object that the model replies with to an explanation request.
struct Payload {
    QString intent; ///< required, but not acted on
    QString translation;
    QString explanation;

    /// Absent unless the bytes are one JSON object with all three keys as strings.
    [[nodiscard]] static std::optional<Payload> fromJson(const QByteArray &json);
};

} // namespace vellumo::ExplanationPrompt
