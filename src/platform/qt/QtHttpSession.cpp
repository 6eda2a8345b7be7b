// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/qt/QtHttpSession.h"

#include "platform/qt/QtHttpExchange.h"
#include "platform/qt/RequestRules.h"

#include <QNetworkAccessManager>
#include <QNetworkProxyFactory>
#include <QSslSocket>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

/// Returns known proxies without blocking.
class KnownProxies : public QNetworkProxyFactory {
public:
    explicit KnownProxies(const ProxyLookup &lookup) : lookup_(lookup) { }

    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &query) override
    {
        return lookup_.found(query.url());
    }

private:
    const ProxyLookup &lookup_;
};

QList<QtHttpExchange *> exchangesOf(const QNetworkAccessManager &manager)
{
    return manager.findChildren<QtHttpExchange *>(Qt::FindDirectChildrenOnly);
}

} // namespace

QtHttpSession::QtHttpSession(ProxyLookup::System proxies, std::chrono::milliseconds proxyTimeout,
                             NetworkPlace::Source place)
    : proxies_(std::move(proxies), proxyTimeout)
    , place_(std::move(place))
{
}

QtHttpSession::~QtHttpSession()
{
    leaveConnections();
    const auto left = std::exchange(left_, {}); // a completion may send another request
    for (const auto &manager : left) {
        const auto exchanges = exchangesOf(*manager);
        for (QtHttpExchange *exchange : exchanges) {
            exchange->cancel();
        }
    }
}

void QtHttpSession::send(const HttpRequest &request, QObject *context, HttpCompletion completion)
{
    if (const auto refusal = refusalOf(request)) {
        QMetaObject::invokeMethod(
            context, [completion = std::move(completion), refusal] { completion(*refusal); },
            Qt::QueuedConnection);
        return;
    }
    std::erase_if(left_, [](const auto &manager) { return exchangesOf(*manager).isEmpty(); });
    if (manager_ && placeOfManager_.isLeft(place_())) {
        leaveConnections();
    }
    // Only servers that have answered can have a kept connection.
    const QString origin = originOf(request.url);
    const auto repetition = answeringOrigins_.contains(origin)
        ? QtHttpExchange::Repetition::Allowed
        : QtHttpExchange::Repetition::Forbidden;
    auto *exchange = new QtHttpExchange(manager(), proxies_, request, repetition, context,
                                        std::move(completion));
    QObject::connect(exchange, &QtHttpExchange::answered, manager_.get(),
                     [this, origin, own = manager_.get()] {
                         if (own == manager_.get()) {
                             answeringOrigins_.insert(origin);
                         }
                     });
    QObject::connect(exchange, &QtHttpExchange::fellSilent, manager_.get(),
                     [this, own = manager_.get()] {
                         if (own == manager_.get()) {
                             leaveConnections();
                         }
                     });
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
        manager_->setProxyFactory(new KnownProxies(proxies_));
        placeOfManager_ = place_();
    }
    return *manager_;
}

void QtHttpSession::leaveConnections()
{
    answeringOrigins_.clear();
    if (manager_) {
        left_.push_back(std::move(manager_));
    }
}

} // namespace vellumo
