// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/qt/QtHttpSession.h"

#include "platform/qt/QtHttpExchange.h"

#include <QHostAddress>
#include <QNetworkAccessManager>
#include <QNetworkProxyFactory>
#include <QSslSocket>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

/// The proxies of the environment and of the desktop's settings, but none on the way to this very
/// machine, where a model server may listen.
class SystemProxies : public QNetworkProxyFactory {
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &query) override
    {
        const QString host = query.peerHostName();
        if (host == "localhost"_L1 || QHostAddress(host).isLoopback()) {
            return {QNetworkProxy::NoProxy};
        }
        return systemProxyForQuery(query);
    }
};

QString originOf(const QUrl &url)
{
    return url.toString(QUrl::RemoveUserInfo | QUrl::RemovePath | QUrl::RemoveQuery
                        | QUrl::RemoveFragment);
}

} // namespace

QtHttpSession::QtHttpSession() = default;

QtHttpSession::~QtHttpSession()
{
    if (!manager_) {
        return;
    }
    const auto exchanges = manager_->findChildren<QtHttpExchange *>(Qt::FindDirectChildrenOnly);
    for (QtHttpExchange *exchange : exchanges) {
        exchange->cancel();
    }
}

void QtHttpSession::send(const HttpRequest &request, QObject *context, HttpCompletion completion)
{
    // Only of a server that has answered can there be a connection that was kept.
    const QString origin = originOf(request.url);
    const auto repetition = answeringOrigins_.contains(origin)
        ? QtHttpExchange::Repetition::allowed
        : QtHttpExchange::Repetition::forbidden;
    auto *exchange =
        new QtHttpExchange(manager(), request, repetition, context, std::move(completion));
    QObject::connect(exchange, &QtHttpExchange::answered, manager_.get(),
                     [this, origin] { answeringOrigins_.insert(origin); });
}

void QtHttpSession::warmUp()
{
    static_cast<void>(manager());
    static_cast<void>(QSslSocket::supportsSsl());
}

QNetworkAccessManager &QtHttpSession::manager()
{
    if (!manager_) {
        manager_ = std::make_unique<QNetworkAccessManager>();
        manager_->setProxyFactory(new SystemProxies);
    }
    return *manager_;
}

} // namespace vellumo
