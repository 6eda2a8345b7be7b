// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "driver/Waiting.h"
#include "http/HttpServer.h"
#include "platform/qt/QtHttpSession.h"
#include <QElapsedTimer>
#include <QNetworkProxy>
#include <QSemaphore>
#include <QSslConfiguration>
#include <QTest>

using namespace vellumo;
using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Kind = HttpError::Kind;
using Security = HttpServer::Security;

constexpr qint64 smallLimit = 100'000;

/// Records the result of each call of a completion.
struct Outcomes {
    QList<Result<HttpResponse, HttpError>> all;

    [[nodiscard]] HttpCompletion completion()
    {
        return [this](auto result) { all.append(std::move(result)); };
    }
    [[nodiscard]] bool wait() const
    {
        return waitUntil([this] { return !all.isEmpty(); }, 30s);
    }
};

HttpRequest post(const QUrl &url)
{
    HttpRequest request;
    request.method = "POST";
    request.url = url;
    request.headers = {{"Content-Type", "application/json"}, {"Authorization", "Bearer secret"}};
    request.body = R"({"a":1})";
    return request;
}

HttpRequest get(const QUrl &url)
{
    HttpRequest request;
    request.url = url;
    return request;
}

QByteArray text(const Result<HttpResponse, HttpError> &result)
{
    return result.isOk() ? QByteArray::number(result.value().status) + ' ' + result.value().body
                         : describe(result.error().kind).toUtf8();
}

} // namespace

class TestHttpSession : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QSslConfiguration::setDefaultConfiguration(untouched_); }

    void answers_data()
    {
        QTest::addColumn<Security>("security");
        QTest::addColumn<HttpAnswer>("answer");
        QTest::addColumn<QByteArray>("expected");

        const QByteArray head = "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n";
        const auto failure = [](Kind kind) { return describe(kind).toUtf8(); };
        const auto raw = [](const QByteArray &bytes, bool closes = true) {
            return HttpAnswer{.raw = bytes, .closes = closes};
        };
        const struct {
            const char *name;
            HttpAnswer answer;
            QByteArray expected;
        } rows[] = {
            {"ordinary", {.body = "hello"}, "200 hello"},
            {"nothing", {.status = "204 No Content"}, "204 "},
            {"challenge",
             {.status = "401 Unauthorized",
              .headers = {{"WWW-Authenticate", "Basic realm=\"x\""}},
              .body = "no"},
             "401 no"},
            {"server error", {.status = "500 Oops", .body = "<html>"}, "500 <html>"},
            {"redirect", {.status = "302 Found", .headers = {{"Location", "/x"}}}, "302 "},
            {"redirect of the same method",
             {.status = "307 There", .headers = {{"Location", "/x"}}, .body = "there"},
             "307 there"},
            {"redirect cut in the body",
             {.status = "307 There",
              .headers = {{"Location", "/x"}},
              .body = "0123456789",
              .stopsAfter = 60,
              .closes = true},
             failure(Kind::CutShort)},
            {"interim answer first",
             raw("HTTP/1.1 100 Continue\r\n\r\n" + head + "0123456789", false), "200 0123456789"},
            {"end of connection ends the body", raw("HTTP/1.1 200 OK\r\n\r\nabc"), "200 abc"},
            {"cut in the body", raw(head + "0123"), failure(Kind::CutShort)},
            {"endless line",
             {.body = QByteArray(1000, 'x'), .raw = "", .isEndless = true},
             failure(Kind::CutShort)},
            {"silence", raw({}, false), failure(Kind::TimedOut)},
            {"silence in the body", raw(head + "0123", false), failure(Kind::TimedOut)},
            {"a byte now and then", {.body = "hello", .bytePause = 100ms}, failure(Kind::TimedOut)},
            {"announced too large",
             {.body = QByteArray(smallLimit + 1, 'x'), .stopsAfter = 100},
             failure(Kind::TooLarge)},
            {"just small enough",
             {.body = QByteArray(smallLimit, 'x')},
             "200 " + QByteArray(smallLimit, 'x')},
            {"not what it says it is",
             {.headers = {{"Content-Encoding", "gzip"}}, .body = "0123456789"},
             failure(Kind::Other)},
        };
        for (const auto &row : rows) {
            QTest::addRow("%s", row.name) << Security::Plain << row.answer << row.expected;
            QTest::addRow("%s, TLS", row.name) << Security::Tls << row.answer << row.expected;
        }
    }

    void answers()
    {
        QFETCH(Security, security);
        QFETCH(HttpAnswer, answer);
        QFETCH(QByteArray, expected);
        HttpServer server(security);
        HttpServer::trustCertificate();
        server.answer("POST", "/v1", answer);

        QtHttpSession session;
        Outcomes outcomes;
        HttpRequest request = post(server.url(u"/v1"_s));
        if (expected == describe(Kind::TimedOut).toUtf8()) {
            // the first time is for silence, the second for slowness
            (answer.bytePause > 0ms ? request.totalTimeout : request.timeout) = 1s;
        }
        request.bodyLimit = smallLimit;
        session.send(request, this, outcomes.completion());
        QVERIFY(outcomes.all.isEmpty());
        QVERIFY(outcomes.wait());
        QCOMPARE(text(outcomes.all.constFirst()), expected);

        QCOMPARE_LE(server.requests().size(), 1); // nothing is sent twice
        if (expected == describe(Kind::TimedOut).toUtf8()) // perhaps before it was sent
            QVERIFY(waitUntil([&] { return server.openConnections() == 0; }));
        else
            QCOMPARE(server.requests().size(), 1);
        QCOMPARE(outcomes.all.size(), 1);
    }

    void sendsWhatItIsGivenAndLittleElse()
    {
        HttpServer server;
        server.answer("POST", "/v1?x=1", {.headers = {{"Set-Cookie", "a=b"}, {"X-Y", "z"}}});
        QtHttpSession session;
        for (int round = 1; round <= 2; ++round) {
            Outcomes outcomes;
            session.send(post(server.url(u"/v1?x=1"_s)), this, outcomes.completion());
            QVERIFY(outcomes.wait());
            QCOMPARE(outcomes.all.constFirst().value().header("x-y"), "z");
        }
        const HttpReceived request = server.requests().constLast();
        QCOMPARE(request.body, R"({"a":1})");
        QByteArrayList names;
        for (const auto &[name, value] : request.headers)
            names.append(name.toLower()); // as newer versions of Qt write it
        std::sort(names.begin(), names.end());
        // no cookie, and no request for another protocol
        QCOMPARE(names.join(' '),
                 "accept-encoding accept-language authorization connection content-length "
                 "content-type host user-agent");
        QVERIFY(request.header("User-Agent").constFirst().startsWith("vellumo/"));
    }

    void cannotConnect_data()
    {
        QTest::addColumn<QString>("what");
        QTest::addColumn<Kind>("expected");
        QTest::newRow("nobody listens") << u"refused"_s << Kind::Refused;
        QTest::newRow("no such name") << u"https://nowhere.invalid/v1"_s << Kind::CannotResolve;
        QTest::newRow("below this machine's name, plain")
            << u"http://nowhere.localhost/v1"_s << Kind::Insecure;
        QTest::newRow("unknown authority") << u"untrusted"_s << Kind::Untrusted;
        QTest::newRow("another's certificate") << u"number"_s << Kind::Untrusted;
        QTest::newRow("public, plain") << u"http://nowhere.invalid/v1"_s << Kind::Insecure;
        QTest::newRow("public number, plain") << u"http://192.0.2.1/v1"_s << Kind::Insecure;
        QTest::newRow("private number in a name")
            << u"http://10.0.0.1.nip.invalid/"_s << Kind::Insecure;
        QTest::newRow("another scheme") << u"file:///etc/hostname"_s << Kind::NoAddress;
        QTest::newRow("a key of two lines") << u"key"_s << Kind::Unsendable;
        QTest::newRow("no host") << u"https:///v1"_s << Kind::NoAddress;
        QTest::newRow("no address") << u""_s << Kind::NoAddress;
    }

    void cannotConnect()
    {
        QFETCH(QString, what);
        QFETCH(Kind, expected);
        HttpServer server(Security::Tls);
        if (what != "untrusted"_L1)
            HttpServer::trustCertificate();
        QUrl url = server.url(u"/v1"_s);
        if (what == "refused"_L1)
            server.stopListening();
        else if (what == "number"_L1)
            url.setHost(u"127.0.0.1"_s);
        else if (what != "untrusted"_L1 && what != "key"_L1)
            url = QUrl(what);

        QtHttpSession session;
        Outcomes outcomes;
        HttpRequest request = post(url);
        request.timeout = 20s;
        if (what == "key"_L1)
            request.headers.last().second += "\r\nX-Injected: 1";
        session.send(request, this, outcomes.completion());
        QVERIFY(outcomes.all.isEmpty());
        QVERIFY(outcomes.wait());
        QCOMPARE(text(outcomes.all.constFirst()), describe(expected).toUtf8());
        if (what == "key"_L1) { // the next request would come after it
            server.answer("GET", "/v1", {});
            session.send(get(url), this, outcomes.completion());
            QVERIFY(waitUntil([&] { return outcomes.all.size() == 2; }));
            QCOMPARE(server.requests().size(), 1);
            QCOMPARE(server.requests().constFirst().method, "GET");
        } else {
            QVERIFY(server.requests().isEmpty());
        }
    }

    void keepsConnections()
    {
        HttpServer server(Security::Tls);
        HttpServer::trustCertificate();
        server.answer("POST", "/v1", {.body = "hello"});
        QtHttpSession session;
        const auto send = [&] {
            Outcomes outcomes;
            session.send(post(server.url(u"/v1"_s)), this, outcomes.completion());
            return outcomes.wait() ? text(outcomes.all.constFirst()) : QByteArray();
        };
        QCOMPARE(send(), "200 hello");
        QCOMPARE(send(), "200 hello");
        QCOMPARE(server.connections(), 1);

        // a server that has closed the idle connection costs a new one, not a failure
        server.closeConnections();
        QVERIFY(waitUntil([&] { return server.openConnections() == 0; }));
        QCOMPARE(send(), "200 hello");
        QCOMPARE(server.connections(), 2);
        QCOMPARE(server.requests().size(), 3);
    }

    void leavesConnectionsThatMayBeDead_data()
    {
        using Change = std::function<void(NetworkPlace &)>;
        QTest::addColumn<Change>("change"); // empty when nothing announces it
        QTest::newRow("noticed by their silence") << Change();
        QTest::newRow("after a suspend") << Change([](NetworkPlace &place) { place.slept += 1h; });
        QTest::newRow("in another network") << Change(
            [](NetworkPlace &place) { place.addresses = {QHostAddress(u"192.168.7.2"_s)}; });
    }

    void leavesConnectionsThatMayBeDead()
    {
        using Change = std::function<void(NetworkPlace &)>;
        QFETCH(Change, change);
        HttpServer server(Security::Tls);
        HttpServer::trustCertificate();
        server.answer("POST", "/v1", {.body = "hello", .delay = 200ms});
        NetworkPlace place;
        QtHttpSession session(&ProxyLookup::ofSystem, 5s, [&place] { return place; });
        Outcomes kept;
        for (int i = 0; i < 3; ++i)
            session.send(post(server.url(u"/v1"_s)), this, kept.completion());
        QVERIFY(waitUntil([&] { return kept.all.size() == 3; }, 30s));
        QCOMPARE(server.openConnections(), 3);

        server.loseConnections();
        HttpRequest request = post(server.url(u"/v1"_s));
        request.timeout = 1s;
        if (change) {
            change(place);
        } else {
            Outcomes lost;
            session.send(request, this, lost.completion());
            QVERIFY(lost.wait());
            QCOMPARE(text(lost.all.constFirst()), describe(Kind::TimedOut).toUtf8());
        }
        request.timeout = 20s;
        Outcomes next;
        session.send(request, this, next.completion());
        if (change)
            change(place); // a pending request is not affected by the next one
        session.send(request, this, next.completion());
        QVERIFY(waitUntil([&] { return next.all.size() == 2; }, 10s));
        QCOMPARE(text(next.all.at(0)), "200 hello");
        QCOMPARE(text(next.all.at(1)), "200 hello");
        QCOMPARE(server.requests().size(), 5); // nothing was sent a second time
    }

    void decompresses()
    {
        QByteArray varied;
        for (int i = 0; varied.size() < 1'000'000; ++i)
            varied += QByteArray::number(i * 2654435761U);
        HttpServer server(Security::Tls);
        HttpServer::trustCertificate();
        QtHttpSession session;
        for (const QByteArray &body : {varied, QByteArray(12'000'000, 'x')}) {
            server.answer("GET", "/",
                          {.headers = {{"Content-Encoding", "gzip"}}, .body = gzipped(body)});
            for (const bool isSmallEnough : {true, false}) {
                HttpRequest request = get(server.url(u"/"_s));
                request.bodyLimit = body.size() - (isSmallEnough ? 0 : 1);
                Outcomes outcomes;
                session.send(request, this, outcomes.completion());
                QVERIFY(outcomes.wait());
                QCOMPARE(text(outcomes.all.constFirst()) == "200 " + body, isSmallEnough);
                if (!isSmallEnough)
                    QCOMPARE(text(outcomes.all.constFirst()), describe(Kind::TooLarge).toUtf8());
            }
        }
    }

    void endsInBoundedMemory()
    {
        HttpServer server;
        server.answer("GET", "/", {.body = QByteArray(1 << 20, 'x'), .isEndless = true});
        QtHttpSession session;
        Outcomes outcomes;
        HttpRequest request = get(server.url(u"/"_s));
        request.bodyLimit = 10 << 20;
        session.send(request, this, outcomes.completion());
        QVERIFY(outcomes.wait());
        QCOMPARE(text(outcomes.all.constFirst()), describe(Kind::TooLarge).toUtf8());
        QVERIFY2(server.bytesSent() < 2 * request.bodyLimit,
                 qPrintable(QString::number(server.bytesSent())));
        QVERIFY(waitUntil([&] { return server.openConnections() == 0; }));
    }

    void redirects()
    {
        HttpServer first;
        HttpServer second;
        const auto to = [](const QUrl &url) {
            return HttpAnswer{.status = "302 Found", .headers = {{"Location", url.toEncoded()}}};
        };
        first.answer("GET", "/within", to(first.url(u"/end"_s)));
        first.answer("GET", "/elsewhere", to(second.url(u"/end"_s)));
        first.answer("GET", "/around", to(first.url(u"/around"_s)));
        first.answer("GET", "/unsafe", to(QUrl(u"http://example.org/end"_s)));
        first.answer("GET", "/end", {.body = "first"});
        second.answer("GET", "/end", {.body = "second"});
        const struct {
            QString path;
            HttpHeaders headers;
            QByteArray expected;
        } rows[] = {
            {u"/within"_s, {{"Authorization", "Bearer secret"}}, "200 first"},
            {u"/elsewhere"_s, {{"Authorization", "Bearer secret"}}, describe(Kind::Other).toUtf8()},
            {u"/around"_s, {}, describe(Kind::Other).toUtf8()},
            {u"/unsafe"_s, {}, describe(Kind::Insecure).toUtf8()},
            {u"/elsewhere"_s, {}, "200 second"},
        };
        QtHttpSession session;
        for (const auto &row : rows) {
            QVERIFY(second.requests().isEmpty());
            HttpRequest request = get(first.url(row.path));
            request.headers = row.headers;
            Outcomes outcomes;
            session.send(request, this, outcomes.completion());
            QVERIFY(outcomes.wait());
            QCOMPARE(text(outcomes.all.constFirst()), row.expected);
        }
        QCOMPARE(second.requests().size(), 1); // not for the redirects that were refused
    }

    void endsWithItsContextOrTheSession()
    {
        HttpServer server;
        server.answer("POST", "/v1", {.raw = ""}); // never answers
        auto session = std::make_unique<QtHttpSession>();
        auto context = std::make_unique<QObject>();
        Outcomes abandoned;
        Outcomes cancelled;
        session->send(post(server.url(u"/v1"_s)), context.get(), abandoned.completion());
        session->send(post(server.url(u"/v1"_s)), this, cancelled.completion());
        QVERIFY(waitUntil([&] { return server.requests().size() == 2; }));

        context.reset();
        QVERIFY(waitUntil([&] { return server.openConnections() == 1; }));
        session.reset();
        QVERIFY(waitUntil([&] { return server.openConnections() == 0; }));
        QCOMPARE(cancelled.all.size(), 1);
        QCOMPARE(text(cancelled.all.constFirst()), describe(Kind::Cancelled).toUtf8());
        QVERIFY(abandoned.all.isEmpty());
    }

    void doesNotWaitForProxiesForEver()
    {
        HttpServer proxy; // takes requests for any host
        proxy.answer("GET", "http://10.0.0.1/", {.body = "through the proxy"});
        const QNetworkProxy found(QNetworkProxy::HttpProxy, u"127.0.0.1"_s,
                                  static_cast<quint16>(proxy.url({}).port()));
        constexpr auto timeout = 2s; // long enough for a busy machine to start a thread
        const auto mayAnswer = std::make_shared<QSemaphore>(2);
        auto session = std::make_unique<QtHttpSession>(
            [mayAnswer, found](const QUrl & /*url*/) {
                mayAnswer->acquire();
                return QList<QNetworkProxy>{found};
            },
            timeout);
        const auto send = [&](const QUrl &url) {
            Outcomes outcomes;
            session->send(get(url), this, outcomes.completion());
            return outcomes.wait() ? text(outcomes.all.constFirst()) : QByteArray();
        };
        QCOMPARE(send(QUrl(u"http://10.0.0.1/"_s)), "200 through the proxy");
        mayAnswer->acquire();

        // without an answer the last one is used, and this machine is never asked about
        QCOMPARE(send(QUrl(u"http://10.0.0.1/"_s)), "200 through the proxy");
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(send(QUrl(u"http://127.0.0.1:1/"_s)), describe(Kind::Refused).toUtf8());
        for (int i = 0; i < 20; ++i)
            QCOMPARE(send(QUrl(u"http://10.0.0.1/"_s)), "200 through the proxy");
        QVERIFY(std::chrono::milliseconds(timer.elapsed())
                < 20 * timeout); // no wait for each request

        session.reset();
        mayAnswer->release(2); // too late
        QVERIFY(waitUntil([&] { return mayAnswer.use_count() == 1; }));
        QCoreApplication::processEvents();
    }

private:
    QSslConfiguration untouched_ = QSslConfiguration::defaultConfiguration();
};

QTEST_GUILESS_MAIN(TestHttpSession)
#include "test_http_session.moc"
