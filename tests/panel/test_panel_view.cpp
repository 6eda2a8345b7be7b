// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The island in its real window, on a platform without a display.

#include "panel/ResultPanelController.h"
#include "platform/fake/FakeEventMonitors.h"
#include "platform/fake/FakeScreens.h"
#include "platform/windowing/QtFloatingPanel.h"
#include "platform/windowing/QtFloatingWindows.h"
#include "support/QuickItems.h"
#include "ui/ApplicationFonts.h"
#include "ui/BilingualText.h"
#include "ui/QmlEngine.h"
#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace vellumo;
using namespace vellumo::test;

namespace {

const QString line = u"An explanation that takes about one line.\n"_s;

struct Desk {
    QQmlEngine engine;
    QString language = u"English"_s;
    BilingualText texts{[this] { return language; }};
    QtFloatingWindows windows{engine, [] { return true; }};
    FakeScreens screens;
    FakeEventMonitors monitors;
    ResultPanelController panel{windows, screens, monitors, texts};
    QQuickWindow *window = nullptr;
    QStringList asked;

    Desk()
    {
        prepareEngine(engine);
        panel.onFollowUp = [this](const QString &question) {
            asked << question;
            panel.showFollowUpThinking(question);
        };
        panel.prepare();
        window = qobject_cast<QQuickWindow *>(QGuiApplication::allWindows().constFirst());
    }
    void present(const QString &explanation, const QString &translation = {},
                 QList<ThreadItem> thread = {})
    {
        panel.present(
            IslandContent::result({translation, explanation}, u"source"_s, std::move(thread)), {},
            {});
    }
    [[nodiscard]] QQuickItem *item(const char *name) const
    {
        return findItem(window->contentItem(), QLatin1StringView(name));
    }
    [[nodiscard]] bool isShown(const char *name) const
    {
        const QQuickItem *found = item(name);
        return found != nullptr && found->height() > 0;
    }
    [[nodiscard]] QString draft() const
    {
        return item("followUpInput")->property("text").toString();
    }
    void type(const QString &text) const
    {
        for (const QChar c : text) {
            QTest::sendKeyEvent(QTest::Click, window, Qt::Key_unknown, QString(c), {});
        }
    }
    void click(const char *name) const
    {
        const QQuickItem *target = item(name);
        const QPointF middle = target->mapToScene({target->width() / 2, target->height() / 2});
        QTest::mouseClick(window, Qt::LeftButton, {}, middle.toPoint());
    }
    [[nodiscard]] bool focusField()
    {
        panel.focusPanel();
        return QTest::qWaitFor([this] { return item("followUpInput")->hasActiveFocus(); });
    }
    [[nodiscard]] double height() const
    {
        return window->contentItem()->childItems().constLast()->height();
    }
    void clickElsewhere()
    {
        screens.pointer = {5, 5};
        monitors.sendGlobal({.type = EventType::LeftMouseDown});
    }
};

} // namespace

class ResultPanelViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { installApplicationFonts(); }

    // The image plugin for SVG is a separate package and may be missing.
    void drawsIconsByItself()
    {
        const QStringList plugins = QCoreApplication::libraryPaths();
        QCoreApplication::setLibraryPaths({});
        Desk desk;
        desk.present(line);
        const QImage picture = desk.window->grabWindow();
        QCoreApplication::setLibraryPaths(plugins);
        for (const char *name : {"close", "send"}) {
            const QQuickItem *button = desk.item(name);
            const QRectF ground = button->mapRectToScene(button->boundingRect());
            const QColor empty =
                picture.pixelColor(QPointF(ground.center().x(), ground.top() + 3).toPoint());
            const QColor drawn = picture.pixelColor(ground.center().toPoint());
            QVERIFY2(drawn.lightness() > empty.lightness() + 30, name);
        }
    }

    void showsWhatItsStateNeeds_data()
    {
        QTest::addColumn<IslandContent>("content");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("hidden");

        const ExplanationResult both{u"translation"_s, u"explanation"_s};
        const auto result = [](const ExplanationResult &given,
                               const QList<ThreadItem> &thread = {}) {
            return IslandContent::result(given, u"word"_s, thread);
        };
        QTest::newRow("loading") << IslandContent::loading(u"word"_s) << u"title"_s
                                 << u"translation explanation followUpInput copy"_s;
        QTest::newRow("result") << result(both) << u"translation explanation followUpInput copy"_s
                                << u"headline answer retry openNote"_s;
        QTest::newRow("without translation")
            << result({{}, u"explanation"_s}) << u"explanation followUpInput"_s << u"translation"_s;
        QTest::newRow("failed follow-up")
            << result(both, {ThreadItem{u"q"_s, u"sorry"_s, ExplanationFailure()}})
            << u"answer failureNote reason retry"_s << u"headline copy"_s;
        QTest::newRow("answered follow-up that is not kept")
            << result(both, {ThreadItem{.question = u"q"_s, .answer = u"a"_s, .kept = false}})
            << u"answer failureNote"_s << u"headline"_s;
        QTest::newRow("answered follow-up") << result(both, {ThreadItem{u"q"_s, u"a"_s}})
                                            << u"answer copy"_s << u"failureNote reason retry"_s;
        QTest::newRow("demonstration")
            << IslandContent::demo(both) << u"translation explanation"_s << u"followUpInput"_s;
        QTest::newRow("error") << IslandContent::error(u"message"_s, ErrorHelp::Permission)
                               << u"headline allow"_s << u"explanation followUpInput retry"_s;
        QTest::newRow("failed explanation")
            << IslandContent::error(u"message"_s, ErrorHelp::None, ExplanationFailure())
            << u"headline reason retry"_s << u"copy openNote checkService allow"_s;
    }

    void showsWhatItsStateNeeds()
    {
        QFETCH(IslandContent, content);
        QFETCH(QString, shown);
        QFETCH(QString, hidden);
        Desk desk;
        desk.panel.describeFailure = [](const ExplanationFailure &) { return u"why"_s; };
        desk.panel.present(content, {}, {});
        const QStringList names = (shown + u' ' + hidden).split(u' ');
        for (const QString &name : names) {
            const bool isWanted = shown.split(u' ').contains(name);
            QVERIFY2(desk.isShown(name.toLatin1()) == isWanted, qPrintable(name));
        }
    }

    void leadsToWhatHelps()
    {
        Desk desk;
        QSignalSpy accessibility(&desk.panel, &ResultPanelController::accessibilityRequested);
        QSignalSpy service(&desk.panel, &ResultPanelController::serviceSettingsRequested);
        desk.panel.showError(u"message"_s, ErrorHelp::Permission, {});
        desk.click("allow");
        QVERIFY(!desk.panel.isOnScreen());
        desk.panel.showError(u"message"_s, ErrorHelp::Service, {});
        desk.click("checkService");
        QCOMPARE(std::pair(accessibility.size(), service.size()),
                 std::pair(qsizetype{1}, qsizetype{1}));

        int retries = 0;
        desk.panel.onRetry = [&] { ++retries; };
        QSignalSpy copied(&desk.panel, &ResultPanelController::copyRequested);
        QSignalSpy opened(&desk.panel, &ResultPanelController::noteRequested);
        const ReadingContext page{u"p"_s, u"page"_s, ReadingContextSource::webURL};
        desk.panel.present(IslandContent::result({{}, u"explained"_s}, u"word"_s, {}), page, {});
        desk.click("copy");
        desk.click("openNote");
        desk.panel.showFollowUpThinking(u"q"_s);
        QVERIFY(!desk.isShown("copy"));
        desk.panel.showFollowUpFailure(u"sorry"_s, {});
        desk.click("retry");
        QCOMPARE(retries, 1);
        desk.panel.showFollowUpRetry();
        QVERIFY(!desk.isShown("retry"));
        desk.panel.showFollowUpAnswer(u"answer"_s);
        desk.click("copy");
        QCOMPARE(copied.size(), 2);
        QCOMPARE(copied.at(0).constFirst().toString() + copied.at(1).constFirst().toString(),
                 u"explainedanswer"_s);
        QCOMPARE(opened.size(), 1);
    }

    void fitsItsContent()
    {
        Desk desk;
        desk.present(line);
        const double one = desk.height();
        desk.present(line + line + line);
        const double three = desk.height();
        desk.present(line, u"translation"_s);
        const double translated = desk.height();
        desk.present(line);
        QCOMPARE(desk.height(), one); // no gap is left behind
        QVERIFY(three > one + 30);
        QVERIFY(translated > one + 15);

        desk.panel.showFollowUpThinking(u"why?"_s);
        const double pending = desk.height();
        QVERIFY(pending > one + 40);
        desk.panel.showFollowUpAnswer(line + line + line);
        QVERIFY(desk.height() > pending);
        // the last answer ends above the field
        const QQuickItem *answer = desk.item("answer");
        const QQuickItem *field = desk.item("followUpInput");
        QVERIFY(answer->mapToScene({0, answer->height()}).y() <= field->mapToScene({}).y());
    }

    void scrollsWhatIsTooLong()
    {
        Desk desk;
        desk.screens.list = {{{0, 0, 800, 400}, {0, 0, 800, 380}, 0}};
        desk.present(line.repeated(60));
        QCOMPARE(desk.height(), 380.0);
        const QQuickItem *text = desk.item("explanation");
        const double atTop = text->mapToScene({}).y();
        QVERIFY(atTop > 0);

        desk.panel.showFollowUpThinking(u"why?"_s);
        QTRY_VERIFY(text->mapToScene({}).y() < atTop - 100); // the new row is in view
        desk.panel.showFollowUpAnswer(u"because"_s);
        const QQuickItem *answer = desk.item("answer");
        QTRY_VERIFY(answer->mapToScene({0, answer->height()}).y()
                    <= desk.item("followUpInput")->mapToScene({}).y());

        desk.present(line.repeated(60));
        QCOMPARE(desk.item("explanation")->mapToScene({}).y(), atTop);
    }

    void keepsTheDraftUntilPresentedAgain()
    {
        Desk desk;
        desk.present(line);
        QVERIFY(desk.focusField());
        desk.type(u"why not"_s);
        QQuickItem *input = desk.item("followUpInput");
        QMetaObject::invokeMethod(input, "select", Q_ARG(int, 1), Q_ARG(int, 4));
        desk.panel.showFollowUpThinking(u"asked elsewhere"_s);
        desk.panel.showFollowUpAnswer(u"answer"_s);
        QCOMPARE(desk.draft(), u"why not"_s);
        QCOMPARE(input->property("selectedText").toString(), u"hy "_s);
        QVERIFY(input->hasActiveFocus());

        desk.present(line);
        QCOMPARE(desk.draft(), QString());
        QVERIFY(!desk.item("followUpInput")->hasActiveFocus());
        desk.clickElsewhere();
        QVERIFY(!desk.panel.isOnScreen()); // the old draft no longer holds the panel
    }

    void submitsByEnterAndArrow()
    {
        Desk desk;
        desk.present(line);
        QVERIFY(desk.focusField());
        QTest::keyClick(desk.window, Qt::Key_Return);
        desk.type(u"  "_s);
        QTest::keyClick(desk.window, Qt::Key_Return);
        QCOMPARE(desk.asked, QStringList{});

        desk.type(u"why? "_s);
        QTest::keyClick(desk.window, Qt::Key_Return);
        QCOMPARE(desk.asked, QStringList{u"why?"_s});
        QCOMPARE(desk.draft(), QString());

        desk.type(u"and?"_s);
        QTest::keyClick(desk.window, Qt::Key_Enter);
        desk.click("send");
        QCOMPARE(desk.asked.size(), 1); // an answer is pending
        QCOMPARE(desk.draft(), u"and?"_s);

        desk.panel.showFollowUpAnswer(u"because"_s);
        desk.click("send");
        QCOMPARE(desk.asked, (QStringList{u"why?"_s, u"and?"_s}));
        QCOMPARE(desk.draft(), QString());
    }

    void countsCompositionAsUnsent()
    {
        Desk desk;
        desk.present(line);
        QVERIFY(desk.focusField());
        QInputMethodEvent composing(u"wei"_s, {});
        QGuiApplication::sendEvent(desk.item("followUpInput"), &composing);
        desk.clickElsewhere();
        QVERIFY(desk.panel.isOnScreen());

        QInputMethodEvent abandoned;
        QGuiApplication::sendEvent(desk.item("followUpInput"), &abandoned);
        desk.clickElsewhere();
        QVERIFY(!desk.panel.isOnScreen());
    }

    void composesFromTheFirstLetter()
    {
        Desk desk;
        desk.present(u"mark me"_s);
        desk.window->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(desk.window));
        for (const bool isTextMarked : {false, true}) {
            if (isTextMarked) {
                QTest::mouseDClick(desk.window, Qt::LeftButton, {},
                                   desk.item("explanation")->mapToScene({20, 10}).toPoint());
            }
            QTRY_VERIFY(QGuiApplication::focusObject() != nullptr);
            QObject *focused = QGuiApplication::focusObject();
            QVERIFY(focused != desk.item("followUpInput"));
            QInputMethodQueryEvent question(Qt::ImEnabled);
            QGuiApplication::sendEvent(focused, &question);
            QVERIFY(question.value(Qt::ImEnabled).toBool());
            QInputMethodEvent composing(u"n"_s, {});
            QGuiApplication::sendEvent(focused, &composing);
            QCOMPARE(desk.draft(), QString());
            QCOMPARE(desk.item("followUpInput")->property("preeditText").toString(), u"n"_s);
            QCOMPARE(QGuiApplication::focusObject(), focused); // a change of focus would end it
            QInputMethodEvent composed;
            composed.setCommitString(u"你"_s);
            QGuiApplication::sendEvent(focused, &composed);
            QCOMPARE(desk.draft(), u"你"_s);
            QVERIFY(desk.item("followUpInput")->hasActiveFocus());
            desk.present(u"mark me"_s);
        }
    }

    void warnsThatAQuestionIsTooLong()
    {
        Desk desk;
        desk.present(line);
        QVERIFY(desk.focusField());
        QQuickItem *input = desk.item("followUpInput");
        const QString longest = QString(20000, u'x');
        for (const bool isTooLong : {true, false}) {
            input->setProperty("text", isTooLong ? longest + u'y' : longest);
            QCOMPARE(desk.draft().size(), isTooLong ? 20001 : 20000);
            QCOMPARE(desk.isShown("tooLong"), isTooLong);
            QTest::keyClick(desk.window, Qt::Key_Return);
            QCOMPARE(desk.asked, isTooLong ? QStringList() : QStringList{longest});
        }
    }

    void keepsWhatIsMarkedWhenAnAnswerComes()
    {
        Desk desk;
        desk.present(u"mark me"_s);
        QVERIFY(desk.focusField());
        desk.panel.showFollowUpThinking(u"why?"_s);
        QQuickItem *text = desk.item("explanation");
        QTest::mouseDClick(desk.window, Qt::LeftButton, {}, text->mapToScene({20, 10}).toPoint());
        QCOMPARE(text->property("selectedText").toString(), u"mark"_s);
        desk.panel.showFollowUpAnswer(line);
        QCOMPARE(text->property("selectedText").toString(), u"mark"_s);
        QVERIFY(text->hasActiveFocus());
        QTest::keySequence(desk.window, QKeySequence::Copy);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"mark"_s);
    }

    void showsTextsAsTheyAre()
    {
        Desk desk;
        const auto shown = [&](const QString &given) {
            desk.present(given, given, {ThreadItem{given.left(100), given}});
            const auto text = desk.item("explanation")->property("text").toString();
            const bool isEverywhere = text == desk.item("translation")->property("text").toString()
                && text == desk.item("answer")->property("text").toString();
            return isEverywhere ? text : u"differs"_s;
        };
        const auto markup = u"<b>x</b> &amp; **y** \u202Eمرحبا <img src='http://127.0.0.1/'>"_s;
        QCOMPARE(shown(markup), markup);
        QCOMPARE(desk.item("explanation")->property("textFormat").toInt(), int{Qt::PlainText});
        QCOMPARE(shown(u"a\r\nb\rc\u2028d\u0007\u0000\uFFFC"_s), u"a\nb\nc\nd"_s);
        QCOMPARE(shown(QString(100000, u'长')), QString(20000, u'长') + u'…');
    }

    void switchesLanguageAndCloses()
    {
        Desk desk;
        desk.panel.present(IslandContent::loading(u"word"_s), {}, {});
        QCOMPARE(desk.item("title")->property("text").toString(), u"Reading…"_s);
        desk.language = u"Chinese"_s;
        desk.texts.refresh();
        QCOMPARE(desk.item("title")->property("text").toString(), u"正在阅读…"_s);
        desk.click("close");
        QVERIFY(!desk.panel.isOnScreen());
        QVERIFY(!desk.window->isVisible());
    }
};

int main(int argc, char **argv)
{
    QtFloatingWindows::chooseRenderer();
    QGuiApplication app(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    ResultPanelViewTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_panel_view.moc"
