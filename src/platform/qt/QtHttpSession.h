// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/HttpSession.h"
#include "platform/qt/NetworkPlace.h"
#include "platform/qt/ProxyLookup.h"
#include <QSet>
#include <memory>
#include <vector>

class QNetworkAccessManager;

namespace vellumo {

/// HTTP/1.1 over a QNetworkAccessManager, which is made when it is first needed. Its connections
/// are left, each request on its way with the one that it has, when a request has met with silence
/// and when the machine has slept or changed its addresses: the next request opens a new one.
class QtHttpSession : public HttpSession {
public:
    explicit QtHttpSession(ProxyLookup::System proxies = &ProxyLookup::ofSystem,
                           std::chrono::milliseconds proxyPatience = std::chrono::seconds(5),
                           NetworkPlace::Source place = &NetworkPlace::current);
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
    void leaveConnections();

    ProxyLookup proxies_;
    NetworkPlace::Source place_;
    NetworkPlace placeOfManager_; ///< where its connections were made
    /// Scheme, host and port of servers that have answered to the present manager.
    QSet<QString> answeringOrigins_;
    std::unique_ptr<QNetworkAccessManager> manager_; ///< absent until it is needed
    /// Each goes at some request after its last exchange has ended.
    std::vector<std::unique_ptr<QNetworkAccessManager>> left_;
};

} // namespace vellumo
