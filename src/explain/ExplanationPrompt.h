// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/ExplanationTypes.h"
#include <QByteArray>
#include <optional>

/// All texts that are sent to the language model, and the form of its reply.
namespace vellumo::ExplanationPrompt {

enum class Language : quint8 { chinese, english };

/// Returns English for "english", "en" and "en-us", ignoring case, and Chinese for everything else.
[[nodiscard]] Language language(const QString &setting);

[[nodiscard]] QString englishSystem(SelectedTextKind kind);
[[nodiscard]] QString chineseSystem(SelectedTextKind kind);

/// Returns the system prompt of an explanation, in the request's reply language and for its kind.
[[nodiscard]] QString system(const ExplanationRequest &request);

/// Returns the message that carries the selection, unchanged.
[[nodiscard]] QString user(const ExplanationRequest &request);

/// Returns the system prompt of a follow-up answer in the language of the setting.
[[nodiscard]] QString followUpSystem(const QString &languageSetting);

/// The model's reply to an explanation request.
struct Payload {
    QString intent; ///< required, but not used
    QString translation;
    QString explanation;

    /// Parses a reply. Absent unless the bytes are one JSON object with all three keys as strings.
    [[nodiscard]] static std::optional<Payload> fromJson(const QByteArray &json);
};

} // namespace vellumo::ExplanationPrompt
