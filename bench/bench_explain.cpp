// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// The overhead of the explanation client: an explanation compared with the same bytes through a
// plain QNetworkAccessManager, over kept connections to a server in another thread.
#include "Report.h"
#include "explain/OpenAIService.h"
#include "http/HttpServer.h"
#include "platform/qt/QtHttpSession.h"
#include "platform/qt/SystemClock.h"
#include <QCoreApplication>
#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QThread>

using namespace vellumo;
using namespace vellumo::bench;
using namespace vellumo::test;
using namespace Qt::StringLiterals;

namespace {

const QByteArray answer =
    R"({"choices": [{"message": {"content": "{\"intent\": \"word_meaning\", )"
    R"(\"translation\": \"潮\", \"explanation\": \"The moon pulls the sea.\"}"}}]})";

/// A server with its own event loop.
class ServerThread : public QThread {
public:
    explicit ServerThread(HttpServer::Security security) : security_(security)
    {
        start();
        while (!isReady_.loadAcquire())
            msleep(1);
    }
    ~ServerThread() override
    {
        quit();
        wait();
    }
    ServerThread(const ServerThread &) = delete;
    ServerThread &operator=(const ServerThread &) = delete;
    ServerThread(ServerThread &&) = delete;
    ServerThread &operator=(ServerThread &&) = delete;

    [[nodiscard]] QUrl base() const { return base_; }

protected:
    void run() override
    {
        HttpServer server(security_);
        server.answer("POST", "/v1/chat/completions", {.body = answer});
        base_ = server.url(u"/v1"_s);
        isReady_.storeRelease(1);
        exec();
    }

private:
    HttpServer::Security security_;
    QUrl base_;
    QAtomicInt isReady_;
};

/// Returns the milliseconds until the explanation has arrived.
double explain(OpenAIService &service, const ExplanationRequest &request)
{
    return timed([&] {
        QEventLoop loop;
        service.explain(request, &loop, [&](const auto &result) {
            if (!result.isOk())
                qFatal("no explanation");
            loop.quit();
        });
        loop.exec();
    });
}

/// Returns the milliseconds until the same answer was read.
double post(QNetworkAccessManager &manager, const QNetworkRequest &request, const QByteArray &body)
{
    return timed([&] {
        QEventLoop loop;
        const std::unique_ptr<QNetworkReply> reply(manager.post(request, body));
        QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
        loop.exec();
        if (reply->readAll() != answer)
            qFatal("no answer");
    });
}

void measure(HttpServer::Security security, const QString &kind, int runs)
{
    HttpServer::trustCertificate();
    const ServerThread server(security);
    QtHttpSession session;
    SystemClock clock;
    OpenAIService service(
        ServiceEndpoint::entered(server.base().toString(), u"model"_s).withKey(u"k"_s), session,
        clock);
    const ExplanationRequest question{u"The tide turns twice a day."_s, u"English"_s};

    QNetworkAccessManager manager;
    QNetworkRequest bare(QUrl(server.base().toString() + u"/chat/completions"_s));
    bare.setRawHeader("Content-Type", "application/json");
    bare.setRawHeader("Authorization", "Bearer k");
    bare.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    const QByteArray body(2500, 'x'); // about the length of the prompt

    explain(service, question); // opens the connections
    post(manager, bare, body);
    QList<double> client;
    QList<double> plain;
    QList<double> overhead;
    for (int run = 0; run < runs; ++run) { // alternating, so that both run under the same load
        client.append(explain(service, question));
        plain.append(post(manager, bare, body));
        overhead.append(client.constLast() - plain.constLast());
    }
    printRow(u"explanation, answer at once, %1"_s.arg(kind), client, "ms");
    printRow(u"the same through a bare client, %1"_s.arg(kind), plain, "ms");
    printRow(u"explanation client's own overhead, %1"_s.arg(kind), overhead, "ms", 2);
    QList<double> ratios;
    for (int run = 0; run < runs; ++run)
        ratios.append(client.at(run) / plain.at(run));
    printRow(u"explanation client to bare client, %1"_s.arg(kind), ratios, "x");
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const Runs runs = runsFromArguments(QCoreApplication::arguments());
    measure(HttpServer::Security::Plain, u"plain"_s, runs.of(301));
    measure(HttpServer::Security::Tls, u"TLS"_s, runs.of(301));
    return 0;
}
