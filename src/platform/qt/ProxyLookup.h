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

/// Finds out which proxies lead to an address. The system may have to fetch and run a script for
/// that, from a host that never answers, so it is asked on another thread, one question at a time.
class ProxyLookup : public QObject {
    Q_OBJECT

public:
    /// Answers the proxies for an address, the best first. Runs on another thread, may block for
    /// ever, and may still run when everything else is gone.
    using System = std::function<QList<QNetworkProxy>(const QUrl &url)>;
    /// The proxies of the environment and of the desktop's settings.
    [[nodiscard]] static QList<QNetworkProxy> ofSystem(const QUrl &url);

    explicit ProxyLookup(System system = &ofSystem,
                         std::chrono::milliseconds patience = std::chrono::seconds(5));
    ~ProxyLookup() override;
    Q_DISABLE_COPY_MOVE(ProxyLookup)

    /// Calls `done` once found() is as good as it will be: at once on the way to this very machine,
    /// else after the answer, or when the system has been silent for too long. While it is, later
    /// calls do not wait. Not called once `context` is gone.
    void find(const QUrl &url, QObject *context, std::function<void()> done);

    /// What was found out last for this address's host; no proxy before that.
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
    QTimer patience_; ///< runs while the question at the front is asked
    bool isOverdue_ = false;
    QList<Question> questions_; ///< the first one is being asked
    QHash<QString, QList<QNetworkProxy>> found_; ///< by scheme, host and port
    std::shared_ptr<Mailbox> mailbox_;
};

} // namespace vellumo
