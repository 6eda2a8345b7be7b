// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "desktop/ModelReply.h"
#include "desktop/ProgramTest.h"
#include "driver/WebPage.h"
#include <QFile>
#include <csignal>

using namespace vellumo::test;

/// The built program with a service that answers, and with services that fail.
class TestProgramService : public ProgramTest {
    Q_OBJECT

private Q_SLOTS:
    void asksTheConfiguredService()
    {
        HttpServer server;
        WebPage page(desktop_, u"tides"_s, u"<p id=sentence>"_s + sentence + u"</p>"_s);
        if (!page.isInstalled())
            QSKIP("Firefox is not installed");
        QVERIFY(startWith(server.url(u"/v1"_s).toString()) && page.open());
        server.answer("POST", target, modelSays(explanationOf(u"It is the moon."_s)));
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

        QCOMPARE(server.requests().size(), 3);
        QCOMPARE(server.connections(), 1);
        for (const HttpReceived &request : server.requests()) {
            QCOMPARE(request.header("Authorization"), QByteArrayList{"Bearer sk-secret"});
            QVERIFY(request.header("X-Firebase-Token").isEmpty());
            QVERIFY(request.body.contains("model-1"));
        }
        const QByteArray last = server.requests().constLast().body; // with the whole conversation
        for (const QString &said : {sentence, u"It is the moon."_s, u"Why twice"_s,
                                    u"Because it turns."_s, u"And where"_s})
            QVERIFY2(last.contains(said.toUtf8()), qPrintable(said));
    }

    void asksOverTls()
    {
        if (outputOf(u"unshare"_s, {u"--mount"_s, u"echo"_s, u"yes"_s}) != "yes\n")
            QSKIP("Without a mount namespace the program cannot be made to trust the test's "
                  "authority");
        HttpServer server(HttpServer::Security::Tls);
        server.answer("POST", target, modelSays(explanationOf(u"It is the moon."_s)));
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

    void saysThatThereIsNoAnswer()
    {
        HttpServer server;
        QVERIFY(readWith(server.url(u"/v1"_s).toString()));
        const struct {
            HttpAnswer answer;
            QString reason;
        } rows[] = {
            {{.status = "429 Slow", .body = R"({"error": "secret"})"}, u"status 429"_s},
            {modelSays(uR"({"explanation": "secret"})"_s), u"reply is not an explanation"_s},
            {{.body = QByteArray(50'000'000, 'x'), .isEndless = true}, u"answer too large"_s},
        };
        for (const auto &[answer, reason] : rows) {
            server.answer("POST", target, answer);
            const QString line =
                u"vellumo: no answer from the explanation service: "_s + reason + u'\n';
            const qsizetype before = vellumo_->process().standardOutput().size();
            desktop_.doubleTap();
            QVERIFY(vellumo_->waitForText(u"vellumo could not explain this yet."_s));
            const QString shown = vellumo_->panelText();
            QVERIFY(shown.contains("vellumo needs a readable selection to continue."_L1));
            QVERIFY2(!shown.contains("secret"_L1) && !shown.contains("entry: "_L1),
                     qPrintable(shown));
            QVERIFY(waitUntil(
                [&] { return vellumo_->process().standardOutput().mid(before) == line; }));
            desktop_.doubleTap();
            QVERIFY(vellumo_->waitForNoPanel() && vellumo_->notes().isEmpty());
        }
        QCOMPARE(server.requests().size(), std::size(rows)); // no request was repeated
    }

    void doesNotWaitForProxiesForEver()
    {
        vellumo_->setEnvironment(u"LD_PRELOAD"_s, QStringLiteral(VELLUMO_TEST_NO_PROXY_ANSWER));
        vellumo_->setEnvironment(u"ASAN_OPTIONS"_s,
                                 qEnvironmentVariable("ASAN_OPTIONS")
                                     + u":verify_asan_link_order=0"_s);
        QVERIFY(readWith(u"https://nowhere.invalid/v1"_s));
        // the program stays responsive meanwhile
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

private:
    bool startWith(const QString &baseUrl)
    {
        vellumo_->setEnvironment(u"OPENAI_API_KEY"_s, u"sk-secret"_s);
        vellumo_->setEnvironment(u"OPENAI_BASE_URL"_s, baseUrl);
        vellumo_->setEnvironment(u"VELLUMO_MODEL"_s, u"model-1"_s);
        return vellumo_->start()
            && vellumo_->process().standardOutput().contains(
                "vellumo: using OpenAI explanation service\n"_L1);
    }

    /// The same, with the sentence selected in an editor.
    bool readWith(const QString &baseUrl) { return startWith(baseUrl) && editor_->open(); }
};

QTEST_MAIN(TestProgramService)
#include "test_program_service.moc"
