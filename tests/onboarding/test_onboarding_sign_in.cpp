// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The card that signs in: failures, waiting, and unexpected callbacks.

#include "OnboardingDesk.h"
#include "driver/Waiting.h"
#include <QRegularExpression>

using namespace vellumo;
using namespace vellumo::test;
using namespace Qt::StringLiterals;

class TestOnboardingSignIn : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"qrc:"_s)); }

    void saysWhatFailed_data()
    {
        QTest::addColumn<std::function<void(OnboardingDesk &)>>("fail");
        QTest::addColumn<QString>("english");
        QTest::addColumn<QString>("chinese");
        QTest::addColumn<QString>("way");
        using Fail = std::function<void(OnboardingDesk &)>;
        QTest::newRow("no browser") << Fail([](OnboardingDesk &desk) {
            desk.workspace.opensUrls = false;
            desk.click(u"signInButton"_s);
        }) << u"The browser could not be opened."_s
                                    << u"无法打开浏览器。"_s << u"Use without an account"_s;
        QTest::newRow("cancelled on the page") << Fail([](OnboardingDesk &desk) {
            desk.click(u"signInButton"_s);
            desk.browser.handleCallback(u"vellumo://auth?error=access_denied"_s);
        }) << u"Sign-in did not finish."_s << u"登录未完成"_s
                                               << u"Use without an account"_s;
        QTest::newRow("no token") // there is a session
            << Fail([](OnboardingDesk &desk) {
                   desk.click(u"signInButton"_s);
                   desk.comeBackFromBrowser();
                   desk.answerToken(400);
               })
            << u"no"_s << u"no"_s << u"Continue anyway"_s;
    }

    void saysWhatFailed()
    {
        QFETCH(std::function<void(OnboardingDesk &)>, fail);
        QFETCH(QString, english);
        QFETCH(QString, chinese);
        QFETCH(QString, way);
        OnboardingDesk desk;
        desk.flow.present({});
        fail(desk);
        QTRY_COMPARE(desk.text(u"signInErrorLabel"_s), english);
        QCOMPARE(desk.flow.phase(), Phase::signIn);
        QCOMPARE(desk.text(u"withoutAccount"_s), way);
        desk.flow.switchLanguage();
        QCOMPARE(desk.flow.signInError(), chinese);
        desk.flow.switchLanguage();

        desk.key = u"k"_s;
        desk.workspace.opensUrls = true;
        desk.click(u"signInButton"_s);
        QVERIFY(!desk.item(u"signInErrorLabel"_s));
        desk.comeBackFromBrowser();
        desk.answerToken();
        QCOMPARE(desk.flow.phase(), Phase::privacy);
    }

    void aClosedPageCanBeOpenedAgain()
    {
        OnboardingDesk desk;
        desk.flow.present({});
        QVERIFY(!desk.item(u"openPageAgain"_s));
        desk.click(u"signInButton"_s);
        desk.click(u"signInButton"_s); // cannot be pressed
        QCOMPARE(desk.workspace.openedUrls.size(), 1);
        desk.click(u"openPageAgain"_s);
        QCOMPARE(desk.workspace.openedUrls.size(), 2);
        desk.comeBackFromBrowser();
        QCOMPARE(desk.flow.phase(), Phase::signIn); // until there is a token
        QVERIFY(!desk.item(u"openPageAgain"_s)); // no longer needed
        desk.comeBackFromBrowser(); // a second time
        desk.answerToken();
        QCOMPARE(desk.flow.phase(), Phase::privacy);
        QVERIFY(!desk.item(u"back"_s));
    }

    void theWaitCanBeEnded()
    {
        for (const auto &[button, phase] :
             {std::pair(u"withoutAccount"_s, Phase::privacy), {u"cancelSignIn"_s, Phase::signIn}}) {
            OnboardingDesk desk;
            desk.flow.present({});
            QVERIFY(!desk.item(u"cancelSignIn"_s));
            desk.click(u"signInButton"_s);
            desk.click(button);
            QCOMPARE(desk.flow.phase(), phase);
            QCOMPARE(desk.defaults.value(u"usesWithoutAccount"_s).toBool(),
                     phase == Phase::privacy);
            desk.comeBackFromBrowser();
            QVERIFY(desk.http.requests.isEmpty() && !desk.flow.isSignedIn());
            if (phase == Phase::privacy)
                desk.flow.goBack();
            QCOMPARE(desk.flow.signInError(), QString());
            QVERIFY(desk.isEnabled(u"signInButton"_s) && !desk.item(u"cancelSignIn"_s));
        }
    }

    void withoutAServiceNoAccountIsOffered()
    {
        OnboardingDesk desk;
        desk.key.reset();
        desk.flow.present({});
        QVERIFY(!desk.item(u"signInButton"_s) && !desk.item(u"withoutAccount"_s));
        desk.click(u"start"_s);
        QCOMPARE(desk.flow.phase(), Phase::privacy);
        QVERIFY(desk.defaults.value(u"usesWithoutAccount"_s).toBool());
    }

    void aKeyringThatIsSlowLeadsOn()
    {
        OnboardingDesk desk;
        desk.flow.present({});
        desk.secrets.values = {{u"refreshToken"_s, "r"}, {u"uid"_s, "u"}, {u"email"_s, "e"}};
        Q_EMIT desk.secrets.becameReadable();
        QTRY_COMPARE(desk.flow.phase(), Phase::privacy);
    }
};

QTEST_MAIN(TestOnboardingSignIn)
#include "test_onboarding_sign_in.moc"
