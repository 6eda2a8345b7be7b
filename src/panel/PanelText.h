// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/PlainText.h"

/// How much of each text reaches the view; what is longer ends in "…". Whole texts stay with the
/// notes.
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
/// A longer follow-up question is not sent; the panel asks to shorten it.
constexpr qsizetype longestQuestion = 20000;

[[nodiscard]] inline QString question(const QString &text)
{
    return presentableText(text, longestQuestion);
}
[[nodiscard]] inline QString answer(const QString &text)
{
    return presentableText(text, 20000);
}

} // namespace vellumo::panelText
