// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "support/Desktop.h"
#include "support/Editor.h"
#include "support/HttpServer.h"
#include "support/Program.h"
#include "support/WebPage.h"
#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>

using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Security = HttpServer::Security;

const QString sentence = u"The tide turns twice a day, and nobody asks it why."_s;
const QByteArray target = "/v1/chat/completions";
const QString payload =
    uR"({"intent": "x", "translation": "", "explanation": "It is the moon."})"_s;

/// What a chat-completions service sends when the model replies with this.
HttpAnswer modelSays(const QString &reply)
{
    const QJsonObject message{{u"role"_s, u"assistant"_s}, {u"content"_s, reply}};
    const QJsonArray choices{QJsonObject{{u"message"_s, message}}};
    return {.body = QJsonDocument(QJsonObject{{u"choices"_s, choices}}).toJson()};
}

} // namespace

/// The built program with a service that answers, and with services that do not.
class TestProgramService : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void asksTheConfiguredService();
    void asksOverTls();
    void saysThatThereIsNoAnswer();
    void saysThatItCannotAsk_data();
    void saysThatItCannotAsk();
    void doesNotWaitForProxiesForEver();

private:
    bool startWith(const QString &baseUrl);
    /// The same, with the sentence selected in an editor.
    bool readWith(const QString &baseUrl);
    /// Double-taps, reads the panel, closes it; what is wrong, or nothing.
    QString faultOfPanelFor(const QString &reason);

    Desktop desktop_;
    std::unique_ptr<Program> vellumo_;
    std::unique_ptr<Editor> editor_;
};

void TestProgramService::init()
{
    const QString folder = u"vellumo-%1-%2"_s.arg(QLatin1StringView(QTest::currentTestFunction()),
                                                  QLatin1StringView(QTest::currentDataTag()));
    vellumo_ = std::make_unique<Program>(desktop_, QStringLiteral(VELLUMO_PROGRAM), folder);
    editor_ = std::make_unique<Editor>(desktop_, sentence);
}

void TestProgramService::cleanup()
{
    if (QTest::currentTestFailed() && vellumo_->hasStarted()) {
        qWarning().noquote() << vellumo_->process().standardOutput()
                             << vellumo_->process().errorOutput() << vellumo_->panelText();
    }
    editor_.reset();
    vellumo_.reset();
}

bool TestProgramService::startWith(const QString &baseUrl)
{
    vellumo_->setEnvironment(u"OPENAI_API_KEY"_s, u"sk-secret"_s);
    vellumo_->setEnvironment(u"OPENAI_BASE_URL"_s, baseUrl);
    vellumo_->setEnvironment(u"VELLUMO_MODEL"_s, u"model-1"_s);
    return vellumo_->start()
        && vellumo_->process().standardOutput().contains(
            "vellumo: using OpenAI explanation service\n"_L1);
}

bool TestProgramService::readWith(const QString &baseUrl)
{
    return startWith(baseUrl) && editor_->open();
}

QString TestProgramService::faultOfPanelFor(const QString &reason)
{
    const QString says = u"vellumo: no answer from the explanation service: "_s + reason + u'\n';
    const qsizetype before = vellumo_->process().standardOutput().size();
    const auto said = [&] { return vellumo_->process().standardOutput().mid(before); };
    desktop_.doubleTap();
    if (!vellumo_->waitForText(u"vellumo could not explain this yet."_s))
        return u"no error in the panel"_s;
    const QString shown = vellumo_->panelText();
    if (!shown.contains("vellumo needs a readable selection to continue."_L1))
        return u"the second line is missing: "_s + shown;
    if (shown.contains("secret"_L1) || shown.contains("entry: "_L1) || shown.contains("text: "_L1))
        return u"too much: "_s + shown;
    if (!waitUntil([&] { return said() == says; }))
        return u"the log says "_s + said();
    desktop_.doubleTap();
    return vellumo_->waitForNoPanel() && vellumo_->notes().isEmpty() ? QString()
                                                                     : u"it left something"_s;
}

void TestProgramService::asksTheConfiguredService()
{
    HttpServer server;
    WebPage page(desktop_, u"tides"_s, u"<p id=sentence>"_s + sentence + u"</p>"_s);
    if (!page.isInstalled())
        QSKIP("Firefox is not installed");
    QVERIFY(startWith(server.url(u"/v1"_s).toString()) && page.open());
    server.answer("POST", target, modelSays(payload));
    desktop_.doubleTap();
    QVERIFY(vellumo_->waitForText(u"It is the moon."_s));
    QVERIFY(!vellumo_->panelText().contains("sample"_L1, Qt::CaseInsensitive));
    server.answer("POST", target, modelSays(u"\nBecause it turns.\n"_s));
    QVERIFY(vellumo_->ask(u"Why twice"_s));
    QVERIFY(vellumo_->waitForText(u"Because it turns."_s));
    server.answer("POST", target, modelSays(u"Nearly everywhere."_s));
    QVERIFY(vellumo_->ask(u"And where"_s));
    QVERIFY(vellumo_->waitForText(u"Nearly everywhere."_s));
    desktop_.tap(Key::Escape);
    QVERIFY(vellumo_->waitForNotes(1));
    const QJsonObject note = vellumo_->notes().constFirst();
    QCOMPARE(note["sourceText"_L1].toString(), sentence);
    QCOMPARE(note["explanation"_L1].toString(), u"It is the moon."_s);
    QCOMPARE(note["followUps"_L1].toArray().size(), 2);
    QCOMPARE(note["followUps"_L1][1]["answer"_L1].toString(), u"Nearly everywhere."_s);

    // what was sent, whole; the prompts have a test of their own
    const QByteArrayList keys{"messages model response_format", "messages model", "messages model"};
    QCOMPARE(server.requests().size(), keys.size());
    QCOMPARE(server.connections(), 1);
    QJsonObject body;
    for (qsizetype i = 0; i < keys.size(); ++i) {
        const HttpReceived &request = server.requests().at(i);
        body = QJsonDocument::fromJson(request.body).object();
        QCOMPARE(body.keys().join(u' ').toUtf8(), keys.at(i));
        QCOMPARE(body["model"_L1].toString(), u"model-1"_s);
        QCOMPARE(request.header("Content-Type"), QByteArrayList{"application/json"});
        QCOMPARE(request.header("Authorization"), QByteArrayList{"Bearer sk-secret"});
        QVERIFY(request.header("X-Firebase-Token").isEmpty());
    }
    const auto first = QJsonDocument::fromJson(server.requests().constFirst().body);
    QCOMPARE(first["response_format"_L1], (QJsonObject{{u"type"_s, u"json_object"_s}}));
    QVERIFY(first["messages"_L1][1]["content"_L1].toString().contains(sentence));
    QStringList said;
    for (const QJsonValue message : body["messages"_L1].toArray())
        said.append(message["role"_L1].toString() + u": "_s + message["content"_L1].toString());
    QVERIFY(said.takeFirst().startsWith("system: "_L1));
    QCOMPARE(said,
             (QStringList{u"user: Selected text: "_s + sentence, u"assistant: It is the moon."_s,
                          u"user: Why twice"_s, u"assistant: Because it turns."_s,
                          u"user: And where"_s}));
}

void TestProgramService::asksOverTls()
{
    if (outputOf(u"unshare"_s, {u"--mount"_s, u"echo"_s, u"yes"_s}) != "yes\n")
        QSKIP("Without a mount namespace the program cannot be made to trust the test's authority");
    HttpServer server(Security::tls);
    server.answer("POST", target, modelSays(payload));
    const QTemporaryDir authorities;
    QFile certificate(authorities.filePath(u"authority.pem"_s));
    QVERIFY(certificate.open(QIODevice::WriteOnly));
    certificate.write(HttpServer::certificate().toPem());
    certificate.close();
    vellumo_->setWrapper({u"unshare"_s, u"--mount"_s, u"sh"_s, u"-c"_s,
                          u"mount --bind \"$0\" /etc/ssl/certs && exec \"$@\""_s,
                          authorities.path()});
    QVERIFY(readWith(server.url(u"/v1"_s).toString()));
    desktop_.doubleTap();
    QVERIFY(vellumo_->waitForText(u"It is the moon."_s));
    QVERIFY(vellumo_->ask(u"Why twice"_s));
    QVERIFY(waitUntil([&] { return server.requests().size() == 2; }));
    QCOMPARE(server.connections(), 1);
    QCOMPARE(server.requests().constLast().header("Authorization"),
             QByteArrayList{"Bearer sk-secret"});
}

void TestProgramService::saysThatThereIsNoAnswer()
{
    HttpServer server;
    QVERIFY(readWith(server.url(u"/v1"_s).toString()));
    const struct {
        HttpAnswer answer;
        QString reason;
    } rows[] = {
        {{.status = "401 No", .body = "secret"}, u"status 401"_s},
        {{.status = "429 Slow", .body = R"({"error": "secret"})"}, u"status 429"_s},
        {{.status = "500 Oops", .body = "<html>secret</html>"}, u"status 500"_s},
        {{.status = "307 There", .headers = {{"Location", "/secret"}}}, u"status 307"_s},
        {{.body = R"({"choices": [{"message": {"content": null}}]})"}, u"answer cannot be read"_s},
        {modelSays(u"```json\n"_s + payload + u"\n```"_s), u"reply is not an explanation"_s},
        {modelSays(uR"({"explanation": "secret"})"_s), u"reply is not an explanation"_s},
        {modelSays(u" \n"_s), u"empty reply"_s},
        {{.body = QByteArray(50'000'000, ' ')}, u"answer too large"_s},
        {{.body = QByteArray(50'000'000, 'x'), .isEndless = true}, u"answer too large"_s},
        {{.body = "{\"choices\": [\"secret", .stopsAfter = 50, .closes = true},
         u"answer cut short"_s},
        {{.raw = "", .closes = true}, u"answer cut short"_s},
    };
    for (const auto &row : rows) {
        server.answer("POST", target, row.answer);
        QCOMPARE(faultOfPanelFor(row.reason), QString());
    }
    QCOMPARE(server.requests().size(), std::size(rows)); // nothing was tried twice

    server.stopListening();
    QCOMPARE(faultOfPanelFor(u"connection refused"_s), QString());
}

void TestProgramService::saysThatItCannotAsk_data()
{
    QTest::addColumn<QString>("base"); // empty for the test's own server
    QTest::addColumn<QString>("reason");
    QTest::newRow("no such name") << u"https://nowhere.invalid/v1"_s
                                  << u"name cannot be resolved"_s;
    QTest::newRow("unknown authority") << QString() << u"no trusted TLS connection"_s;
    QTest::newRow("in clear text")
        << u"http://nowhere.invalid/v1"_s << u"not sent, the address must begin with https"_s;
}

void TestProgramService::saysThatItCannotAsk()
{
    QFETCH(QString, base);
    QFETCH(QString, reason);
    const HttpServer server(Security::tls);
    QVERIFY(readWith(base.isEmpty() ? server.url(u"/v1"_s).toString() : base));
    QCOMPARE(faultOfPanelFor(reason), QString());
    QVERIFY(server.requests().isEmpty());
}

void TestProgramService::doesNotWaitForProxiesForEver()
{
    vellumo_->setEnvironment(u"LD_PRELOAD"_s, QStringLiteral(VELLUMO_TEST_NO_PROXY_ANSWER));
    vellumo_->setEnvironment(u"ASAN_OPTIONS"_s,
                             qEnvironmentVariable("ASAN_OPTIONS") + u":verify_asan_link_order=0"_s);
    QVERIFY(readWith(u"https://nowhere.invalid/v1"_s));
    // it goes on living meanwhile
    desktop_.doubleTap();
    QVERIFY(vellumo_->waitForPanel());
    desktop_.doubleTap();
    QVERIFY(vellumo_->waitForNoPanel(4s));
    QVERIFY(vellumo_->waitForText(u"vellumo could not explain this yet."_s));
    vellumo_->process().signal(SIGTERM);
    QVERIFY(vellumo_->process().waitForEnd(5s));
    QVERIFY(!vellumo_->process().crashed());
    QCOMPARE(vellumo_->process().exitCode(), 0);
}

QTEST_MAIN(TestProgramService)
#include "test_program_service.moc"
