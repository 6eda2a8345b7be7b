// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <rapidjson/document.h>

namespace vellumo {

/// Parses JSON text. Numbers become the nearest double, or an integer if written as one. Returns
/// false unless the text is exactly one value in valid UTF-8, and for a number beyond the range of
/// a double.
[[nodiscard]] bool parseExactly(const QByteArray &json, rapidjson::Document &document);

} // namespace vellumo
