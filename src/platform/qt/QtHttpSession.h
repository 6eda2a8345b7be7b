// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/HttpSession.h"
#include "platform/qt/ProxyLookup.h"
#include <QSet>
#include <memory>

class QNetworkAccessManager;

namespace vellumo {

/// HTTP over one QNetworkAccessManager, which is made when it is first needed. Speaks HTTP/2 where
/// a TLS server offers it.
class QtHttpSession : public HttpSession {
public:
    explicit QtHttpSession(ProxyLookup::System proxies = &ProxyLookup::ofSystem,
                           std::chrono::milliseconds proxyPatience = std::chrono::seconds(5));
    /// Completes what is still under way as cancelled.
    ~QtHttpSession() override;
    QtHttpSession(const QtHttpSession &) = delete;
    QtHttpSession &operator=(const QtHttpSession &) = delete;
    QtHttpSession(QtHttpSession &&) = delete;
    QtHttpSession &operator=(QtHttpSession &&) = delete;

    void send(const HttpRequest &request, QObject *context, HttpCompletion completion) override;
    void warmUp() override;

private:
    [[nodiscard]] QNetworkAccessManager &manager();

    ProxyLookup proxies_;
    QSet<QString> answeringOrigins_; ///< scheme, host and port of servers that have answered
    std::unique_ptr<QNetworkAccessManager> manager_; ///< absent until it is needed
};

} // namespace vellumo
