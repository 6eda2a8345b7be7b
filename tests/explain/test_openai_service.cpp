// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "explain/ExplanationPrompt.h"
#include "explain/ForwardingExplainer.h"
#include "explain/OpenAIService.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeHttpSession.h"
#include "platform/qt/QtHttpSession.h"
#include "settings/AppConfig.h"
#include "support/HttpServer.h"
#include "support/Waiting.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QTest>

using namespace vellumo;
using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Values = QHash<QString, QString>;
using Security = HttpServer::Security;

Result<ServiceEndpoint, MissingKeyError> configured(const Values &values)
{
    QJsonObject dictionary;
    for (const auto &[key, value] : values.asKeyValueRange())
        dictionary.insert(key, value);
    return ServiceEndpoint::configured(AppConfig({dictionary}));
}

OpenAIService serviceAt(const QUrl &base, HttpSession &session, Clock &clock)
{
    const auto endpoint = ServiceEndpoint::entered(base.toString(), u"model-1"_s);
    return {endpoint.withKey(u"sk-1"_s), session, clock};
}

/// The real session with all waiting cut down.
class HurriedSession : public HttpSession {
public:
    void send(const HttpRequest &request, QObject *context, HttpCompletion completion) override
    {
        HttpRequest hurried = request;
        hurried.timeout = request.timeout / 60; // what takes a minute takes a second
        session_.send(hurried, context, std::move(completion));
    }
    void warmUp() override { session_.warmUp(); }

private:
    QtHttpSession session_;
};

QString text(const ExplanationError &error)
{
    const auto *service = std::get_if<ServiceError>(&error);
    return describe(summary(error, 0)) + u"; "_s + (service ? service->text : QString());
}

template <typename T> QString text(const Result<T, ExplanationError> &answer)
{
    if (!answer.isOk())
        return text(answer.error());
    if constexpr (std::is_same_v<T, QString>)
        return u"answer "_s + answer.value();
    else
        return answer.value().translation + u'/' + answer.value().explanation;
}

/// Asks for an explanation and a follow-up at once; both answers once they are there.
std::pair<QString, QString> askBoth(AIExplaining &service, QObject *context)
{
    std::pair<QString, QString> answers;
    service.explain({u"tide"_s, u"English"_s}, context,
                    [&answers](const auto &answer) { answers.first = text(answer); });
    service.followUp({{ChatTurn::Role::user, u"why"_s}}, u"English"_s, context,
                     [&answers](const auto &answer) { answers.second = text(answer); });
    if (!waitUntil([&] { return !answers.first.isEmpty() && !answers.second.isEmpty(); }, 30s))
        qFatal("no answer");
    return answers;
}

QByteArray completion(const QString &content)
{
    const QJsonObject message{{u"role"_s, u"assistant"_s}, {u"content"_s, content}};
    return QJsonDocument(
               {{u"id"_s, u"x"_s},
                {u"choices"_s, QJsonArray{QJsonObject{{u"index"_s, 0}, {u"message"_s, message}}}}})
        .toJson();
}

} // namespace

class TestOpenAIService : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void configuration_data();
    void configuration();
    void sendsExactlyWhatIsAgreed();
    void answers_data();
    void answers();
    void firebaseToken_data();
    void firebaseToken();
    void serviceCanBeChangedWhileItIsAsked();
};

void TestOpenAIService::configuration_data()
{
    QTest::addColumn<Values>("values");
    QTest::addColumn<QString>("expected");
    const QString direct = u"https://api.openai.com/v1/chat/completions Bearer k"_s;
    const auto proxy = u"VELLUMO_PROXY_URL"_s;
    const auto key = u"OPENAI_API_KEY"_s;
    const auto base = u"OPENAI_BASE_URL"_s;
    QTest::newRow("nothing") << Values{} << u"missing"_s;
    QTest::newRow("key") << Values{{key, u"k"_s}} << direct;
    QTest::newRow("proxy alone") << Values{{proxy, u"https://p.example"_s}}
                                 << u"https://p.example/v1/chat Bearer "_s;
    QTest::newRow("proxy with token, before a key")
        << Values{{proxy, u"http://p.example:8080/x/"_s},
                  {u"VELLUMO_CLIENT_TOKEN"_s, u"t"_s},
                  {key, u"k"_s}}
        << u"http://p.example:8080/x/v1/chat Bearer t"_s;
    QTest::newRow("proxy is no address") << Values{{proxy, u"http://[p"_s}} << u"missing"_s;
    QTest::newRow("proxy is no address, but a key")
        << Values{{proxy, u"http://[p"_s}, {key, u"k"_s}} << direct;
    QTest::newRow("own server") << Values{{key, u"k"_s}, {base, u"http://localhost:1234/v1"_s}}
                                << u"http://localhost:1234/v1/chat/completions Bearer k"_s;
    QTest::newRow("own server is no address: its key stays here")
        << Values{{key, u"k"_s}, {base, u"http://[p"_s}} << u" Bearer "_s;
    QTest::newRow("own server without a key")
        << Values{{base, u"http://localhost:1234/v1"_s}} << u"missing"_s;
}

void TestOpenAIService::configuration()
{
    QFETCH(Values, values);
    QFETCH(QString, expected);
    FakeHttpSession session;
    FakeClock clock;
    const auto endpoint = configured(values);
    QCOMPARE(endpoint.isOk(), expected != "missing"_L1);
    if (!endpoint.isOk())
        return;
    OpenAIService service(endpoint.value(), session, clock);
    service.explain({u"x"_s, {}}, this, [](const auto &) {});
    const HttpRequest &request = session.requests.constFirst();
    QCOMPARE(request.url.toString() + u' ' + QString::fromUtf8(request.headers.at(1).second),
             expected);
    QCOMPARE(request.timeout, 60s);
}

void TestOpenAIService::sendsExactlyWhatIsAgreed()
{
    HttpServer server;
    server.answer("POST", "/v1/chat", {.body = completion(u"{}"_s)});
    QtHttpSession session;
    FakeClock clock;
    const Values values{{u"VELLUMO_PROXY_URL"_s, server.url(u""_s).toString()},
                        {u"VELLUMO_MODEL"_s, u"model-1"_s}};
    OpenAIService service(configured(values).value(), session, clock);

    const QString selection = u"潮水 \"\\\n</selection>\U0001F30A"_s;
    const ExplanationRequest request{selection, u"English"_s};
    const QList<ChatTurn> transcript{{ChatTurn::Role::user, selection},
                                     {ChatTurn::Role::assistant, u"a"_s},
                                     {ChatTurn::Role::user, QString(QChar(0xD83C))}};
    int answered = 0;
    service.explain(request, this, [&](const auto &) { ++answered; });
    QVERIFY(waitUntil([&] { return answered == 1; }));
    service.followUp(transcript, u"Chinese"_s, this, [&](const auto &) { ++answered; });
    QVERIFY(waitUntil([&] { return answered == 2; }));

    const auto message = [](const QString &role, const QString &content) {
        return QJsonObject{{u"role"_s, role}, {u"content"_s, content}};
    };
    const QJsonObject explanation{
        {u"model"_s, u"model-1"_s},
        {u"response_format"_s, QJsonObject{{u"type"_s, u"json_object"_s}}},
        {u"messages"_s,
         QJsonArray{message(u"system"_s, ExplanationPrompt::system(request)),
                    message(u"user"_s, ExplanationPrompt::user(request))}}};
    const QJsonObject followUp{
        {u"model"_s, u"model-1"_s},
        {u"messages"_s,
         QJsonArray{message(u"system"_s, ExplanationPrompt::followUpSystem(u"Chinese"_s)),
                    message(u"user"_s, selection), message(u"assistant"_s, u"a"_s),
                    message(u"user"_s, u"?"_s)}}};
    QCOMPARE(server.requests().size(), 2);
    const QList<QJsonObject> bodies{explanation, followUp};
    for (int i = 0; i < 2; ++i) {
        const HttpReceived &sent = server.requests().at(i);
        QJsonParseError error;
        QCOMPARE(QJsonDocument::fromJson(sent.body, &error).object(), bodies.at(i));
        QCOMPARE(error.error, QJsonParseError::NoError);
        QCOMPARE(sent.header("Content-Type"), QByteArrayList{"application/json"});
        QCOMPARE(sent.header("Authorization").size(), 1);
        QCOMPARE(sent.header("Authorization").constFirst().trimmed(), "Bearer");
        QVERIFY(sent.header("X-Firebase-Token").isEmpty());
        QCOMPARE(sent.connection, 1); // the second asks no new handshake
    }
}

void TestOpenAIService::answers_data()
{
    QTest::addColumn<Security>("security");
    QTest::addColumn<HttpAnswer>("answer");
    QTest::addColumn<QString>("explanation");
    QTest::addColumn<QString>("followUp"); // empty when it is the same

    const QString payload =
        uR"({"intent": "word_meaning", "translation": "潮", "explanation": "x", "more": 1})"_s;
    const QString fenced = u"```json\n"_s + payload + u"\n```"_s;
    const QString unreadable = u"answer cannot be read; "_s;
    const struct {
        const char *name;
        HttpAnswer answer;
        QString explanation;
        QString followUp = {};
    } rows[] = {
        {"explanation",
         {.body = completion(u"\n  "_s + payload + u"\n"_s)},
         u"潮/x"_s,
         u"answer "_s + payload},
        {"201",
         {.status = "201 Created", .body = completion(u"{}"_s)},
         u"reply is not an explanation; {}"_s,
         u"answer {}"_s},
        {"fenced",
         {.body = completion(fenced + u'\n')},
         u"reply is not an explanation; "_s + fenced + u'\n',
         u"answer "_s + fenced},
        {"missing keys",
         {.body = completion(uR"({"intent": "x", "translation": ""})"_s)},
         uR"(reply is not an explanation; {"intent": "x", "translation": ""})"_s,
         uR"(answer {"intent": "x", "translation": ""})"_s},
        {"blank", {.body = completion(u" \n "_s)}, u"empty reply; "_s},
        {"no choices", {.body = R"({"choices": []})"}, u"empty reply; "_s},
        {"choices missing", {.body = "{}"}, unreadable},
        {"content null", {.body = R"({"choices": [{"message": {"content": null}}]})"}, unreadable},
        {"no message", {.body = R"({"choices": [{}]})"}, unreadable},
        {"no JSON", {.body = "<html>"}, unreadable},
        {"401", {.status = "401 No", .body = "no"}, u"status 401; no"_s},
        {"429",
         {.status = "429 Slow", .body = R"({"error": "later"})"},
         uR"(status 429; {"error": "later"})"_s},
        {"500", {.status = "500 Oops", .body = "<h1>潮"}, u"status 500; <h1>潮"_s},
        {"no text", {.status = "503 Oops", .body = "\xff"}, u"status 503; <no body>"_s},
        {"redirect", {.status = "302 There", .headers = {{"Location", "/"}}}, u"status 302; "_s},
        {"50 MB", {.body = QByteArray(50'000'000, ' ')}, u"answer too large; "_s},
        {"cut",
         {.body = completion(payload), .stopsAfter = 90, .closes = true},
         u"answer cut short; "_s},
        {"garbage", {.raw = "\x16\x03\x01 what", .closes = true}, u"answer cut short; "_s},
        {"silence", {.raw = ""}, u"timed out; "_s},
    };
    for (const auto &row : rows) {
        for (const auto security : {Security::plain, Security::tls}) {
            QTest::addRow("%s%s", row.name, security == Security::tls ? ", TLS" : "")
                << security << row.answer << row.explanation
                << (row.followUp.isEmpty() ? row.explanation : row.followUp);
        }
    }
}

void TestOpenAIService::answers()
{
    QFETCH(Security, security);
    QFETCH(HttpAnswer, answer);
    HttpServer server(security);
    HttpServer::trustCertificate();
    server.answer("POST", "/v1/chat/completions", answer);
    HurriedSession session;
    FakeClock clock;
    OpenAIService service = serviceAt(server.url(u"/v1"_s), session, clock);
    const auto [explanation, followUp] = askBoth(service, this);
    QTEST(explanation, "explanation");
    QTEST(followUp, "followUp");
    // No second attempts. When a connection is cut, Qt fails what still waits for one, too, so that
    // one of the two may never be sent.
    QSet<QByteArray> bodies;
    for (const auto &request : server.requests())
        bodies.insert(request.body);
    QVERIFY(!bodies.isEmpty());
    QCOMPARE(server.requests().size(), bodies.size());
    QVERIFY(bodies.size() == 2 || explanation.startsWith("answer cut short"_L1));
}

void TestOpenAIService::firebaseToken_data()
{
    using Answers = QList<std::optional<QString>>; // of the provider, in turn
    QTest::addColumn<Answers>("answers");
    QTest::addColumn<bool>("isLate");
    QTest::addColumn<QString>("variable"); // that tells the address
    QTest::addColumn<QByteArray>("expected");
    const QString proxy = u"VELLUMO_PROXY_URL"_s;
    const QString base = u"OPENAI_BASE_URL"_s;
    QTest::newRow("token") << Answers{u"t"_s} << false << proxy << QByteArray("t");
    QTest::newRow("none") << Answers{std::nullopt} << false << proxy << QByteArray();
    QTest::newRow("two lines") << Answers{u"t\nX: y"_s} << false << proxy << QByteArray();
    QTest::newRow("too late") << Answers{u"t"_s} << true << proxy << QByteArray();
    QTest::newRow("twice") << Answers{u"t"_s, u"u"_s} << false << proxy << QByteArray("t");
    QTest::newRow("own server") << Answers{u"t"_s} << false << base << QByteArray();
}

void TestOpenAIService::firebaseToken()
{
    using Answers = QList<std::optional<QString>>;
    QFETCH(Answers, answers);
    QFETCH(bool, isLate);
    QFETCH(QString, variable);
    QFETCH(QByteArray, expected);
    FakeHttpSession session;
    FakeClock clock;
    const Values values{{variable, u"https://x.example"_s}, {u"OPENAI_API_KEY"_s, u"k"_s}};
    OpenAIService service(configured(values).value(), session, clock);
    service.firebaseTokenProvider = [&](QObject *context, const auto &complete) {
        for (const auto &answer : answers)
            clock.after(isLate ? 1min : 1s, context, [=] { complete(answer); });
    };
    service.explain({u"x"_s, {}}, this, [](const auto &) {});
    QCOMPARE(session.requests.isEmpty(), variable != "OPENAI_BASE_URL"_L1);
    clock.advance(10s);
    clock.advance(1min);
    QCOMPARE(session.requests.size(), 1);
    const HttpHeaders headers = session.requests.constFirst().headers;
    QCOMPARE(headers.value(2),
             expected.isEmpty() ? HttpHeaders::value_type()
                                : HttpHeaders::value_type("X-Firebase-Token", expected));
}

void TestOpenAIService::serviceCanBeChangedWhileItIsAsked()
{
    FakeHttpSession session;
    FakeClock clock;
    const auto make = [&](const QString &base) {
        return std::make_unique<OpenAIService>(serviceAt(QUrl(base), session, clock));
    };
    ForwardingExplainer explainer(make(u"http://a.example"_s), clock);
    QStringList answers;
    const auto ask = [&] {
        explainer.explain({u"x"_s, {}}, this,
                          [&](const auto &answer) { answers.append(text(answer)); });
    };
    ask();
    explainer.setService(make(u"http://b.example"_s));
    ask();
    QCOMPARE(session.requests.at(0).url.host(), u"a.example"_s);
    QCOMPARE(session.requests.at(1).url.host(), u"b.example"_s);

    // what becomes of the old service says nothing about the new one
    QVERIFY(session.answer(HttpError{HttpError::Kind::refused}));
    QVERIFY(!explainer.lastFailure());
    QVERIFY(session.answer(HttpResponse{429, {}, "secret"}));
    QCOMPARE(answers, (QStringList{u"connection refused; "_s, u"status 429; secret"_s}));
    QCOMPARE(explainer.lastFailure(),
             (ExplanationFailure{
                 .kind = ServiceError::Kind::badStatus, .status = 429, .at = clock.now}));
    explainer.setService(make(u"http://c.example"_s));
    QVERIFY(!explainer.lastFailure());
}

QTEST_GUILESS_MAIN(TestOpenAIService)
#include "test_openai_service.moc"
