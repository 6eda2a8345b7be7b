// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

/// Every name that AppConfig is asked for: variables of the environment and entries of Info.json.
namespace vellumo::configuration {

/// Base address of vellumo's own proxy, and what authorizes this program there. Without the proxy
/// the chat-completions service is asked directly.
inline const QString proxyUrl = QStringLiteral("VELLUMO_PROXY_URL");
inline const QString clientToken = QStringLiteral("VELLUMO_CLIENT_TOKEN");
/// The chat-completions service, its key and its model; base and model have defaults.
inline const QString openAIBaseUrl = QStringLiteral("OPENAI_BASE_URL");
inline const QString openAIKey = QStringLiteral("OPENAI_API_KEY");
inline const QString model = QStringLiteral("VELLUMO_MODEL");

/// Accounts and synchronisation.
inline const QString firebaseKey = QStringLiteral("FIREBASE_API_KEY");
inline const QString dataConnectUrl = QStringLiteral("VELLUMO_DATACONNECT_URL");
inline const QString secureTokenUrl = QStringLiteral("VELLUMO_SECURETOKEN_URL");
inline const QString siteUrl = QStringLiteral("VELLUMO_SITE_URL");

inline const QString updateFeedUrl = QStringLiteral("VELLUMO_UPDATE_FEED_URL");

inline const QStringList all{proxyUrl,    clientToken,    openAIBaseUrl,  openAIKey, model,
                             firebaseKey, dataConnectUrl, secureTokenUrl, siteUrl,   updateFeedUrl};

} // namespace vellumo::configuration
