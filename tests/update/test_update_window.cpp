// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// An update check, from the menu to the window.

#include "FeedSigning.h"
#include "driver/Desktop.h"
#include "http/HttpServer.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/fake/FakeHttpSession.h"
#include "platform/qt/QtHttpSession.h"
#include "ui/BilingualText.h"
#include "ui/QmlEngine.h"
#include "update/UpdateController.h"
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace vellumo;
using namespace vellumo::test;

namespace {

constexpr double november2026 = 817000000; // on the program's clock
constexpr double december2027 = 850000000;

/// How the feed's address answers.
struct Answer {
    QByteArray version = {};
    QByteArray addition = {}; ///< after the signed part
    int status = 200;
    std::optional<HttpError::Kind> error = {}; ///< in place of all that
    double time = november2026;
};

struct Desk {
    Maintainer maintainer;
    FakeHttpSession http; ///< unless the test has its own session
    FakeWorkspace workspace;
    FakeClock clock;
    QQmlEngine engine;
    QString language = u"English"_s;
    BilingualText texts{[this] { return language; }};
    UpdateController controller;

    explicit Desk(const QUrl &feed = QUrl(u"https://vellumo.app/feed"_s),
                  HttpSession *session = nullptr,
                  const QString &module = QStringLiteral(VELLUMO_SIGNATURE_MODULE))
        : controller(
            *UpdateSource::from(feed.toString(), QString::fromLatin1(maintainer.publicKey())),
            *DebianVersion::fromString(u"0.2.0~beta"), SignatureCheck(module),
            {session != nullptr ? *session : http, workspace, clock, engine, texts})
    {
        prepareEngine(engine);
        clock.now = november2026;
    }
    void answer(const QByteArray &body, int status = 200)
    {
        QVERIFY(http.answer(HttpResponse{.status = status, .body = body}));
    }
    [[nodiscard]] QByteArray feed(const QByteArray &version = "0.2.0") const
    {
        return maintainer.signedFeed(QByteArray(sampleFeed).replace("0.2.0~rc1-1", version));
    }
    [[nodiscard]] QQuickItem *item(const char *name) const
    {
        return controller.window()->findChild<QQuickItem *>(QLatin1StringView(name));
    }
    /// Returns all texts of the window, one on each line.
    [[nodiscard]] QString shown() const
    {
        QStringList lines;
        for (const char *name : {"heading", "detail", "notesText", "hint", "close", "act"}) {
            if (item(name)->isVisible()) {
                lines << item(name)->property("text").toString();
            }
        }
        return lines.join(u'\n');
    }
    void click(const char *name) const
    {
        const QQuickItem *button = item(name);
        QTest::mouseClick(
            controller.window(), Qt::LeftButton, {},
            button->mapToScene({button->width() / 2, button->height() / 2}).toPoint());
    }
};

} // namespace

class TestUpdateWindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"qrc:"_s)); }

    void showsWhatItLearned()
    {
        const auto failed = [](const QString &reason) {
            return u"Could not check for updates\n%1\nClose\nTry again"_s.arg(reason);
        };
        const QString upToDate = u"vellumo is up to date\n"
                                 "You have version 0.2.0~beta; there is nothing newer.\nClose"_s;
        const QString unreachable = failed(u"The update service could not be reached. Is this "
                                           "computer connected to the internet?"_s);
        const struct {
            const char *name;
            Answer answer;
            QString shown;
        } rows[] = {
            {"newer",
             {.version = "0.2.0"},
             u"vellumo 0.2.0 is available\n"
             "Released on 20 November 2026. You have version 0.2.0~beta.\n"
             "Two <b>news</b>.\nAnd more.\n"
             "The download page on vellumo.app opens in your browser. vellumo installs nothing by "
             "itself.\nNot now\nDownload"_s},
            {"same", {.version = "0.2.0~beta"}, upToDate},
            {"older", {.version = "0.1.9"}, upToDate},
            {"malformed",
             {.version = "newest"},
             failed(u"This version of vellumo cannot read the answer."_s)},
            {"tampered",
             {.version = "0.2.0", .addition = " "},
             failed(u"The answer is not signed by vellumo and was ignored."_s)},
            {"expired",
             {.version = "0.2.0", .time = december2027},
             failed(u"The answer is out of date and was ignored. If this computer's date is "
                    "right, try again another day."_s)},
            {"not found",
             {.version = "0.2.0", .status = 404},
             failed(u"The update service has a problem at the moment."_s)},
            {"no name", {.error = HttpError::Kind::CannotResolve}, unreachable},
            {"nobody", {.error = HttpError::Kind::Refused}, unreachable},
            {"slow",
             {.error = HttpError::Kind::TimedOut},
             failed(u"The update service did not answer in time."_s)},
        };
        for (const auto &[name, answer, shown] : rows) {
            Desk desk;
            desk.controller.checkForUpdates();
            QCOMPARE(desk.shown(), u"Checking for updates…\nCancel"_s);
            QCOMPARE(desk.http.requests.constLast().url, QUrl(u"https://vellumo.app/feed"_s));
            desk.clock.now = answer.time;
            if (answer.error) {
                desk.http.answer(HttpError{*answer.error});
            } else {
                desk.answer(desk.feed(answer.version) + answer.addition, answer.status);
            }
            QVERIFY2(desk.shown() == shown,
                     qPrintable(QLatin1StringView(name) + u": "_s + desk.shown()));
            QVERIFY(desk.workspace.openedUrls.isEmpty());

            desk.language = u"Chinese"_s;
            desk.texts.refresh();
            const QStringList lines = desk.shown().split(u'\n');
            for (const QString &line : lines) {
                QVERIFY2(line.contains(QRegularExpression(u"\\p{Han}"_s)), qPrintable(line));
            }
        }
    }

    void asksOverTheNetwork()
    {
        HttpServer::trustCertificate();
        HttpServer plain;
        HttpServer server(HttpServer::Security::Tls);
        QUrl byNumber = server.url(u"/good"_s);
        byNumber.setHost(u"127.0.0.1"_s); // the certificate is for the name
        QtHttpSession session;
        const struct {
            QUrl feed;
            QString shown;
        } cases[] = {{server.url(u"/good"_s), u"0.2.0 is available"_s},
                     {server.url(u"/elsewhere"_s), u"0.2.0 is available"_s},
                     {server.url(u"/unsafe"_s), u"Could not check"_s},
                     {server.url(u"/endless"_s), u"not signed by vellumo"_s},
                     {byNumber, u"No secure connection"_s}};
        for (const auto &[feed, shown] : cases) {
            Desk desk(feed, &session);
            const QByteArray good = desk.feed();
            const auto redirect = [](const QUrl &target) {
                return HttpAnswer{.status = "302 Found",
                                  .headers = {{"Location", target.toEncoded()}}};
            };
            server.answer("GET", "/good", {.body = good});
            server.answer("GET", "/elsewhere", redirect(server.url(u"/good"_s)));
            server.answer("GET", "/unsafe", redirect(plain.url(u"/good"_s)));
            server.answer("GET", "/endless", {.body = good, .isEndless = true});
            plain.answer("GET", "/good", {.body = good});
            desk.controller.checkForUpdates();
            const auto isAnswered = [&desk] { return !desk.shown().startsWith(u"Checking"_s); };
            QVERIFY2(QTest::qWaitFor(isAnswered, 20000), feed.toEncoded());
            QVERIFY2(desk.shown().contains(shown), feed.toEncoded() + desk.shown().toUtf8());
        }
        QCOMPARE(plain.requests().size(), 0);
    }

    void fitsWhatItSays()
    {
        const Desktop desktop;
        if (!desktop.isOpen()) {
            QSKIP("a window manager decides");
        }
        Desk desk;
        const auto fits = [&] {
            const QQuickWindow *window = desk.controller.window();
            return desktop.geometry(static_cast<WindowId>(window->winId())).height()
                == window->property("fittingHeight").toInt();
        };
        desk.controller.checkForUpdates(); // answered before the window is on screen
        for (int i = 0; i < 3; ++i) {
            desk.http.answer(HttpError{});
            QVERIFY(QTest::qWaitFor(fits, 10000));
            desk.click("act"); // tries again; the text is shorter then
            QVERIFY(QTest::qWaitFor(fits, 10000));
        }
        desk.answer(desk.feed());
        QVERIFY(QTest::qWaitFor(fits, 10000));
    }

    void opensThePage()
    {
        Desk desk;
        const QUrl page(u"https://vellumo.app/download?from=feed"_s);
        desk.workspace.opensUrls = false;
        desk.controller.checkForUpdates();
        desk.answer(desk.feed());
        desk.click("act");
        QVERIFY(
            desk.shown().contains(u"The address is https://vellumo.app/download?from=feed\n"_s));
        desk.workspace.opensUrls = true;
        desk.click("act");
        QCOMPARE(desk.workspace.openedUrls, (QList{page, page}));
        QVERIFY(!desk.controller.window());
    }

    void isOneWindow()
    {
        Desk desk;
        desk.controller.checkForUpdates();
        const QQuickWindow *window = desk.controller.window();
        desk.controller.checkForUpdates();
        QCOMPARE(desk.http.requests.size(), 1);
        desk.http.answer(HttpError{});
        desk.click("act"); // try again
        QCOMPARE(desk.http.requests.size(), 2);
        desk.answer(desk.feed());
        desk.controller.checkForUpdates(); // the offer stays
        QCOMPARE(desk.http.requests.size(), 2);
        QVERIFY(desk.shown().startsWith(u"vellumo 0.2.0 is available"_s));
        QCOMPARE(desk.controller.window(), window);
        desk.click("close");
        desk.controller.checkForUpdates();
        desk.answer(desk.feed("0.1.0"));
        desk.controller.checkForUpdates();
        QCOMPARE(desk.http.requests.size(), 4);
        QVERIFY(desk.shown().startsWith(u"Checking"_s));
    }

    void saysWhenItCannotCheck()
    {
        for (const auto &module : {u"/nonexistent/ed25519.so"_s, u"libcrypto.so.3"_s}) {
            Desk desk(QUrl(u"https://vellumo.app/feed"_s), nullptr, module);
            desk.controller.checkForUpdates();
            desk.answer(desk.feed());
            QCOMPARE(desk.shown(),
                     u"Could not check for updates\nvellumo's signature check is missing, so the "
                     "answer was ignored. Install vellumo again.\nClose\nTry again"_s);
        }
    }

    void closingEndsTheRequest()
    {
        Desk desk;
        desk.controller.checkForUpdates();
        desk.controller.window()->close();
        QVERIFY(!desk.controller.window());
        desk.answer(desk.feed());
        QVERIFY(!desk.controller.window());
    }

    void looksQuietly()
    {
        Desk desk;
        desk.controller.checkInBackground();
        desk.answer("not a feed");
        QVERIFY(!desk.controller.window());
        desk.controller.checkInBackground();
        desk.answer(desk.feed("0.1.0"));
        QVERIFY(!desk.controller.window());
        desk.controller.checkInBackground();
        desk.controller.checkForUpdates(); // now the user waits
        QVERIFY(desk.controller.window());
        desk.answer(desk.feed("0.1.0"));
        QVERIFY(desk.controller.window());

        Desk other;
        other.controller.checkInBackground();
        other.answer(other.feed());
        QVERIFY(other.controller.window());
        QVERIFY(other.shown().contains("0.2.0"_L1));
    }

    void keysReachEverything()
    {
        Desk desk;
        desk.controller.checkForUpdates();
        desk.answer(desk.maintainer.signedFeed(
            QByteArray(sampleFeed).replace("And more.", QByteArray("And more.\\n").repeated(40))));
        QVERIFY(QTest::qWaitForWindowActive(desk.controller.window()));
        const auto *reader = desk.item("notesText")->parentItem()->parentItem();
        for (const char *name : {"notes", "close", "act"}) {
            QTest::keyClick(desk.controller.window(), Qt::Key_Tab);
            QVERIFY2(desk.item(name)->hasActiveFocus(), name);
            if (qstrcmp(name, "notes") == 0) {
                QTest::keyClick(desk.controller.window(), Qt::Key_End);
                QVERIFY(reader->property("contentY").toDouble() > 0);
            }
        }
        QTest::keyClick(desk.controller.window(), Qt::Key_Escape);
        QVERIFY(!desk.controller.window());
    }

    void needsFeedAndKey()
    {
        const QString key = QString::fromLatin1(Maintainer().publicKey());
        QVERIFY(UpdateSource::from(u"https://vellumo.app/feed"_s, key));
        QVERIFY(!UpdateSource::from(u"https://vellumo.app/feed"_s, {}));
        for (const auto &feed : {u""_s, u"http://vellumo.app/feed"_s, u"http://127.0.0.1/feed"_s,
                                 u"file:///tmp/feed"_s, u"https:///feed"_s, u"feed"_s}) {
            QVERIFY2(!UpdateSource::from(feed, key), qPrintable(feed));
        }
    }
};

int main(int argc, char **argv)
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication app(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    TestUpdateWindow test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_update_window.moc"
