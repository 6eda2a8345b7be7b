// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The page of this computer, used with the keyboard.

#include "ShownNotes.h"
#include "computer/FailureText.h"
#include "driver/Waiting.h"
#include <QAccessible>
#include <QClipboard>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace vellumo;
using namespace vellumo::test;

namespace {

const QByteArray answer = "{\"choices\":[{\"message\":{\"content\":\"{\\\"intent\\\":\\\"\\\","
                          "\\\"translation\\\":\\\"\\\",\\\"explanation\\\":\\\"x\\\"}\"}}]}";

void type(const WindowDesk &desk, const char *text)
{
    for (const char *c = text; *c != 0; ++c) {
        QTest::keyClick(desk.window.window(), *c);
    }
}

} // namespace

class TestComputerPage : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"qrc:"_s)); }

    void takesAServiceFromTheKeyboard()
    {
        WindowDesk desk;
        desk.show(); // at the sign-in view
        desk.window.showService();
        QCOMPARE(desk.text("title"), QString());
        QVERIFY(desk.text("sentToService").startsWith("No selected text"_L1));
        type(desk, "a.test");
        desk.key(Qt::Key_Tab);
        type(desk, "model-1");
        desk.key(Qt::Key_Tab);
        type(desk, "sk-1");
        QVERIFY(!desk.item("keyInput")->property("displayText").toString().contains(u's'));
        const QAccessibleInterface *field =
            QAccessible::queryAccessibleInterface(desk.item("keyInput")->parentItem());
        QVERIFY(field->state().focused);
        QCOMPARE(field->text(QAccessible::Name), u"API key"_s);
        QVERIFY(!field->text(QAccessible::Value).contains(u's')); // nor to accessibility clients
        desk.key(Qt::Key_Return);
        QVERIFY(desk.outcome().startsWith("Saved"_L1));
        QCOMPARE(desk.text("addressInput"), u"https://a.test/v1"_s);
        QCOMPARE(desk.text("keyInput"), QString());
        QVERIFY(waitUntil([&] { return desk.text("keyNote").contains("in your keyring"_L1); }));
        QCOMPARE(desk.secrets.values.value(u"serviceKey:https://a.test"_s), "sk-1");
        QVERIFY(desk.text("sentToService").startsWith("To a.test"_L1));
        QVERIFY(!desk.computer.explainer->answersAreSamples());

        desk.item("mode")->forceActiveFocus();
        desk.key(Qt::Key_Left);
        QVERIFY(desk.computer.explainer->answersAreSamples());
        desk.key(Qt::Key_Right); // the entered service counts again
        QVERIFY(!desk.computer.explainer->answersAreSamples());

        desk.item("forgetKey")->forceActiveFocus();
        desk.key(Qt::Key_Space); // asks first
        desk.key(Qt::Key_Escape);
        QVERIFY(desk.secrets.values.contains(u"serviceKey:https://a.test"_s));
        desk.item("forgetKey")->forceActiveFocus();
        desk.key(Qt::Key_Space);
        desk.key(Qt::Key_Tab);
        desk.key(Qt::Key_Space);
        QVERIFY(!desk.secrets.values.contains(u"serviceKey:https://a.test"_s));
        QVERIFY(!desk.item("forgetKey"));
        QVERIFY(desk.text("keyNote").startsWith("There is no key for this address"_L1));
        desk.item("addressInput")->forceActiveFocus();
        desk.key(Qt::Key_Return);
        QVERIFY(desk.outcome().startsWith("Saved. There is no key for this address"_L1));
    }

    void saysWhatIsWrong()
    {
        const std::pair<int, QString> rows[] = {
            {200, u"It works"_s},
            {401, u"was rejected"_s},
            {404, u"does not know this model"_s},
            {429, u"quota"_s},
            {503, u"(503)"_s},
            {0, u"did not answer in time"_s}, // no answer at all
        };
        for (const auto &[status, says] : rows) {
            WindowDesk desk;
            desk.useWithoutAccount();
            desk.computer.enterService();
            desk.show();
            desk.window.showService();
            QVERIFY(waitUntil([&] { return desk.text("keyNote").contains("in your keyring"_L1); }));
            desk.item("tryOut")->forceActiveFocus();
            desk.key(Qt::Key_Space);
            QVERIFY(!desk.item("tryOut")->isEnabled());
            QVERIFY(waitUntil([&] { return desk.http.requests.size() == 1; }));
            if (status != 0)
                desk.http.answer(HttpResponse{.status = status, .body = answer});
            desk.clock.advance(std::chrono::seconds(20));
            const QString said = desk.outcome();
            QVERIFY2(said.contains(says), qPrintable(said));
            QVERIFY(desk.item("tryOut")->isEnabled());
            desk.http.answer(HttpResponse{.status = 200, .body = answer}); // too late
            QCOMPARE(desk.outcome(), said);
            desk.setLanguage(u"Chinese"_s);
            QVERIFY(desk.outcome().contains(QRegularExpression(u"\\p{Han}"_s)));
        }
    }

    void tellsFailuresApart()
    {
        using Network = HttpError::Kind;
        using Key = KeyError::Kind;
        QList<ExplanationFailure> failures;
        for (const int status : {401, 402, 403, 404, 418, 429, 503})
            failures.append({.kind = ServiceError::Kind::badStatus, .status = status});
        failures.append({.kind = ServiceError::Kind::malformedPayload});
        failures.append({.kind = DecodingError()});
        for (const auto kind :
             {Network::TimedOut, Network::CannotResolve, Network::Refused, Network::Untrusted,
              Network::CutShort, Network::TooLarge, Network::Insecure, Network::NoAddress,
              Network::Unsendable, Network::Other})
            failures.append({.kind = kind});
        for (const auto kind : {Key::Late, Key::Locked, Key::Missing, Key::Unavailable})
            failures.append({.kind = kind});
        using Fault = ConfigurationFault::Kind;
        for (const bool isEnglish : {true, false}) {
            const BilingualText words([=] { return isEnglish ? u"English"_s : u"Chinese"_s; });
            QSet<QString> texts;
            for (const ExplanationFailure &failure : failures)
                texts << failureText(failure, words);
            for (const auto kind :
                 {Fault::Unopenable, Fault::Malformed, Fault::Entry, Fault::Address})
                texts << faultText({kind, u"/a/Info.json"_s, 7, u"ENTRY"_s}, words);
            QCOMPARE(texts.size(), failures.size() + 4);
            QVERIFY(!texts.contains(QString()));
            for (const QString &text : std::as_const(texts))
                QVERIFY2(text.contains(QRegularExpression(u"\\p{Han}"_s)) != isEnglish,
                         qPrintable(text));
        }
    }

    void saysWhereTheKeyIs()
    {
        const std::pair<bool FakeSecretItems::*, QLatin1StringView> rows[] = {
            {&FakeSecretItems::isLocked, "when you unlock it"_L1},
            {&FakeSecretItems::isAbsent, "there is no keyring"_L1},
            {&FakeSecretItems::isRefusing, "did not accept it"_L1},
        };
        for (const auto &[trouble, says] : rows) {
            WindowDesk desk;
            desk.useWithoutAccount();
            desk.secrets.*trouble = true;
            desk.show();
            desk.window.showService();
            type(desk, "a.test");
            desk.key(Qt::Key_Tab, 2);
            type(desk, "sk-1");
            desk.key(Qt::Key_Return);
            QVERIFY2(waitUntil([&] { return desk.text("keyNote").contains(says); }), says.data());
        }
    }

    void saysWhyItCannotSave()
    {
        WindowDesk desk;
        desk.useWithoutAccount();
        desk.show();
        desk.window.showService();
        type(desk, "http://a.test");
        desk.key(Qt::Key_Return);
        QVERIFY(desk.text("addressNote").contains("https"_L1));
        type(desk, "x"); // while it is being corrected
        QVERIFY(!desk.text("addressNote").contains("Use https"_L1));
        QVERIFY(desk.computer.explainer->answersAreSamples());
    }

    void takesThePermissionBack()
    {
        WindowDesk desk;
        desk.useWithoutAccount();
        desk.show();
        desk.click("computer");
        desk.item("withdraw")->forceActiveFocus();
        desk.key(Qt::Key_Space);
        QVERIFY(!desk.computer.accessibility.trusted);
        QVERIFY(desk.item("allow"));
        desk.key(Qt::Key_Space); // the button has kept the keyboard focus
        QCOMPARE(desk.computer.calls, QStringList{u"ask for trust"_s});
        desk.computer.accessibility.trusted = true; // from outside
        Q_EMIT desk.computer.accessibility.trustChanged();
        QVERIFY(desk.item("withdraw"));
    }

    void switchesCopyingOff()
    {
        WindowDesk desk;
        desk.useWithoutAccount();
        desk.show();
        desk.click("computer");
        QVERIFY(!desk.text("readsByCopyingText").contains("Never"_L1));
        desk.click("notes");
        desk.defaults.setValue(u"noCopyingIn"_s, QStringList{u"org.kde.okular"_s, u"Gvim"_s});
        desk.click("computer");
        QVERIFY(desk.text("readsByCopyingText").endsWith("Never in: org.kde.okular, Gvim."_L1));
        desk.item("readsByCopying")->forceActiveFocus();
        desk.key(Qt::Key_Space);
        QVERIFY(!desk.preferences.readsByCopying());
        desk.key(Qt::Key_Space);
        QVERIFY(desk.preferences.readsByCopying());
    }

    void fieldsDoNotWatchTheClipboard()
    {
        QGuiApplication::clipboard()->clear();
        WindowDesk desk;
        desk.useWithoutAccount();
        desk.computer.enterService();
        desk.notes.notes = notes(1); // else there is no search
        desk.show();
        desk.window.showService();
        for (const char *name : {"search", "addressInput", "modelInput", "keyInput"}) {
            desk.click(name[0] == 's' ? "notes" : "computer");
            const QQuickItem *field = desk.item(name);
            QVERIFY2(field, name);
            const QSignalSpy asked(field, SIGNAL(canPasteChanged()));
            QGuiApplication::clipboard()->setText(u"news"_s);
            QVERIFY2(asked.isEmpty(), name);
            QGuiApplication::clipboard()->clear();
        }
    }

    void startsAtLogin()
    {
        WindowDesk desk;
        desk.useWithoutAccount();
        desk.computer.login.now = LoginStart::State::SwitchedOff;
        desk.show();
        desk.click("computer");
        QVERIFY(desk.text("startsAtLoginText").contains("turned off"_L1));
        QQuickItem *toggle = desk.item("startsAtLogin");
        toggle->forceActiveFocus();
        // the page scrolls to the focused item
        QVERIFY(waitUntil([&] {
            return desk.item("computerPage")->property("contentY").toReal() > 0
                || toggle->mapToScene({}).y() < desk.window.window()->height();
        }));
        desk.key(Qt::Key_Space);
        QCOMPARE(desk.computer.login.now, LoginStart::State::On);
        QVERIFY(toggle->property("checked").toBool());
        desk.computer.login.isWritable = false;
        desk.key(Qt::Key_Space);
        QVERIFY(toggle->property("checked").toBool());
        QVERIFY(desk.text("startsAtLoginText").contains("could not be written"_L1));
    }

    void showsTheLastProblem()
    {
        WindowDesk desk;
        desk.useWithoutAccount();
        desk.storeSession();
        desk.computer.enterService();
        desk.sync.trouble = SyncError::Kind::Unreachable;
        QVERIFY(waitUntil([&] { return desk.auth.isSignedIn(); }));
        desk.show();
        desk.click("computer");
        QCoreApplication::processEvents();
        const std::pair<SyncError::Kind, QLatin1StringView> words[] = {
            {SyncError::Kind::Unreachable, "Sync now"_L1},
            {SyncError::Kind::Untrusted, "certificate"_L1},
            {SyncError::Kind::AddressNotAllowed, "must be a web address"_L1},
            {SyncError::Kind::ListTooLarge, "32 MiB"_L1},
            {SyncError::Kind::NoteTooLarge, "stays on this computer"_L1},
            {SyncError::Kind::NotConfigured, "no place to sync"_L1},
            {SyncError::Kind::SignedOut, "Sign out and in again"_L1},
            {SyncError::Kind::Refused, "did not take"_L1},
            {SyncError::Kind::Unreadable, "not the account's service"_L1},
        };
        QSet<QString> states;
        for (const auto &[trouble, word] : words) {
            desk.sync.trouble = trouble;
            Q_EMIT desk.sync.changed();
            QVERIFY2(desk.text("syncProblem").contains(word), word.data());
            states << desk.text("syncState");
        }
        QCOMPARE(states.size(), std::size(words));
        QVERIFY(desk.text("explanationProblem").startsWith("None since"_L1));
        desk.computer.explainer->explain({u"tide"_s, u"English"_s}, &desk.window,
                                         [](const auto &) {});
        QVERIFY(waitUntil([&] { return desk.http.answer(HttpResponse{.status = 401}); }));
        QVERIFY(desk.text("explanationProblem").contains("was rejected"_L1));
        desk.computer.explainer->explain({u"tide"_s, u"English"_s}, &desk.window,
                                         [](const auto &) {});
        QVERIFY(waitUntil([&] {
            return desk.http.answer(HttpResponse{
                .status = 200, .body = "{\"choices\":[{\"message\":{\"content\":\"x\"}}]}"});
        }));
        QVERIFY(desk.text("explanationProblem").contains("not in the format"_L1));
        QVERIFY(desk.item("explanationProblem")->property("title").toString().contains(u':'));
        desk.click("notes");
        desk.clock.now += day;
        desk.click("computer");
        QVERIFY(
            desk.item("explanationProblem")->property("title").toString().contains(u"2026-11-"));
    }
};

QTEST_MAIN(TestComputerPage)
#include "test_computer_page.moc"
