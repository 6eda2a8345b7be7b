// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Result.h"
#include <QUrl>

namespace vellumo {

class AppConfig;

/// Neither a proxy nor a key is configured.
struct MissingKeyError { };

/// A chat-completions service: the URL of its requests, their authorization, and the model. The
/// credential belongs to origin() and is sent to no other server.
class ServiceEndpoint {
public:
    /// Base address and model that are used where none is configured or entered.
    static const QString defaultBase;
    static const QString defaultModel;

    /// Returns the proxy of VELLUMO_PROXY_URL with VELLUMO_CLIENT_TOKEN, else OPENAI_BASE_URL with
    /// OPENAI_API_KEY.
    [[nodiscard]] static Result<ServiceEndpoint, MissingKeyError>
    configured(const AppConfig &config);

    /// Returns a service that the user has entered, with a placeholder instead of a key, for
    /// servers that need none. Empty or blank parts mean the defaults.
    [[nodiscard]] static ServiceEndpoint entered(const QString &base, const QString &model);

    /// Returns the same service with this key.
    [[nodiscard]] ServiceEndpoint withKey(const QString &key) const;

    /// Returns the URL of requests. Empty if the configured base is not a URL: each question then
    /// fails with HttpError::Kind::NoAddress, and the key is not sent.
    [[nodiscard]] const QUrl &url() const { return url_; }
    /// Returns scheme, host and port in the form of originOf().
    [[nodiscard]] QString origin() const;
    /// Returns host and port for display.
    [[nodiscard]] QString host() const;
    /// Returns the value of the Authorization header; "Bearer " without a token.
    [[nodiscard]] const QByteArray &authorization() const { return authorization_; }
    [[nodiscard]] const QString &model() const { return model_; }
    /// Returns whether the service may get the ID token of the signed-in user: the proxy and the
    /// default service only.
    [[nodiscard]] bool acceptsFirebaseToken() const { return acceptsFirebaseToken_; }

private:
    ServiceEndpoint() = default;

    QUrl url_;
    QByteArray authorization_;
    QString model_;
    bool acceptsFirebaseToken_ = false;
};

} // namespace vellumo
