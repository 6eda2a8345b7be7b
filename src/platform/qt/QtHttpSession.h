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

/// HTTP/1.1 over a QNetworkAccessManager, created when first needed. After a silent request, a
/// suspend or a change of the machine's addresses the manager is replaced, so that the next request
/// opens a new connection; pending requests keep theirs.
class QtHttpSession : public HttpSession {
public:
    explicit QtHttpSession(ProxyLookup::System proxies = &ProxyLookup::ofSystem,
                           std::chrono::milliseconds proxyTimeout = std::chrono::seconds(5),
                           NetworkPlace::Source place = &NetworkPlace::current);
    /// Completes pending requests as cancelled.
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
    NetworkPlace placeOfManager_; ///< conditions of its connections
    /// Scheme, host and port of servers that have answered on the current manager.
    QSet<QString> answeringOrigins_;
    std::unique_ptr<QNetworkAccessManager> manager_; ///< null until first needed
    /// Former managers; each is deleted by a later request after its last exchange has ended.
    std::vector<std::unique_ptr<QNetworkAccessManager>> left_;
};

} // namespace vellumo
