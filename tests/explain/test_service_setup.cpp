// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "explain/ForwardingExplainer.h"
#include "explain/ServiceAddress.h"
#include "explain/ServiceSetup.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/fake/FakeHttpSession.h"
#include "platform/fake/FakeSecretItems.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace vellumo;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Use = ServiceSetup::Use;
using Place = ServiceKeys::Place;
using Removal = ServiceKeys::Removal;

const QString base = u"https://a.test/v1"_s;
const QString keyAccount = u"serviceKey:https://a.test"_s;

const QString sentWithKey = u"https://a.test/v1/chat/completions Bearer sk-1"_s;

/// A computer whose files, settings and keyring persist between runs.
struct Computer {
    QTemporaryDir folder;
    FakeDefaultsStore defaults;
    FakeSecretItems secrets;
    FakeHttpSession http;
    FakeClock clock;

    [[nodiscard]] QString file() const { return folder.filePath(u"config/Info.json"_s); }
    void writeFile(const QByteArray &content) const
    {
        QDir().mkpath(folder.filePath(u"config"_s));
        QFile opened(file());
        QVERIFY(opened.open(QIODevice::WriteOnly) && opened.write(content) == content.size());
    }
};

/// One run of the program.
struct Run {
    Computer &computer;
    AppConfig config = AppConfig::load(computer.file(), computer.folder.filePath(u"built.json"_s));
    ServiceSetup setup{
        {config, computer.defaults, computer.secrets, computer.http, computer.clock}};
    ForwardingExplainer explainer{setup.makeService(), computer.clock};

    explicit Run(Computer &with) : computer(with)
    {
        QObject::connect(&setup, &ServiceSetup::serviceChanged, &explainer,
                         [this] { explainer.setService(setup.makeService()); });
        QCoreApplication::processEvents();
    }

    /// Returns "sample", the failure, or the request's address and key.
    QString ask()
    {
        const qsizetype before = computer.http.requests.size();
        const auto outcome = std::make_shared<QString>();
        explainer.explain({u"tide"_s, u"English"_s}, &setup, [outcome](const auto &answer) {
            *outcome = answer.isOk() ? u"sample"_s : describe(summary(answer.error(), 0));
        });
        QCoreApplication::processEvents();
        if (computer.http.requests.size() == before) {
            computer.clock.advance(2s);
            return *outcome;
        }
        computer.http.answer(HttpError{});
        const HttpRequest &request = computer.http.requests.constLast();
        return request.url.toString() + u' ' + QString::fromUtf8(request.headers.at(1).second);
    }
};

} // namespace

class TestServiceSetup : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        for (const char *name : {"OPENAI_API_KEY", "OPENAI_BASE_URL"}) {
            qunsetenv(name);
        }
    }

    void readsAddresses()
    {
        using Problem = ServiceAddress::Problem;
        const struct {
            QString input;
            QString base;
            Problem problem = Problem::None;
        } rows[] = {
            {u"  "_s, {}},
            {u" https://a.test/v1/\n"_s, u"https://a.test/v1"_s},
            {u"https://a.test"_s, u"https://a.test/v1"_s},
            {u"a.test/api/v1//"_s, u"https://a.test/api/v1"_s},
            {u"localhost:8080"_s, u"http://localhost:8080/v1"_s},
            {u"192.168.1.20:1234/v1"_s, u"http://192.168.1.20:1234/v1"_s},
            {u"http://[::1]:80"_s, u"http://[::1]:80/v1"_s},
            {u"https://a.test/v1/chat/completions"_s, u"https://a.test/v1"_s},
            {u"https://a.test/v1beta/openai/"_s, u"https://a.test/v1beta/openai"_s},
            {u"http://a.test/v1"_s, {}, Problem::Insecure},
            {u"ftp://a.test/v1"_s, {}, Problem::NoAddress},
            {u"https://a.test /v1"_s, {}, Problem::NoAddress},
            {u"https://"_s, {}, Problem::NoAddress},
            {u"https://me:pw@a.test/v1"_s, {}, Problem::Credentials},
            {u"https://a.test/v1?key=1"_s, {}, Problem::Query},
        };
        for (const auto &[input, base, problem] : rows) {
            const ServiceAddress address = ServiceAddress::fromInput(input);
            QVERIFY2(address.problem == problem && address.base == base, qPrintable(input));
        }
    }

    void keepsTheKeyInTheKeyringAlone()
    {
        Computer computer;
        {
            Run run(computer);
            QCOMPARE(run.ask(), u"sample"_s);
            run.setup.useOwn({base, u" model-1 "_s, u" sk-1\n"_s});
            QCOMPARE(run.ask(), sentWithKey); // at once
            QVERIFY(!run.explainer.answersAreSamples());
            QCOMPARE(run.setup.keyPlace(base), Place::Keyring);
        }
        QCOMPARE(computer.secrets.values.value(keyAccount), "sk-1");
        {
            Run later(computer);
            QCOMPARE(later.ask(), sentWithKey);
            QVERIFY(computer.http.requests.constLast().body.contains("model-1"));
            later.setup.useOwn({base, {}, {}}); // the key stays
            QCOMPARE(later.ask(), sentWithKey);
            later.setup.forgetKey(base);
            QCOMPARE(later.ask(), u"https://a.test/v1/chat/completions Bearer none"_s);
        }
        QVERIFY(!computer.secrets.values.contains(keyAccount));
    }

    void explainsWhyThereIsNoKey()
    {
        const struct {
            bool isLocked;
            bool isAbsent;
            QString reason;
        } rows[] = {{true, false, u"the keyring with the key is locked"_s},
                    {false, true, u"no keyring to read the key from"_s},
                    {false, false, u"no key for this service"_s}};
        for (const auto &[isLocked, isAbsent, reason] : rows) {
            Computer computer;
            Run(computer).setup.useOwn({base, {}, u"sk-1"_s});
            const QByteArray key = computer.secrets.values.take(keyAccount);
            computer.secrets.isLocked = isLocked;
            computer.secrets.isAbsent = isAbsent;
            Run run(computer);
            QCOMPARE(run.ask(), reason); // and no sample
            QCOMPARE(describe(*run.explainer.lastFailure()), reason);
            computer.secrets.values.insert(keyAccount, key);
            computer.secrets.open();
            QCoreApplication::processEvents();
            QCOMPARE(run.ask(), sentWithKey);
        }
    }

    void waitsForAKeyringThatIsSlow()
    {
        Computer computer;
        Run(computer).setup.useOwn({base, {}, u"sk-1"_s});
        computer.secrets.isHung = true;
        Run run(computer);
        QStringList outcomes;
        const auto askAside = [&] {
            run.explainer.followUp({}, u"English"_s, &run.setup, [&](const auto &answer) {
                outcomes << (answer.isOk() ? answer.value() : describe(summary(answer.error(), 0)));
            });
            QCoreApplication::processEvents();
        };
        askAside();
        computer.clock.advance(4900ms);
        askAside(); // waits separately for five seconds
        QCOMPARE(outcomes, QStringList());
        computer.clock.advance(100ms);
        QCOMPARE(outcomes, QStringList{u"the keyring has not given the key yet"_s});
        QVERIFY(computer.http.requests.isEmpty());
        computer.secrets.answerAll();
        QCOMPARE(computer.http.requests.size(), 1);
        computer.clock.advance(10s);
        QCOMPARE(outcomes.size(), 1);
    }

    void keepsAKeyThatTheKeyringDoesNotTake_data()
    {
        QTest::addColumn<bool FakeSecretItems::*>("trouble");
        QTest::addColumn<Place>("place");
        QTest::newRow("locked") << &FakeSecretItems::isLocked << Place::Owed;
        QTest::newRow("absent") << &FakeSecretItems::isAbsent << Place::Unkept;
        QTest::newRow("refusing") << &FakeSecretItems::isRefusing << Place::Refused;
    }

    void keepsAKeyThatTheKeyringDoesNotTake()
    {
        QFETCH(bool FakeSecretItems::*, trouble);
        QFETCH(Place, place);
        Computer computer;
        computer.secrets.*trouble = true;
        Run run(computer);
        run.setup.useOwn({base, {}, u"sk-1"_s});
        QCOMPARE(computer.secrets.unlockRequests, 1);
        QCOMPARE(run.setup.keyPlace(base), Place::Storing);
        QCOMPARE(run.ask(), sentWithKey);
        QCOMPARE(run.setup.keyPlace(base), place);
        if (computer.secrets.isRefusing) {
            computer.secrets.values.insert(keyAccount, "sk-1"); // after all
        }
        computer.secrets.open();
        QCoreApplication::processEvents();
        QCOMPARE(run.setup.keyPlace(base), Place::Keyring);
        QCOMPARE(computer.secrets.values.value(keyAccount), "sk-1");
    }

    void sendsAKeyWhereItWasMeant()
    {
        const QString sentToOther = u"https://other.test/v1/chat/completions Bearer "_s;
        const QString other = u"https://other.test/v1"_s;
        Computer computer;
        Run(computer).setup.useOwn({base, u"model-1"_s, u"sk-1"_s});
        qputenv("OPENAI_BASE_URL", other.toUtf8());
        {
            Run elsewhere(computer);
            QCOMPARE(elsewhere.ask(), sentToOther + u"none"_s);
            QVERIFY(elsewhere.setup.resumeOwn());
            elsewhere.setup.useOwn({other, u"model-1"_s, {}});
        }
        qunsetenv("OPENAI_BASE_URL");
        {
            Run run(computer);
            QCOMPARE(run.ask(), sentWithKey); // as before
            run.setup.useOwn({u"https://a.test/v2"_s, {}, {}});
            QCOMPARE(run.ask(), u"https://a.test/v2/chat/completions Bearer sk-1"_s);
            computer.secrets.isLocked = true;
            run.setup.useOwn({other, {}, u"sk-2"_s});
            QCOMPARE(run.ask(), sentToOther + u"sk-2"_s);
        }
        // ended before the keyring was opened
        computer.secrets.forgetOwed();
        computer.secrets.isLocked = false;
        Run run(computer);
        QCOMPARE(run.ask(), u"no key for this service"_s);
        run.setup.useOwn({u"http://a.test/v1"_s, {}, {}});
        QCOMPARE(run.ask(), u"http://a.test/v1/chat/completions Bearer none"_s);
        run.setup.useOwn({base, {}, {}});
        QCOMPARE(run.ask(), sentWithKey);
    }

    void choosesBetweenWhatThereIs()
    {
        Computer computer;
        computer.writeFile(
            "{\"OPENAI_API_KEY\": \"sk-file\", \"OPENAI_BASE_URL\": \"https://file.test/v1\"}");
        Run run(computer);
        QCOMPARE(run.setup.use(), Use::Configured);
        QCOMPARE(run.ask(), u"https://file.test/v1/chat/completions Bearer sk-file"_s);
        run.setup.useSamples();
        QVERIFY(run.explainer.answersAreSamples());
        QCOMPARE(Run(computer).setup.use(), Use::Samples);
        run.setup.useConfigured();
        QCOMPARE(run.setup.use(), Use::Configured);
        QVERIFY(!run.setup.resumeOwn()); // nothing was entered
        QCOMPARE(run.setup.use(), Use::Configured);
        qputenv("OPENAI_API_KEY", "sk-env");
        Run forced(computer);
        QCOMPARE(forced.setup.use(), Use::Environment);
        QCOMPARE(forced.ask(), u"https://file.test/v1/chat/completions Bearer sk-env"_s);
    }

    void keepsTheInstalledServiceAsItIs()
    {
        const QString withoutKey = u"https://a.test/v1/chat/completions Bearer none"_s;
        const std::pair<QByteArray, QString> rows[] = {
            {R"({"OPENAI_API_KEY": "sk-file"})",
             u"https://api.openai.com/v1/chat/completions Bearer sk-file"_s},
            {"{\"OPENAI_API_KEY\": \"sk-file\", \"OPENAI_BASE_URL\": \"https://file.test/v1\"}",
             u"https://file.test/v1/chat/completions Bearer sk-file"_s},
            {R"({"VELLUMO_PROXY_URL": "https://proxy.test", "VELLUMO_CLIENT_TOKEN": "token"})",
             u"https://proxy.test/v1/chat Bearer token"_s},
        };
        for (const auto &[installed, asked] : rows) {
            cleanup();
            Computer computer;
            computer.writeFile(installed);
            Run run(computer);
            QCOMPARE(run.ask(), asked);
            run.setup.useOwn({base, u"own-model"_s, {}});
            QCOMPARE(run.ask(), withoutKey);
            QVERIFY(computer.http.requests.constLast().body.contains("own-model"));
            run.setup.useConfigured();
            QCOMPARE(run.ask(), asked);
            QVERIFY(computer.http.requests.constLast().body.contains(
                ServiceEndpoint::defaultModel.toUtf8()));
            QVERIFY(run.setup.resumeOwn());
            QCOMPARE(run.ask(), withoutKey);
            // The key of the environment belongs to the installed address as well.
            qputenv("OPENAI_API_KEY", "sk-env");
            QCOMPARE(Run(computer).ask(), QString(asked).replace(u"sk-file"_s, u"sk-env"_s));
        }
    }

    void removesAKeyLater()
    {
        Computer computer;
        Run(computer).setup.useOwn({base, {}, u"sk-1"_s});
        computer.secrets.isLocked = true;
        {
            Run run(computer);
            run.setup.forgetKey(base);
            QCoreApplication::processEvents();
            QCOMPARE(run.setup.keyRemoval(base), Removal::Owed);
        }
        computer.secrets.forgetOwed();
        Run run(computer);
        QCOMPARE(run.setup.keyRemoval(base), Removal::Owed);
        QCOMPARE(run.ask(), u"https://a.test/v1/chat/completions Bearer none"_s);
        computer.secrets.open();
        QCoreApplication::processEvents();
        QCOMPARE(run.setup.keyRemoval(base), Removal::Done);
        QVERIFY(computer.secrets.values.isEmpty());
        run.setup.useOwn({base, {}, u"sk-1"_s}); // is not removed again
        QCOMPARE(Run(computer).ask(), sentWithKey);
    }

    void reportsAMistakeInTheConfiguration()
    {
        const QString ignored = u"Info.json has a mistake in line %1; nothing in it counts"_s;
        const QString noAddress = u"OPENAI_BASE_URL is no web address"_s;
        const auto at = [](const char *typed) {
            return QByteArray("{\"OPENAI_API_KEY\": \"sk\", \"OPENAI_BASE_URL\": \"") + typed
                + "\"}";
        };
        const struct {
            QByteArray installed;
            QString fault;
            SampleAnswers samples = SampleAnswers::Misconfigured;
        } rows[] = {
            {"{}", {}, SampleAnswers::Unconfigured},
            {"{\n\"OPENAI_API_KEY\": \"sk\"\n\"a\": 1}", ignored.arg(3)},
            {"", ignored.arg(1)},
            {"[]", ignored.arg(1)},
            {R"({"OPENAI_API_KEY": 12})",
             u"Info.json: the value of OPENAI_API_KEY is no string and does not count"_s},
            {"{\"VELLUMO_PROXY_URL\": \"https://[p\"}", u"VELLUMO_PROXY_URL is no web address"_s},
            // without a valid address nothing is sent
            {at("https//a.test/v1"), noAddress, SampleAnswers::None},
            {at("htps://a.test/v1"), noAddress, SampleAnswers::None},
            {at("https://"), noAddress, SampleAnswers::None},
        };
        for (const auto &[installed, fault, samples] : rows) {
            Computer computer;
            computer.writeFile(installed);
            Run run(computer);
            const auto told = run.setup.configurationFault();
            QCOMPARE(told ? describe(*told).remove(computer.folder.filePath(u"config/"_s))
                          : QString(),
                     fault);
            QCOMPARE(run.explainer.samples(), samples);
            if (samples != SampleAnswers::None)
                QCOMPARE(run.ask(), u"sample"_s);
        }
    }
};

QTEST_GUILESS_MAIN(TestServiceSetup)
#include "test_service_setup.moc"
