// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "account/AuthService.h"
#include "account/GoogleOAuth.h"
#include "account/KeychainStore.h"
#include "onboarding/OnboardingWindowController.h"
#include "onboarding/Survey.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/fake/FakeEventMonitors.h"
#include "platform/fake/FakeHttpSession.h"
#include "platform/fake/FakeSecretItems.h"
#include "support/Waiting.h"
#include "ui/BilingualText.h"
#include "ui/QmlEngine.h"

#include <QFile>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QRegularExpression>
#include <QTest>

using namespace vellumo;
using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// What is visible under that name.
QQuickItem *find(const QQuickItem &root, const QString &name)
{
    const auto items = root.childItems();
    for (QQuickItem *item : items) {
        if (!item->isVisible())
            continue;
        if (item->objectName() == name)
            return item;
        if (QQuickItem *below = find(*item, name))
            return below;
    }
    return nullptr;
}

/// The first run with everything around it; keeps what its owner is told.
struct Desk {
    FakeCalls calls;
    FakeAccessibility accessibility{calls};
    FakeDefaultsStore defaults;
    FakeEventMonitors events;
    FakeClock clock;
    FakeWorkspace workspace;
    FakeHttpSession http;
    FakeSecretItems secrets;
    BilingualText texts{[this] { return defaults.value(u"preferredOutputLanguage"_s).toString(); }};
    KeychainStore keychain{secrets};
    GoogleOAuth browser{workspace, texts, u"https://site.example"_s};
    std::optional<QString> key = u"k"_s;
    AuthService auth{
        {keychain, browser, http, clock, texts, [this](const QString &) { return key; }}};
    QQmlEngine engine;
    QStringList log;
    std::function<void()> endDemo;
    OnboardingWindowController flow{{defaults, auth, accessibility, events, clock, engine, texts}};

    explicit Desk(bool isTrusted = false)
    {
        prepareEngine(engine);
        defaults.setValue(u"preferredOutputLanguage"_s, u"English"_s);
        texts.refresh();
        texts.follow(defaults);
        accessibility.trusted = isTrusted;
        QCoreApplication::processEvents(); // the keyring has nothing
        flow.onFinish = [this] {
            log << (flow.isCompleted() && !flow.window() && isOnboarded() ? u"finish"_s : u"?"_s);
        };
        flow.onClosed = [this] { log << u"closed"_s; };
        flow.onNotesPillHighlight = [this](bool on) { log << (on ? u"lit"_s : u"unlit"_s); };
        flow.onPlayNotesDemo = [this](auto done) {
            log << u"demo"_s;
            endDemo = done;
        };
        flow.onTrustPrompt = [this] { calls << u"show it"_s; };
        flow.onSubmitProfile = [this](const auto &...answers) {
            log << QStringList{answers.value_or(u"-"_s)...}.join(u',');
        };
    }
    void signIn()
    {
        flow.signIn();
        browser.handleCallback(u"vellumo://auth?refreshToken=r&uid=u&email=e"_s);
        QCoreApplication::processEvents();
    }
    void answerToken(int status = 200)
    {
        QVERIFY(http.answer(HttpResponse{
            .status = status,
            .body = status == 200 ? R"({"id_token":"i","refresh_token":"r","expires_in":"9"})"
                                  : R"({"error":{"message":"no"}})"}));
        QCoreApplication::processEvents();
    }
    [[nodiscard]] bool isOnboarded() const
    {
        return defaults.value(u"hasCompletedOnboarding"_s).toBool();
    }
    [[nodiscard]] QQuickItem *item(const QString &name) const
    {
        return find(*flow.window()->contentItem(), name);
    }
    [[nodiscard]] QString text(const QString &name) const
    {
        const QQuickItem *shown = item(name);
        return shown != nullptr ? shown->property("text").toString() : u"(none)"_s;
    }
    [[nodiscard]] bool isEnabled(const QString &name) const
    {
        return item(name) != nullptr && item(name)->isEnabled();
    }
    void click(const QString &name) const
    {
        QVERIFY(QTest::qWaitForWindowExposed(flow.window()));
        static_cast<void>(flow.window()->grabWindow()); // puts everything in its place
        const QQuickItem *button = item(name);
        QVERIFY2(button != nullptr, qPrintable(name));
        QTest::mouseClick(
            flow.window(), Qt::LeftButton, {},
            button->mapToScene({button->width() / 2, button->height() / 2}).toPoint());
    }
};

const QStringList phaseNames{u"signin"_s,    u"privacy"_s, u"permission"_s,
                             u"keytest"_s,   u"select"_s,  u"notes"_s,
                             u"hearabout"_s, u"role"_s,    u"industry"_s};

/// Everything that is written on the card.
QStringList textsOf(const QQuickItem &root)
{
    QStringList found;
    const auto items = root.childItems();
    for (const QQuickItem *item : items) {
        if (item->isVisible()) {
            const QVariant text = item->property("text");
            if (!text.toString().isEmpty())
                found << text.toString();
            found += textsOf(*item);
        }
    }
    return found;
}

} // namespace

class TestOnboarding : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"qrc:"_s)); }
    void cardsHaveAnOrder_data();
    void cardsHaveAnOrder();
    void opensAtTheCardOfThatName();
    void onlyTheSelectTestLetsADoubleTapThrough();
    void optionLightsUp();
    void permissionIsWatched();
    void signsIn();
    void aSignInThatFailsOrIsForgottenCanBeTriedAgain();
    void notesCardLightsThePill();
    void surveyIsAnsweredAndSubmitted();
    void closingStoresNothing();
    void everyCardSpeaksBothLanguages();
    void keysReachEverything();
    void surveyIconsExist();
};

void TestOnboarding::cardsHaveAnOrder_data()
{
    QTest::addColumn<bool>("isTrusted");
    QTest::addColumn<bool>("isSignedIn");
    QTest::addColumn<QList<int>>("next"); // -1: none
    QTest::addColumn<QList<int>>("back");
    QTest::newRow("new") << false << false << QList{1, 2, 3, 4, 5, 6, 7, 8, -1}
                         << QList{-1, 0, 1, 2, 3, 4, 5, 6, 7};
    QTest::newRow("trusted") << true << false << QList{1, 3, 3, 4, 5, 6, 7, 8, -1}
                             << QList{-1, 0, 1, 1, 3, 4, 5, 6, 7};
    QTest::newRow("signed in") << false << true << QList{1, 2, 3, 4, 5, 6, 7, 8, -1}
                               << QList{-1, -1, 1, 2, 3, 4, 5, 6, 7};
    QTest::newRow("both") << true << true << QList{1, 3, 3, 4, 5, 6, 7, 8, -1}
                          << QList{-1, -1, 1, 1, 3, 4, 5, 6, 7};
}

void TestOnboarding::cardsHaveAnOrder()
{
    QFETCH(bool, isTrusted);
    QFETCH(bool, isSignedIn);
    QFETCH(QList<int>, next);
    QFETCH(QList<int>, back);
    Desk desk(isTrusted);
    if (isSignedIn) {
        desk.signIn();
        desk.answerToken();
        desk.flow.present({});
        QCOMPARE(desk.flow.phase(), Phase::privacy);
    }
    for (int card = 0; card < phaseNames.size(); ++card) {
        desk.flow.present(phaseNames[card]);
        QCOMPARE(desk.item(u"back"_s) != nullptr, back[card] >= 0);
        desk.flow.goBack();
        QCOMPARE(desk.flow.position(), back[card] >= 0 ? back[card] : card);
        desk.flow.present(phaseNames[card]);
        desk.flow.advance();
        QCOMPARE(desk.flow.isCompleted(), next[card] < 0);
        QCOMPARE(desk.flow.position(), next[card] >= 0 ? next[card] : card);
    }
}

void TestOnboarding::opensAtTheCardOfThatName()
{
    Desk desk(true);
    const QHash<QString, int> others{{u"accessibility"_s, 2}, {u"gesture"_s, 3}, {u"9"_s, 0}};
    for (const QString &name : phaseNames + others.keys()) {
        desk.flow.present(name);
        QVERIFY(desk.flow.window()->isVisible());
        QCOMPARE(desk.flow.position(), others.value(name, int(phaseNames.indexOf(name))));
    }
    desk.flow.present({});
    QCOMPARE(desk.flow.phase(), Phase::signIn);
}

void TestOnboarding::onlyTheSelectTestLetsADoubleTapThrough()
{
    Desk desk;
    for (const QString &name : phaseNames) {
        desk.flow.present(name);
        const bool isSelect = name == u"select"_s;
        QCOMPARE(desk.flow.handleDemoTrigger(), isSelect);
        QCOMPARE(desk.flow.isTestPassed(), name == u"keytest"_s);
        desk.flow.noteExplanationShown();
        QCOMPARE(desk.flow.isTestPassed(), isSelect || name == u"keytest"_s);
        if (desk.flow.isTestPassed()) {
            const QString test = isSelect ? u"select"_s : u"gesture"_s;
            QCOMPARE(desk.text(test + u"HintLabel"_s), u"✓ That's it"_s);
            desk.click(test + u"ContinueButton"_s);
            QCOMPARE(desk.flow.position(), phaseNames.indexOf(name) + 1);
        }
    }
}

void TestOnboarding::optionLightsUp()
{
    Desk desk;
    desk.flow.present(u"keytest"_s);
    QCOMPARE(desk.events.localMasks(), QList<EventMask>{0x1000});
    QVERIFY(!desk.isEnabled(u"gestureContinueButton"_s));
    const auto isLit = [&] {
        return desk.item(u"keyboardDiagram"_s)->property("isOptionDown").toBool();
    };
    for (const auto &[flags, lit] : {std::pair(ModifierFlag::Option, true),
                                     {ModifierFlag::Shift, false},
                                     {ModifierFlag::Option | ModifierFlag::CapsLock, true},
                                     {0U, false}}) {
        QVERIFY(desk.events.sendLocal({.modifierFlags = flags}));
        QCOMPARE(isLit(), lit);
    }
    desk.click(u"skip"_s);
    QCOMPARE(desk.flow.phase(), Phase::selectTest);
    QVERIFY(desk.events.localMasks().isEmpty());
}

void TestOnboarding::permissionIsWatched()
{
    Desk desk;
    desk.flow.present(u"permission"_s);
    desk.click(u"permissionAllowButton"_s);
    QCOMPARE(desk.calls.mid(0, 1), QStringList{u"show it"_s});
    QCOMPARE(desk.calls.size(), 2); // and the platform was asked
    QVERIFY(!desk.isEnabled(u"permissionContinueButton"_s));
    for (const bool isTrusted : {true, false, true}) {
        desk.accessibility.trusted = isTrusted;
        desk.clock.advance(799ms);
        QCOMPARE(desk.flow.isTrusted(), !isTrusted);
        desk.clock.advance(1ms);
        QCOMPARE(desk.text(u"permissionAllowButton"_s), isTrusted ? u"✓ Enabled"_s : u"Allow"_s);
        QCOMPARE(desk.isEnabled(u"permissionAllowButton"_s), !isTrusted);
    }
    desk.click(u"permissionContinueButton"_s);
    QCOMPARE(desk.flow.phase(), Phase::keyTest);
    desk.accessibility.trusted = false; // taken back while another card is shown
    desk.clock.advance(1s);
    desk.flow.goBack();
    QCOMPARE(desk.flow.phase(), Phase::permission);
    QCOMPARE(desk.text(u"permissionAllowButton"_s), u"Allow"_s);
    desk.click(u"notNow"_s);
    QCOMPARE(desk.flow.phase(), Phase::keyTest);
}

void TestOnboarding::signsIn()
{
    Desk desk;
    desk.flow.present({});
    desk.click(u"signInButton"_s);
    QCOMPARE(desk.text(u"signInButton"_s), u"Opening browser…"_s);
    QVERIFY(!desk.isEnabled(u"signInButton"_s));
    QCOMPARE(desk.workspace.openedUrls.size(), 1);
    desk.browser.handleCallback(u"vellumo://auth?refreshToken=r&uid=u&email=e"_s);
    QCoreApplication::processEvents();
    QCOMPARE(desk.flow.phase(), Phase::signIn); // until there is a token
    desk.answerToken();
    QCOMPARE(desk.flow.phase(), Phase::privacy);
    QVERIFY(desk.item(u"back"_s) == nullptr);

    Desk failing;
    failing.flow.present({});
    failing.signIn();
    failing.answerToken(400);
    QCOMPARE(failing.flow.phase(), Phase::signIn);
    QCOMPARE(failing.flow.signInError(), u"no"_s);
    QCOMPARE(failing.text(u"withoutAccount"_s), u"Continue anyway"_s); // there is a session
}

void TestOnboarding::aSignInThatFailsOrIsForgottenCanBeTriedAgain()
{
    Desk desk;
    desk.key.reset();
    desk.flow.present({});
    desk.click(u"signInButton"_s);
    QTRY_COMPARE(desk.flow.signInError(), u"Firebase is not configured."_s);
    desk.flow.switchLanguage();
    QCOMPARE(desk.flow.signInError(), u"Firebase 未配置。"_s);
    desk.key = u"k"_s;
    desk.click(u"signInButton"_s);
    QVERIFY(desk.flow.signInError().isEmpty());
    desk.click(u"signInButton"_s); // cannot be pressed
    QCOMPARE(desk.workspace.openedUrls.size(), 1);
    desk.clock.advance(20s); // the tab was closed
    desk.click(u"signInButton"_s);
    QCoreApplication::processEvents();
    QCOMPARE(desk.workspace.openedUrls.size(), 2);
    QVERIFY(desk.flow.signInError().isEmpty()); // of the first attempt
    QVERIFY(desk.flow.isOpeningBrowser());
    desk.click(u"withoutAccount"_s);
    QCOMPARE(desk.flow.phase(), Phase::privacy);
    QVERIFY(desk.defaults.value(u"usesWithoutAccount"_s).toBool());
    desk.flow.goBack();
    QVERIFY(desk.isEnabled(u"signInButton"_s));
    desk.browser.handleCallback(u"vellumo://auth?refreshToken=r&uid=u&email=e"_s); // after all
    QTRY_COMPARE(desk.flow.phase(), Phase::privacy);
    desk.answerToken(400);
    QCOMPARE(desk.flow.phase(), Phase::privacy);
}

void TestOnboarding::notesCardLightsThePill()
{
    Desk desk;
    desk.flow.present(u"notes"_s);
    QCOMPARE(std::exchange(desk.log, {}), (QStringList{u"lit"_s, u"demo"_s}));
    const auto endOfFirst = desk.endDemo;
    desk.flow.goBack();
    QCOMPARE(std::exchange(desk.log, {}), QStringList{u"unlit"_s});
    desk.flow.advance();
    endOfFirst();
    QVERIFY(!desk.flow.isDemoOver());
    desk.endDemo();
    QVERIFY(desk.flow.isDemoOver());
    desk.click(u"notesContinueButton"_s);
    QCOMPARE(desk.log, (QStringList{u"lit"_s, u"demo"_s, u"unlit"_s}));
}

void TestOnboarding::surveyIsAnsweredAndSubmitted()
{
    Desk desk;
    desk.flow.present(u"hearabout"_s);
    QVERIFY(!desk.isEnabled(u"surveyContinueButton"_s));
    desk.click(u"YouTube"_s);
    desk.click(u"AI tools"_s); // instead
    desk.click(u"surveyContinueButton"_s);
    desk.flow.switchLanguage();
    QCOMPARE(desk.text(u"Customer support"_s), u"客户支持"_s);
    desk.click(u"Customer support"_s);
    desk.flow.goBack();
    QCOMPARE(desk.flow.surveyAnswer(), u"AI tools"_s);
    desk.click(u"surveyContinueButton"_s);
    desk.click(u"surveyContinueButton"_s);
    QVERIFY(!desk.isOnboarded());
    desk.flow.advance(); // the last question without an answer
    QCOMPARE(desk.log, (QStringList{u"AI tools,Customer support,-"_s, u"finish"_s}));
    desk.flow.advance();
    QCOMPARE(desk.log.size(), 2);

    Desk silent;
    silent.flow.present(u"industry"_s);
    silent.flow.advance();
    QCOMPARE(silent.log, (QStringList{u"-,-,-"_s, u"finish"_s}));
}

void TestOnboarding::closingStoresNothing()
{
    Desk desk;
    desk.flow.present(u"notes"_s);
    desk.log.clear();
    desk.flow.window()->close();
    QCOMPARE(desk.log, (QStringList{u"unlit"_s, u"closed"_s}));
    QVERIFY(!desk.flow.window());
    QVERIFY(!desk.isOnboarded());
    desk.endDemo();
    QVERIFY(!desk.flow.handleDemoTrigger());
    QVERIFY(!desk.flow.raise());
}

void TestOnboarding::everyCardSpeaksBothLanguages()
{
    const QStringList international{u"English"_s, u"Notes"_s,   u"G"_s,           u"✦"_s,
                                    u"⇧"_s,       u"⌃"_s,       u"⌥"_s,           u"⌘"_s,
                                    u","_s,       u"control"_s, u"option / Alt"_s};
    const QRegularExpression chinese(u"\\p{Han}"_s);
    Desk desk;
    for (const QString &name : phaseNames) {
        desk.flow.present(name);
        QVERIFY(QTest::qWaitForWindowExposed(desk.flow.window()));
        const QStringList english = textsOf(*desk.flow.window()->contentItem());
        QVERIFY2(!english.join(u'|').remove(u"中文"_s).contains(chinese),
                 qPrintable(english.join(u'|')));
        desk.click(u"language"_s); // while the card is open
        QStringList left = textsOf(*desk.flow.window()->contentItem());
        left.removeIf([&](const QString &text) {
            return text.contains(chinese) || international.contains(text) || text.size() == 1
                || desk.flow.chineseLabel(int(desk.flow.surveyOptions().indexOf(text))) == text
                || text.startsWith(u"vellumo is a reading assistant for your Mac."_s);
        });
        QVERIFY2(left.isEmpty(), qPrintable(left.join(u'|')));
        desk.click(u"language"_s);
        QCOMPARE(textsOf(*desk.flow.window()->contentItem()), english);
    }
}

void TestOnboarding::keysReachEverything()
{
    Desk desk;
    desk.flow.present(u"role"_s);
    QQuickWindow *window = desk.flow.window();
    QVERIFY(QTest::qWaitForWindowActive(window));
    QTest::keyClick(window, Qt::Key_Tab);
    QVERIFY(desk.item(u"Finance"_s)->hasActiveFocus());
    QTest::keyClick(window, Qt::Key_Down);
    QTest::keyClick(window, Qt::Key_Right);
    QTest::keyClick(window, Qt::Key_Space);
    QCOMPARE(desk.flow.surveyAnswer(), u"Customer support"_s);
    QTest::keyClick(window, Qt::Key_Up);
    QTest::keyClick(window, Qt::Key_Up); // no further
    QVERIFY(desk.item(u"Sales"_s)->hasActiveFocus());
    for (const auto &name : {u"surveyContinueButton"_s, u"back"_s, u"language"_s}) {
        QTest::keyClick(window, Qt::Key_Tab);
        QVERIFY2(desk.item(name)->hasActiveFocus(), qPrintable(name));
    }
    desk.flow.present(u"privacy"_s); // Return goes on from anywhere but a button
    QTest::keyClick(window, Qt::Key_Return);
    QCOMPARE(desk.flow.phase(), Phase::permission);
    QTest::keyClick(window, Qt::Key_Return);
    QCOMPARE(desk.flow.phase(), Phase::permission); // not yet
}

void TestOnboarding::surveyIconsExist()
{
    const QList<std::pair<Phase, int>> sizes{
        {Phase::hearAbout, 12}, {Phase::role, 17}, {Phase::industry, 18}};
    for (const auto &[phase, size] : sizes) {
        QCOMPARE(surveyOf(phase)->options.size(), size);
        for (const SurveyOption &option : surveyOf(phase)->options) {
            const QString file = surveyIconFile(option.icon);
            QVERIFY2(QFile::exists(file) && !file.endsWith(u"globe.svg"_s), qPrintable(file));
        }
    }
    QVERIFY(surveyIconFile(u"brand:nobody"_s).endsWith(u"globe.svg"_s));
}

QTEST_MAIN(TestOnboarding)
#include "test_onboarding.moc"
