// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QLatin1StringView>

/// The program's id on the bus and in the installed files.
namespace vellumo::ApplicationName {

inline constexpr QLatin1StringView id("app.vellumo.Vellumo");
inline constexpr QLatin1StringView path("/app/vellumo/Vellumo");
inline constexpr QLatin1StringView interface("org.freedesktop.Application");
inline constexpr QLatin1StringView reportInterface("app.vellumo.Report1");
/// Key of org.freedesktop.Application's platform data.
inline constexpr QLatin1StringView activationToken("activation-token");

} // namespace vellumo::ApplicationName
