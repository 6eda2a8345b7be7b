// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "driver/Waiting.h"
#include "explain/ExplanationPrompt.h"
#include "explain/ForwardingExplainer.h"
#include "explain/OpenAIService.h"
#include "http/HttpServer.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeHttpSession.h"
#include "platform/qt/QtHttpSession.h"
#include "settings/AppConfig.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace vellumo;
using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Values = QHash<QString, QString>;

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
    void configuration()
    {
        QCOMPARE(ServiceEndpoint::entered({}, {}).model(), ServiceEndpoint::defaultModel);
        const QString direct = u"https://api.openai.com/v1/chat/completions Bearer k"_s;
        const auto proxy = u"VELLUMO_PROXY_URL"_s;
        const auto key = u"OPENAI_API_KEY"_s;
        const auto base = u"OPENAI_BASE_URL"_s;
        const struct {
            Values values;
            QString expected;
        } rows[] = {
            {{}, u"missing"_s},
            {{{key, u"k"_s}}, direct},
            {{{proxy, u"https://p.example"_s}}, u"https://p.example/v1/chat Bearer "_s},
            {{{proxy, u"http://p.example:8080/x/"_s},
              {u"VELLUMO_CLIENT_TOKEN"_s, u"t"_s},
              {key, u"k"_s}}, // the proxy goes before the key
             u"http://p.example:8080/x/v1/chat Bearer t"_s},
            {{{proxy, u"http://[p"_s}}, u"missing"_s},
            {{{proxy, u"http://[p"_s}, {key, u"k"_s}}, direct},
            {{{key, u"k"_s}, {base, u"http://localhost:1234/v1"_s}},
             u"http://localhost:1234/v1/chat/completions Bearer k"_s},
            // the key of a server without a valid address goes nowhere else
            {{{key, u"k"_s}, {base, u"http://[p"_s}}, u" Bearer "_s},
            {{{base, u"http://localhost:1234/v1"_s}}, u"missing"_s},
        };
        for (const auto &[values, expected] : rows) {
            FakeHttpSession session;
            FakeClock clock;
            const auto endpoint = configured(values);
            QCOMPARE(endpoint.isOk(), expected != "missing"_L1);
            if (!endpoint.isOk())
                continue;
            OpenAIService service(endpoint.value(), session, clock);
            service.explain({u"x"_s, {}}, this, [](const auto &) {});
            const HttpRequest &request = session.requests.constFirst();
            QCOMPARE(request.url.toString() + u' '
                         + QString::fromUtf8(request.headers.at(1).second),
                     expected);
            QCOMPARE(request.timeout, 60s);
        }
    }

    void sendsExactlyWhatIsAgreed()
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

    void answers()
    {
        const QByteArray payload =
            R"({"intent": "word_meaning", "translation": "潮", "explanation": "x", "more": 1})";
        const QString given = QString::fromUtf8(payload);
        const QString fenced = u"```json\n"_s + given + u"\n```"_s;
        const QString unreadable = u"answer cannot be read; "_s;
        const QString null = uR"({"intent": "x", "translation": null, "explanation": "e"})"_s;
        const auto says = [](const QString &content) {
            return HttpResponse{.status = 200, .body = completion(content)};
        };
        const struct {
            Result<HttpResponse, HttpError> answer;
            QString explanation;
            QString followUp = {}; // empty when it is the same
        } rows[] = {
            {says(u"\n  "_s + given + u"\n"_s), u"潮/x"_s, u"answer "_s + given},
            {HttpResponse{.status = 201, .body = completion(u"{}"_s)},
             u"reply is not an explanation; {}"_s, u"answer {}"_s},
            {says(fenced + u'\n'), u"reply is not an explanation; "_s + fenced + u'\n',
             u"answer "_s + fenced},
            {says(uR"({"intent": "x", "translation": ""})"_s),
             uR"(reply is not an explanation; {"intent": "x", "translation": ""})"_s,
             uR"(answer {"intent": "x", "translation": ""})"_s},
            {says(null), u"reply is not an explanation; "_s + null, u"answer "_s + null},
            {says(u" \n "_s), u"empty reply; "_s},
            {HttpResponse{.status = 200, .body = R"({"choices": []})"}, u"empty reply; "_s},
            {HttpResponse{.status = 200, .body = "{}"}, unreadable},
            {HttpResponse{.status = 200,
                          .body = R"({"choices": [{"message": {"content": null}}]})"},
             unreadable},
            {HttpResponse{.status = 200, .body = R"({"choices": [{}]})"}, unreadable},
            {HttpResponse{.status = 200, .body = "<html>"}, unreadable},
            {HttpResponse{.status = 401, .body = "no"}, u"status 401; no"_s},
            {HttpResponse{.status = 500, .body = "<h1>潮"}, u"status 500; <h1>潮"_s},
            {HttpResponse{.status = 503, .body = "\xff"}, u"status 503; <no body>"_s},
            {HttpError{HttpError::Kind::TooLarge}, u"answer too large; "_s},
        };
        for (const auto &[answer, explanation, followUp] : rows) {
            FakeHttpSession session;
            FakeClock clock;
            OpenAIService service = serviceAt(QUrl(u"https://a.example/v1"_s), session, clock);
            QStringList answers;
            service.explain({u"tide"_s, u"English"_s}, this,
                            [&](const auto &came) { answers.append(text(came)); });
            service.followUp({{ChatTurn::Role::user, u"why"_s}}, u"English"_s, this,
                             [&](const auto &came) { answers.append(text(came)); });
            QVERIFY(session.answer(answer) && session.answer(answer));
            QCOMPARE(answers,
                     (QStringList{explanation, followUp.isEmpty() ? explanation : followUp}));
        }
    }

    void firebaseToken()
    {
        const QString proxy = u"VELLUMO_PROXY_URL"_s;
        const QString base = u"OPENAI_BASE_URL"_s;
        const struct {
            const char *name;
            QList<std::optional<QString>> answers; // of the token provider, one after another
            std::chrono::seconds delay;
            QString variable; // with the address
            QByteArray expected;
        } rows[] = {
            {"token", {u"t"_s}, 1s, proxy, "t"},          {"none", {std::nullopt}, 1s, proxy, {}},
            {"two lines", {u"t\nX: y"_s}, 1s, proxy, {}}, {"too late", {u"t"_s}, 60s, proxy, {}},
            {"twice", {u"t"_s, u"u"_s}, 1s, proxy, "t"},  {"own server", {u"t"_s}, 1s, base, {}},
        };
        for (const auto &row : rows) {
            FakeHttpSession session;
            FakeClock clock;
            const Values values{{row.variable, u"https://x.example"_s},
                                {u"OPENAI_API_KEY"_s, u"k"_s}};
            OpenAIService service(configured(values).value(), session, clock);
            service.firebaseTokenProvider = [&](QObject *context, const auto &complete) {
                for (const auto &answer : row.answers)
                    clock.after(row.delay, context, [=] { complete(answer); });
            };
            service.explain({u"x"_s, {}}, this, [](const auto &) {});
            QCOMPARE(session.requests.isEmpty(), row.variable == proxy);
            clock.advance(10s);
            clock.advance(1min);
            QCOMPARE(session.requests.size(), 1);
            const HttpHeaders headers = session.requests.constFirst().headers;
            QVERIFY2(headers.value(2)
                         == (row.expected.isEmpty()
                                 ? HttpHeaders::value_type()
                                 : HttpHeaders::value_type("X-Firebase-Token", row.expected)),
                     row.name);
        }
    }

    void serviceCanBeChangedWhileItIsAsked()
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

        // a failure of the old service does not count for the new one
        QVERIFY(session.answer(HttpError{HttpError::Kind::Refused}));
        QVERIFY(!explainer.lastFailure());
        QVERIFY(session.answer(HttpResponse{429, {}, "secret"}));
        QCOMPARE(answers, (QStringList{u"connection refused; "_s, u"status 429; secret"_s}));
        QCOMPARE(explainer.lastFailure(),
                 (ExplanationFailure{
                     .kind = ServiceError::Kind::badStatus, .status = 429, .at = clock.now}));
        explainer.setService(make(u"http://c.example"_s));
        QVERIFY(!explainer.lastFailure());
    }
};

QTEST_GUILESS_MAIN(TestOpenAIService)
#include "test_openai_service.moc"
