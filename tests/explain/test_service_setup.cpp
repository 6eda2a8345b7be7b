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
using Place = ServiceSetup::KeyPlace;

const QString base = u"https://a.test/v1"_s;
const QString keyAccount = u"serviceKey"_s;

/// A computer whose files, settings and keyring stay while programs come and go.
struct Computer {
    QTemporaryDir folder;
    FakeDefaultsStore defaults;
    FakeSecretItems secrets;
    FakeHttpSession http;
    FakeClock clock;

    [[nodiscard]] QString file() const { return folder.filePath(u"config/Info.json"_s); }
    [[nodiscard]] QByteArray readFile() const
    {
        QFile opened(file());
        return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
    }
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
        setup.onServiceChanged = [this](auto service) { explainer.setService(std::move(service)); };
        QCoreApplication::processEvents();
    }

    /// "sample", what went wrong, or to where a request goes and with which key.
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
    void cleanup();
    void readsAddresses_data();
    void readsAddresses();
    void keepsTheKeyInTheKeyringAlone();
    void tellsWhyThereIsNoKey_data();
    void tellsWhyThereIsNoKey();
    void waitsForAKeyringThatIsSlow();
    void keepsAKeyThatTheKeyringDoesNotTake_data();
    void keepsAKeyThatTheKeyringDoesNotTake();
    void sendsAKeyWhereItWasMeant();
    void choosesBetweenWhatThereIs();
    void sparesWhatItCannotRead();
};

void TestServiceSetup::cleanup()
{
    for (const char *name : {"OPENAI_API_KEY", "OPENAI_BASE_URL"}) {
        qunsetenv(name);
    }
}

void TestServiceSetup::readsAddresses_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("base");
    QTest::addColumn<ServiceAddress::Problem>("problem");
    using Problem = ServiceAddress::Problem;
    const auto good = [](const QString &input, const QString &result) {
        QTest::addRow("%s", qPrintable(input)) << input << result << Problem::none;
    };
    const auto bad = [](const QString &input, Problem problem) {
        QTest::addRow("%s", qPrintable(input)) << input << QString() << problem;
    };
    good(u"  "_s, {});
    good(u" https://a.test/v1/\n"_s, u"https://a.test/v1"_s);
    good(u"https://a.test"_s, u"https://a.test/v1"_s);
    good(u"a.test/api/v1"_s, u"https://a.test/api/v1"_s);
    good(u"localhost:8080"_s, u"http://localhost:8080/v1"_s);
    good(u"192.168.1.20:1234/v1"_s, u"http://192.168.1.20:1234/v1"_s);
    good(u"http://[::1]:80"_s, u"http://[::1]:80/v1"_s);
    good(u"https://a.test/v1/chat/completions"_s, u"https://a.test/v1"_s);
    good(u"https://a.test/v1beta/openai/"_s, u"https://a.test/v1beta/openai"_s);
    bad(u"http://a.test/v1"_s, Problem::insecure);
    bad(u"ftp://a.test/v1"_s, Problem::noAddress);
    bad(u"https://a.test /v1"_s, Problem::noAddress);
    bad(u"https://"_s, Problem::noAddress);
    bad(u"https://me:pw@a.test/v1"_s, Problem::credentials);
    bad(u"https://a.test/v1?key=1"_s, Problem::query);
}

void TestServiceSetup::readsAddresses()
{
    QFETCH(QString, input);
    QFETCH(QString, base);
    QFETCH(ServiceAddress::Problem, problem);
    const ServiceAddress address = ServiceAddress::fromInput(input);
    QCOMPARE(address.problem, problem);
    QCOMPARE(address.base, base);
}

void TestServiceSetup::keepsTheKeyInTheKeyringAlone()
{
    Computer computer;
    computer.writeFile(R"({"VELLUMO_SITE_URL": "https://own.test"})");
    {
        Run run(computer);
        QCOMPARE(run.ask(), u"sample"_s);
        QVERIFY(run.setup.useOwn({base, u" model-1 "_s, u" sk-1\n"_s}));
        QCOMPARE(run.ask(), u"https://a.test/v1/chat/completions Bearer sk-1"_s); // at once
        QVERIFY(!run.explainer.answersAreSamples());
        QCOMPARE(run.setup.keyPlace(), Place::keyring);
    }
    QCOMPARE(computer.secrets.values.value(keyAccount), "sk-1");
    QVERIFY(!computer.readFile().contains("sk-1"));
    QVERIFY(computer.readFile().contains("own.test")); // what else stands there stays
    QCOMPARE(QFile::permissions(computer.file()) & ~(QFile::ReadUser | QFile::WriteUser),
             QFile::ReadOwner | QFile::WriteOwner);
    {
        Run later(computer);
        QCOMPARE(later.ask(), u"https://a.test/v1/chat/completions Bearer sk-1"_s);
        QVERIFY(computer.http.requests.constLast().body.contains("model-1"));
        QVERIFY(later.setup.useOwn({base, {}, {}})); // the key stays
        QCOMPARE(later.ask(), u"https://a.test/v1/chat/completions Bearer sk-1"_s);
        later.setup.forgetKey();
        QCOMPARE(later.ask(), u"https://a.test/v1/chat/completions Bearer none"_s);
    }
    QVERIFY(!computer.secrets.values.contains(keyAccount));
}

void TestServiceSetup::tellsWhyThereIsNoKey_data()
{
    QTest::addColumn<bool>("isLocked");
    QTest::addColumn<bool>("isAbsent");
    QTest::addColumn<QString>("reason");
    QTest::newRow("locked") << true << false << u"the keyring with the key is locked"_s;
    QTest::newRow("absent") << false << true << u"no keyring to read the key from"_s;
    QTest::newRow("removed") << false << false << u"no key for this service"_s;
}

void TestServiceSetup::tellsWhyThereIsNoKey()
{
    QFETCH(bool, isLocked);
    QFETCH(bool, isAbsent);
    QFETCH(QString, reason);
    Computer computer;
    QVERIFY(Run(computer).setup.useOwn({base, {}, u"sk-1"_s}));
    const QByteArray key = computer.secrets.values.take(keyAccount);
    computer.secrets.isLocked = isLocked;
    computer.secrets.isAbsent = isAbsent;
    Run run(computer);
    QCOMPARE(run.ask(), reason); // and no sample
    QCOMPARE(describe(*run.explainer.lastFailure()), reason);
    computer.secrets.values.insert(keyAccount, key);
    computer.secrets.open();
    QCoreApplication::processEvents();
    QCOMPARE(run.ask(), u"https://a.test/v1/chat/completions Bearer sk-1"_s);
}

void TestServiceSetup::waitsForAKeyringThatIsSlow()
{
    Computer computer;
    QVERIFY(Run(computer).setup.useOwn({base, {}, u"sk-1"_s}));
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
    QCOMPARE(outcomes, QStringList());
    computer.clock.advance(100ms);
    QCOMPARE(outcomes, QStringList{u"the keyring has not given the key yet"_s});
    askAside();
    QVERIFY(computer.http.requests.isEmpty());
    computer.secrets.answerAll();
    QCOMPARE(computer.http.requests.size(), 1);
    computer.clock.advance(10s);
    QCOMPARE(outcomes.size(), 1);
}

void TestServiceSetup::keepsAKeyThatTheKeyringDoesNotTake_data()
{
    QTest::addColumn<bool>("isLocked");
    QTest::newRow("locked") << true;
    QTest::newRow("absent") << false;
}

void TestServiceSetup::keepsAKeyThatTheKeyringDoesNotTake()
{
    QFETCH(bool, isLocked);
    Computer computer;
    computer.secrets.isLocked = isLocked;
    computer.secrets.isAbsent = !isLocked;
    Run run(computer);
    QVERIFY(run.setup.useOwn({base, {}, u"sk-1"_s}));
    QCOMPARE(computer.secrets.unlockRequests, 1);
    QCOMPARE(run.ask(), u"https://a.test/v1/chat/completions Bearer sk-1"_s);
    QCOMPARE(run.setup.keyPlace(), Place::session);
    QVERIFY(!computer.readFile().contains("sk-1"));
    computer.secrets.open();
    QCoreApplication::processEvents();
    QCOMPARE(run.setup.keyPlace(), Place::keyring);
    QCOMPARE(computer.secrets.values.value(keyAccount), "sk-1");
}

void TestServiceSetup::sendsAKeyWhereItWasMeant()
{
    Computer computer;
    QVERIFY(Run(computer).setup.useOwn({base, {}, u"sk-1"_s}));
    qputenv("OPENAI_BASE_URL", "https://other.test/v1");
    QCOMPARE(Run(computer).ask(), u"no key for this service"_s);
    qunsetenv("OPENAI_BASE_URL");
    Run run(computer);
    QVERIFY(run.setup.serviceOf({{}, {}, {}}).error() == KeyError{KeyError::Kind::missing});
    QVERIFY(run.setup.useOwn({u"https://a.test/v2"_s, {}, {}}));
    QCOMPARE(run.ask(), u"https://a.test/v2/chat/completions Bearer sk-1"_s);
    QVERIFY(run.setup.useOwn({u"https://other.test/v1"_s, {}, {}}));
    QCOMPARE(run.ask(), u"https://other.test/v1/chat/completions Bearer none"_s);
    QVERIFY(!computer.secrets.values.contains(keyAccount));
}

void TestServiceSetup::choosesBetweenWhatThereIs()
{
    Computer computer;
    computer.writeFile(
        R"({"OPENAI_API_KEY": "sk-file", "OPENAI_BASE_URL": "https://file.test/v1"})");
    Run run(computer);
    QCOMPARE(run.setup.use(), Use::configured);
    QCOMPARE(run.ask(), u"https://file.test/v1/chat/completions Bearer sk-file"_s);
    run.setup.useSamples();
    QVERIFY(run.explainer.answersAreSamples());
    QCOMPARE(Run(computer).setup.use(), Use::samples);
    run.setup.useConfigured();
    QCOMPARE(run.setup.use(), Use::configured);
    QVERIFY(run.setup.useOwn({base, {}, {}})); // the file's key is for another address
    QCOMPARE(run.ask(), u"https://a.test/v1/chat/completions Bearer none"_s);
    qputenv("OPENAI_API_KEY", "sk-env");
    Run forced(computer);
    QCOMPARE(forced.setup.use(), Use::environment);
    QCOMPARE(forced.ask(), u"https://a.test/v1/chat/completions Bearer sk-env"_s);
}

void TestServiceSetup::sparesWhatItCannotRead()
{
    Computer computer;
    computer.writeFile("{ half");
    Run run(computer);
    QVERIFY(!run.setup.useOwn({base, {}, u"sk-1"_s}));
    QCOMPARE(computer.readFile(), "{ half");
    QCOMPARE(run.ask(), u"sample"_s);
    QVERIFY(computer.secrets.values.isEmpty());
}

QTEST_GUILESS_MAIN(TestServiceSetup)
#include "test_service_setup.moc"
