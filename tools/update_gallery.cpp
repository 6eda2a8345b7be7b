// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Draws the states of the update window for review: update_gallery FOLDER writes one picture for
// each state, language and appearance.

#include "ui/ApplicationFonts.h"
#include "ui/BilingualText.h"
#include "ui/QmlEngine.h"
#include "update/UpdateWindow.h"
#include <QGuiApplication>
#include <QPalette>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace vellumo;

namespace {

UpdateFeed offer(int paragraphs)
{
    return {*DebianVersion::fromString(u"0.2.0"), QDate(2026, 11, 21),
            u"The pill remembers where you put it, also when a screen is unplugged.\n\n"_s.repeated(
                paragraphs),
            u"便签入口会记住你放置的位置,拔掉屏幕后也一样。\n\n"_s.repeated(paragraphs),
            QUrl(u"https://vellumo.app/download"_s)};
}

using Failure = UpdateWindow::Failure;

const QList<std::pair<QString, std::function<void(UpdateWindow &)>>> states = {
    {u"checking"_s, [](auto &window) { window.showChecking(); }},
    {u"nothing-new"_s, [](auto &window) { window.showNothingNew(); }},
    {u"offer"_s, [](auto &window) { window.showOffer(offer(2)); }},
    {u"offer-long"_s, [](auto &window) { window.showOffer(offer(30)); }},
    {u"offer-without-notes"_s, [](auto &window) { window.showOffer(offer(0)); }},
    {u"offer-unopened"_s,
     [](auto &window) {
         window.showOffer(offer(1));
         window.showUnopenedPage();
     }},
    {u"unreachable"_s, [](auto &window) { window.showFailure(Failure::Unreachable); }},
    {u"insecure"_s, [](auto &window) { window.showFailure(Failure::Insecure); }},
    {u"timed-out"_s, [](auto &window) { window.showFailure(Failure::TimedOut); }},
    {u"refused"_s, [](auto &window) { window.showFailure(Failure::Refused); }},
    {u"untrusted"_s, [](auto &window) { window.showFailure(Failure::Untrusted); }},
    {u"unreadable"_s, [](auto &window) { window.showFailure(Failure::Unreadable); }},
    {u"incomplete"_s, [](auto &window) { window.showFailure(Failure::Incomplete); }},
    {u"expired"_s, [](auto &window) { window.showFailure(Failure::Expired); }},
};

} // namespace

int main(int argc, char **argv)
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    installApplicationFonts();
    const QString folder = QGuiApplication::arguments().value(1, u"."_s);

    QQmlEngine engine;
    prepareEngine(engine);
    QString language = u"English"_s;
    BilingualText texts([&language] { return language; });
    for (const bool dark : {false, true}) {
        QGuiApplication::setPalette(QPalette(dark ? Qt::black : Qt::white));
        for (const auto &tongue : {u"English"_s, u"Chinese"_s}) {
            language = tongue;
            texts.refresh();
            for (const auto &[name, show] : states) {
                UpdateWindow window(engine, texts, u"0.1.0"_s);
                show(window);
                if (window.window() == nullptr || !QTest::qWaitForWindowExposed(window.window())) {
                    return EXIT_FAILURE;
                }
                QTest::keyClick(window.window(), Qt::Key_Tab);
                window.window()->grabWindow().save(
                    u"%1/%2-%3-%4.png"_s.arg(folder, name, tongue, dark ? u"dark"_s : u"light"_s));
            }
        }
    }
    return EXIT_SUCCESS;
}
