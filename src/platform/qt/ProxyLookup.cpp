// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/qt/ProxyLookup.h"

#include "platform/WebAddress.h"

#include <QNetworkProxyFactory>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <thread>
#include <utility>

namespace vellumo {

namespace {

/// Ends the process without running Qt's destructors, which would wait for the pending proxy
/// lookup.
void endWithoutWaiting(int status, void * /*unused*/)
{
    static_cast<void>(std::fflush(nullptr));
    std::_Exit(status);
}

void neverWaitAtTheEnd()
{
    static const bool isSet = [] {
        // registered late, so that it runs before Qt's destructors
        return ::on_exit(&endWithoutWaiting, nullptr) == 0;
    }();
    static_cast<void>(isSet);
}

} // namespace

/// Receives the worker thread's result; outlives an abandoned lookup.
struct ProxyLookup::Mailbox {
    std::mutex mutex;
    ProxyLookup *owner;

    void deliver(const QString &origin, const QList<QNetworkProxy> &proxies)
    {
        const std::lock_guard lock(mutex);
        if (owner) {
            QMetaObject::invokeMethod(
                owner, [lookup = owner, origin, proxies] { lookup->take(origin, proxies); },
                Qt::QueuedConnection);
        }
    }
};

QList<QNetworkProxy> ProxyLookup::ofSystem(const QUrl &url)
{
    return QNetworkProxyFactory::systemProxyForQuery(QNetworkProxyQuery(url));
}

ProxyLookup::ProxyLookup(System system, std::chrono::milliseconds timeout)
    : system_(std::move(system))
    , mailbox_(std::make_shared<Mailbox>())
{
    mailbox_->owner = this;
    timeout_.setSingleShot(true);
    timeout_.setInterval(timeout);
    timeout_.callOnTimeout(this, &ProxyLookup::stopWaiting);
}

ProxyLookup::~ProxyLookup()
{
    if (!questions_.isEmpty() || isOverdue_) {
        neverWaitAtTheEnd();
    }
    const std::lock_guard lock(mailbox_->mutex);
    mailbox_->owner = nullptr;
}

void ProxyLookup::find(const QUrl &url, QObject *context, std::function<void()> done)
{
    const Question question{url, context, std::move(done)};
    if (isOverdue_ || isLoopback(url)) {
        complete(question);
        return;
    }
    questions_.append(question);
    if (questions_.size() == 1) {
        ask();
    }
}

QList<QNetworkProxy> ProxyLookup::found(const QUrl &url) const
{
    return found_.value(originOf(url), {QNetworkProxy::NoProxy});
}

void ProxyLookup::ask()
{
    timeout_.start();
    // The thread may outlive this object, and the main thread at exit.
    std::thread([system = system_, mailbox = mailbox_, url = questions_.constFirst().url] {
        mailbox->deliver(originOf(url), system(url));
    }).detach();
}

void ProxyLookup::take(const QString &origin, const QList<QNetworkProxy> &proxies)
{
    timeout_.stop();
    found_.insert(origin, proxies);
    if (std::exchange(isOverdue_, false)) {
        return; // abandoned
    }
    const Question question = questions_.takeFirst();
    if (!questions_.isEmpty()) {
        ask();
    }
    complete(question);
}

void ProxyLookup::stopWaiting()
{
    isOverdue_ = true;
    const QList<Question> waiting = std::exchange(questions_, {});
    for (const Question &question : waiting) {
        complete(question);
    }
}

void ProxyLookup::complete(const Question &question)
{
    if (question.context) {
        question.done();
    }
}

} // namespace vellumo
