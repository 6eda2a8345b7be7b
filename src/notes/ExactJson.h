// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <rapidjson/document.h>

namespace vellumo {

/// Reads JSON text with every number as the nearest double, or as an integer where it is written as
/// one. False for anything else than one whole value in valid UTF-8, and for a number that no
/// double can hold.
[[nodiscard]] bool parseExactly(const QByteArray &json, rapidjson::Document &document);

} // namespace vellumo
