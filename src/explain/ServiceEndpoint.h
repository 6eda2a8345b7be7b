// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Result.h"
#include <QUrl>

namespace vellumo {

class AppConfig;

/// There is no service to ask: neither a proxy nor a key.
struct MissingKeyError { };

/// One chat-completions service: the address that questions are posted to, what authorizes them
/// there, and the model. A credential belongs to origin() and is sent nowhere else.
class ServiceEndpoint {
public:
    /// Base address and model where nothing else is configured or entered.
    static const QString defaultBase;
    static const QString defaultModel;

    /// The proxy of VELLUMO_PROXY_URL with VELLUMO_CLIENT_TOKEN, else OPENAI_BASE_URL with
    /// OPENAI_API_KEY.
    [[nodiscard]] static Result<ServiceEndpoint, MissingKeyError>
    configured(const AppConfig &config);

    /// The service that a user has entered, without its key: servers that need none are sent a
    /// placeholder. Empty or blank parts stand for the defaults.
    [[nodiscard]] static ServiceEndpoint entered(const QString &base, const QString &model);

    /// The same service, asked with this key.
    [[nodiscard]] ServiceEndpoint withKey(const QString &key) const;

    /// Empty if the configured base is no address: each question fails as
    /// HttpError::Kind::noAddress, and the key is not sent anywhere.
    [[nodiscard]] const QUrl &url() const { return url_; }
    /// Scheme, host and port, as originOf() gives them.
    [[nodiscard]] QString origin() const;
    /// Host and port as a person reads them.
    [[nodiscard]] QString host() const;
    /// Value of the Authorization header; "Bearer " where there is no token.
    [[nodiscard]] const QByteArray &authorization() const { return authorization_; }
    [[nodiscard]] const QString &model() const { return model_; }
    /// Whether the service may be told who is signed in: the proxy and the default service only.
    [[nodiscard]] bool acceptsFirebaseToken() const { return acceptsFirebaseToken_; }

private:
    ServiceEndpoint() = default;

    QUrl url_;
    QByteArray authorization_;
    QString model_;
    bool acceptsFirebaseToken_ = false;
};

} // namespace vellumo
