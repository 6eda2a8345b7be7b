// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "explain/ServiceEndpoint.h"

#include "platform/WebAddress.h"
#include "settings/AppConfig.h"
#include "settings/ConfigurationKeys.h"

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

/// For servers that need no key but expect the header.
const QString placeholderKey = u"none"_s;

/// Returns the path appended to the base; empty if the result is not a URL.
QUrl joined(const QString &base, const QString &path)
{
    const QUrl url(base.endsWith(u'/') ? base + path : base + u'/' + path, QUrl::StrictMode);
    return url.isValid() ? url : QUrl();
}

QUrl completionsBelow(const QString &base)
{
    return joined(base, u"chat/completions"_s);
}

QByteArray bearer(const QString &token)
{
    return "Bearer " + token.toUtf8();
}

} // namespace

const QString ServiceEndpoint::defaultBase = u"https://api.openai.com/v1"_s;
const QString ServiceEndpoint::defaultModel = u"gpt-5.4-nano-2026-03-17"_s;

Result<ServiceEndpoint, MissingKeyError> ServiceEndpoint::configured(const AppConfig &config)
{
    ServiceEndpoint endpoint;
    endpoint.model_ = config.value(configuration::model).value_or(defaultModel);
    if (const auto proxy = config.value(configuration::proxyUrl)) {
        endpoint.url_ = joined(*proxy, u"v1/chat"_s);
        endpoint.authorization_ =
            bearer(config.value(configuration::clientToken).value_or(QString()));
        endpoint.acceptsFirebaseToken_ = true;
        if (!endpoint.url_.isEmpty()) {
            return endpoint;
        }
    }
    const auto key = config.value(configuration::openAIKey);
    if (!key) {
        return MissingKeyError{};
    }
    const auto base = config.value(configuration::openAIBaseUrl);
    endpoint.url_ = completionsBelow(base.value_or(defaultBase));
    endpoint.authorization_ = bearer(endpoint.url_.isEmpty() ? QString() : *key);
    endpoint.acceptsFirebaseToken_ = !base;
    return endpoint;
}

ServiceEndpoint ServiceEndpoint::entered(const QString &base, const QString &model)
{
    ServiceEndpoint endpoint;
    endpoint.url_ = completionsBelow(base.isEmpty() ? defaultBase : base);
    endpoint.authorization_ = bearer(placeholderKey);
    endpoint.model_ = model.isEmpty() ? defaultModel : model;
    return endpoint;
}

ServiceEndpoint ServiceEndpoint::withKey(const QString &key) const
{
    ServiceEndpoint endpoint = *this;
    endpoint.authorization_ = bearer(url_.isEmpty() ? QString() : key);
    return endpoint;
}

QString ServiceEndpoint::origin() const
{
    return originOf(url_);
}

QString ServiceEndpoint::host() const
{
    QUrl url = url_;
    url.setUserInfo({});
    return url.authority();
}

} // namespace vellumo
