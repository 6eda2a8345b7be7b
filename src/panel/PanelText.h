// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/PlainText.h"

/// Maximum length of each text in the view; longer texts end in "…". Notes keep the whole texts.
namespace vellumo::panelText {

/// Two lines of preview; the view elides what does not fit.
[[nodiscard]] inline QString source(const QString &text)
{
    return presentableLine(text, 400);
}
[[nodiscard]] inline QString title(const QString &text)
{
    return presentableLine(text, 200);
}
/// A longer follow-up question is rejected with a request to shorten it.
constexpr qsizetype maxQuestionLength = 20000;

[[nodiscard]] inline QString question(const QString &text)
{
    return presentableText(text, maxQuestionLength);
}
[[nodiscard]] inline QString answer(const QString &text)
{
    return presentableText(text, 20000);
}

} // namespace vellumo::panelText
