// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Draws the cards of the first run for review: onboarding_gallery FOLDER [TEXT-SCALE [WxH]] writes
// one picture for each card, state, language and appearance.

#include "onboarding/OnboardingDesk.h"
#include "ui/ApplicationFonts.h"
#include <QFont>
#include <QGuiApplication>
#include <QPalette>

using namespace Qt::StringLiterals;
using namespace vellumo;
using namespace vellumo::test;

namespace {

struct State {
    QString name;
    QString phase;
    std::function<void(OnboardingDesk &)> arrange = {};
};

const QList<State> states = {
    {u"1-sign-in"_s, u"signin"_s},
    {u"1-sign-in-browser"_s, u"signin"_s, [](OnboardingDesk &desk) { desk.flow.signIn(); }},
    {u"1-sign-in-failed"_s, u"signin"_s,
     [](OnboardingDesk &desk) {
         desk.workspace.opensUrls = false;
         desk.flow.signIn();
         QTest::qWait(10);
     }},
    {u"2-privacy"_s, u"privacy"_s},
    {u"3-permission"_s, u"permission"_s},
    {u"3-permission-enabled"_s, u"permission"_s,
     [](OnboardingDesk &desk) {
         desk.accessibility.trusted = true;
         Q_EMIT desk.accessibility.trustChanged();
     }},
    {u"4-key-test"_s, u"keytest"_s},
    {u"4-key-test-pressed"_s, u"keytest"_s,
     [](OnboardingDesk &desk) { desk.events.sendLocal({.modifierFlags = ModifierFlag::Option}); }},
    {u"4-key-test-passed"_s, u"keytest"_s,
     [](OnboardingDesk &desk) { static_cast<void>(desk.flow.handleDemoTrigger()); }},
    {u"5-select"_s, u"select"_s},
    {u"5-select-passed"_s, u"select"_s,
     [](OnboardingDesk &desk) { desk.flow.noteExplanationShown(); }},
    {u"6-notes"_s, u"notes"_s},
    {u"7-hear-about"_s, u"hearabout"_s},
    {u"8-role"_s, u"role"_s,
     [](OnboardingDesk &desk) { desk.flow.survey()->choose(u"Student"_s); }},
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
                OnboardingDesk desk(false, tongue);
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
