// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QList>
#include <QNetworkProxy>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QUrl>
#include <chrono>
#include <functional>
#include <memory>

namespace vellumo {

/// Looks up the proxies for an address. The system may have to download and run a script for this,
/// from a host that never answers, so the lookup runs on another thread, one at a time.
class ProxyLookup : public QObject {
    Q_OBJECT

public:
    /// Returns the proxies for an address, the preferred one first. Runs on another thread, may
    /// block forever, and may still run during exit.
    using System = std::function<QList<QNetworkProxy>(const QUrl &url)>;
    /// Returns the proxies of the environment and of the desktop's settings.
    [[nodiscard]] static QList<QNetworkProxy> ofSystem(const QUrl &url);

    explicit ProxyLookup(System system = &ofSystem,
                         std::chrono::milliseconds timeout = std::chrono::seconds(5));
    ~ProxyLookup() override;
    Q_DISABLE_COPY_MOVE(ProxyLookup)

    /// Calls `done` when found() is final: immediately for this machine, else after the answer or
    /// the timeout. After a timeout later calls do not wait until the system has answered. `done`
    /// is never called when `context` is destroyed first.
    void find(const QUrl &url, QObject *context, std::function<void()> done);

    /// Returns the last result for this address's origin; no proxy before the first one.
    [[nodiscard]] QList<QNetworkProxy> found(const QUrl &url) const;

private:
    struct Question {
        QUrl url;
        QPointer<QObject> context;
        std::function<void()> done;
    };
    struct Mailbox;

    void ask();
    void take(const QString &origin, const QList<QNetworkProxy> &proxies);
    void stopWaiting();
    static void complete(const Question &question);

    System system_;
    QTimer timeout_; ///< runs during the first lookup
    bool isOverdue_ = false;
    QList<Question> questions_; ///< the first one is running
    QHash<QString, QList<QNetworkProxy>> found_; ///< by scheme, host and port
    std::shared_ptr<Mailbox> mailbox_;
};

} // namespace vellumo
