// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Shows the cards of the first run for the eye: onboarding_gallery FOLDER [TEXT-SCALE [WxH]] writes
// one picture for each card, state, language and look.

#include "account/AuthService.h"
#include "account/GoogleOAuth.h"
#include "account/KeychainStore.h"
#include "onboarding/OnboardingWindowController.h"
#include "platform/EventMonitoring.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/fake/FakeEventMonitors.h"
#include "platform/fake/FakeHttpSession.h"
#include "platform/fake/FakeSecretItems.h"
#include "ui/ApplicationFonts.h"
#include "ui/BilingualText.h"
#include "ui/QmlEngine.h"

#include <QFont>
#include <QGuiApplication>
#include <QPalette>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace vellumo;

namespace {

struct Desk {
    FakeCalls calls;
    FakeAccessibility accessibility{calls};
    FakeDefaultsStore defaults;
    FakeEventMonitors events;
    FakeClock clock;
    FakeWorkspace workspace;
    FakeHttpSession http;
    FakeSecretItems secrets;
    QString language = u"English"_s;
    BilingualText texts{[this] { return language; }};
    KeychainStore keychain{secrets};
    GoogleOAuth browser{workspace, texts, u"https://site.example"_s};
    AuthService auth{{keychain, browser, http, clock, texts,
                      [](const QString &) { return std::optional(u"key"_s); }}};
    QQmlEngine engine;
    OnboardingWindowController flow{{defaults, auth, accessibility, events, clock, engine, texts}};

    Desk() { prepareEngine(engine); }
};

struct State {
    QString name;
    QString phase;
    std::function<void(Desk &)> arrange = {};
};

const QList<State> states = {
    {u"1-sign-in"_s, u"signin"_s},
    {u"1-sign-in-browser"_s, u"signin"_s, [](Desk &desk) { desk.flow.signIn(); }},
    {u"1-sign-in-failed"_s, u"signin"_s,
     [](Desk &desk) {
         desk.workspace.opensUrls = false;
         desk.flow.signIn();
         QTest::qWait(10);
     }},
    {u"2-privacy"_s, u"privacy"_s},
    {u"3-permission"_s, u"permission"_s},
    {u"3-permission-enabled"_s, u"permission"_s,
     [](Desk &desk) {
         desk.accessibility.trusted = true;
         Q_EMIT desk.accessibility.trustChanged();
     }},
    {u"4-key-test"_s, u"keytest"_s},
    {u"4-key-test-pressed"_s, u"keytest"_s,
     [](Desk &desk) { desk.events.sendLocal({.modifierFlags = ModifierFlag::Option}); }},
    {u"4-key-test-passed"_s, u"keytest"_s,
     [](Desk &desk) { static_cast<void>(desk.flow.handleDemoTrigger()); }},
    {u"5-select"_s, u"select"_s},
    {u"5-select-passed"_s, u"select"_s, [](Desk &desk) { desk.flow.noteExplanationShown(); }},
    {u"6-notes"_s, u"notes"_s},
    {u"7-hear-about"_s, u"hearabout"_s},
    {u"8-role"_s, u"role"_s, [](Desk &desk) { desk.flow.choose(u"Student"_s); }},
    {u"9-industry"_s, u"industry"_s},
};

} // namespace

int main(int argc, char **argv)
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    installApplicationFonts();
    const QStringList arguments = QGuiApplication::arguments();
    const QString folder = arguments.value(1, u"."_s);
    QFont font = QGuiApplication::font();
    font.setPointSizeF(10 * arguments.value(2, u"1"_s).toDouble());
    QGuiApplication::setFont(font);
    const QStringList size = arguments.value(3).split(u'x');

    for (const bool dark : {false, true}) {
        QGuiApplication::setPalette(QPalette(dark ? Qt::black : Qt::white));
        for (const auto &tongue : {u"English"_s, u"Chinese"_s}) {
            for (const State &state : states) {
                Desk desk;
                desk.accessibility.trusted = false;
                desk.language = tongue;
                desk.texts.refresh();
                desk.flow.present(state.phase);
                QQuickWindow *window = desk.flow.window();
                if (window == nullptr || !QTest::qWaitForWindowExposed(window)) {
                    return EXIT_FAILURE;
                }
                if (size.size() == 2) {
                    window->resize(size[0].toInt(), size[1].toInt());
                }
                if (state.arrange) {
                    state.arrange(desk);
                }
                QTest::qWait(350); // longer than any animation
                window->grabWindow().save(u"%1/%2-%3-%4.png"_s.arg(folder, state.name, tongue,
                                                                   dark ? u"dark"_s : u"light"_s));
            }
        }
    }
    return EXIT_SUCCESS;
}
