// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Texts, the look's settings and the consent dialog.

#include "platform/dbus/PortalAppearance.h"
#include "platform/fake/FakeDesktop.h"
#include "ui/BilingualText.h"
#include "ui/ConsentDialog.h"
#include "ui/PlainText.h"
#include "ui/QmlEngine.h"
#include "ui/QtTranslation.h"
#include "ui/WordMarks.h"
#include "ui/look/SystemLook.h"
#include <QColor>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <memory>

using namespace Qt::StringLiterals;
using namespace vellumo;

namespace {

/// Returns the contrast of two colours as WCAG defines it, from 1 to 21.
double contrast(const QColor &a, const QColor &b)
{
    const auto luminance = [](const QColor &colour) {
        const auto linear = [](double part) {
            return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
            + 0.0722 * linear(colour.blueF());
    };
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

struct Asking {
    QQmlEngine engine;
    BilingualText texts{[] { return u"English"_s; }};
    ConsentDialog dialog{engine, texts};
    Asking() { prepareEngine(engine); }
};

void clickButton(QQuickWindow *window, const QString &name)
{
    const auto *button = window->findChild<QQuickItem *>(name);
    QVERIFY(button);
    QTest::mouseClick(window, Qt::LeftButton, {},
                      button->mapToScene({button->width() / 2, button->height() / 2}).toPoint());
}

} // namespace

class InterfaceTextTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void marksTheWordsOfASearch()
    {
        const auto marked = [](const QString &text, const QString &words) {
            return WordMarks::markup(text, words, Qt::blue)
                .replace(u"<font color=\"#0000ff\"><b>"_s, u"["_s)
                .replace(u"</b></font>"_s, u"]"_s);
        };
        QCOMPARE(marked(u"Tide <b> & tide"_s, u" tIDE  b "_s),
                 u"[Tide] &lt;[b]&gt; &amp; [tide]"_s);
        QCOMPARE(marked(u"banana"_s, u"ana nan"_s), u"b[anana]"_s);
        QCOMPARE(marked(u"潮水<i>"_s, u"水"_s), u"潮[水]&lt;i&gt;"_s);
        QCOMPARE(marked(u"a"_s, u" "_s), u"a"_s);
    }

    void followsTheStoredPreference()
    {
        const QString key = u"preferredOutputLanguage"_s;
        FakeDefaultsStore store;
        store.setValue(key, u"English"_s);
        BilingualText texts([&] { return store.value(key).toString(); });
        texts.follow(store);
        const QtTranslation qtTexts(texts);
        const auto fullDisk = [] {
            return QCoreApplication::translate("QIODevice", "No space left on device");
        };
        QSignalSpy spy(&texts, &BilingualText::languageChanged);
        store.setValue(u"other"_s, 1);
        store.setValue(key, u"en-GB"_s);
        QCOMPARE(spy.count(), 0);
        store.setValue(key, u"Chinese"_s);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(texts.pick(u"yes"_s, u"是"_s), u"是"_s);
        QVERIFY(fullDisk().contains(u"空间"_s));
        store.setValue(key, u"English"_s);
        QCOMPARE(fullDisk(), u"No space left on device"_s);
    }

    void cutsTexts()
    {
        const QString accents(500, QChar(0x0301));
        const struct {
            QString text;
            QString shown;
            QString line;
        } cases[] = {
            {u"abcdefgh"_s, u"abcdefgh"_s, u"abcdefgh"_s},
            {u"abcdefghi"_s, u"abcdefgh…"_s, u"abcdefgh…"_s},
            {u"abcdefg😀x"_s, u"abcdefg…"_s, u"abcdefg…"_s},
            {u"abcdefge\u0301x"_s, u"abcdefg…"_s, u"abcdefg…"_s},
            {u" a\r\n\tb  c "_s, u" a\n\tb  c…"_s, u"a b c"_s},
            {u"a\uFFFCb\uFEFFc\u0000\u009Fd"_s, u"abcd"_s, u"abcd"_s},
            {QChar(0xD83D), QChar(0xD83D), QChar(0xD83D)},
            {u'a' + accents, u'a' + accents.left(7) + u'…', u'a' + accents.left(7) + u'…'}};
        for (const auto &each : cases) {
            QCOMPARE(presentableText(each.text, 8), each.shown);
            QCOMPARE(presentableLine(each.text, 8), each.line);
        }
    }

    void believesTheDesktop()
    {
        const QString appearance = u"org.freedesktop.appearance"_s;
        const QString gnome = u"org.gnome.desktop.interface"_s;
        const struct {
            QString group;
            QString key;
            QVariant value;
            bool dark;
            bool reduced;
        } cases[] = {
            {appearance, u"color-scheme"_s, 1U, true, false},
            {appearance, u"color-scheme"_s, 2U, false, false},
            {appearance, u"color-scheme"_s, u"dark"_s, false, false},
            {appearance, u"reduced-motion"_s, 1U, false, true},
            {appearance, u"contrast"_s, 1U, false, false},
            {gnome, u"enable-animations"_s, false, false, true},
            {gnome, u"enable-animations"_s, true, false, false},
            {u"org.kde.kdeglobals.KDE"_s, u"AnimationDurationFactor"_s, u"0"_s, false, true}};
        for (const auto &each : cases) {
            PortalAppearance portal;
            SystemLook look;
            look.follow(portal);
            portal.apply(each.group, each.key, each.value);
            QVERIFY2(look.isDark() == each.dark, qPrintable(each.key));
            QVERIFY2(look.isMotionReduced() == each.reduced, qPrintable(each.key));
        }
    }

    void hasEnoughContrast()
    {
        const struct {
            QStringList inks;
            QStringList grounds;
        } cases[] = {
            {{u"ink"_s, u"secondInk"_s},
             {u"ground"_s, u"surface"_s, u"surfaceHovered"_s, u"sideBar"_s, u"softFill"_s,
              u"raised"_s}},
            {{u"ink"_s}, {u"softFillHovered"_s, u"selection"_s}},
            {{u"bad"_s, u"goodText"_s}, {u"ground"_s, u"surface"_s}},
            {{u"ground"_s}, {u"ink"_s, u"inkHovered"_s}},
            {{u"accentSoftText"_s}, {u"accentSoft"_s}},
            {{u"accentText"_s}, {u"accent"_s, u"accentPressed"_s}},
            {{u"doneText"_s}, {u"doneFill"_s}},
            {{u"islandText"_s, u"islandBody"_s, u"islandSecondText"_s},
             {u"islandGround"_s, u"islandField"_s, u"islandControl"_s}},
            {{u"bubbleText"_s}, {u"bubble"_s}},
        };
        for (const bool isDark : {false, true}) {
            QGuiApplication::setPalette(QPalette(isDark ? Qt::black : Qt::white));
            QQmlEngine engine;
            prepareEngine(engine);
            QQmlComponent component(&engine);
            component.setData(
                "import QtQml; import Vellumo.Ui; QtObject { property var it: Theme }", {});
            const std::unique_ptr<QObject> holder(component.create());
            const auto *theme = holder ? holder->property("it").value<QObject *>() : nullptr;
            QVERIFY(theme && theme->property("dark").toBool() == isDark);
            for (const auto &each : cases) {
                for (const QString &ink : each.inks) {
                    for (const QString &ground : each.grounds) {
                        const auto colour = [&](const QString &name) {
                            return theme->property(qUtf8Printable(name)).value<QColor>();
                        };
                        QVERIFY2(contrast(colour(ink), colour(ground)) >= 4.5,
                                 qPrintable(u"%1 on %2"_s.arg(ink, ground)));
                    }
                }
            }
        }
    }

    void consentIsAnsweredOnce()
    {
        using Act = std::function<void(QQuickWindow *)>;
        const std::pair<Act, bool> ways[] = {
            {[](auto *window) { clickButton(window, u"allow"_s); }, true},
            {[](auto *window) { clickButton(window, u"notNow"_s); }, false},
            {[](auto *window) { window->close(); }, false},
            {[](auto *window) { QTest::keyClick(window, Qt::Key_Escape); }, false}};
        for (const auto &[act, isAllowed] : ways) {
            Asking asking;
            QList<bool> answers;
            asking.dialog.ask([&](bool answer) { answers << answer; });
            QVERIFY(QTest::qWaitForWindowActive(asking.dialog.window()));
            act(asking.dialog.window());
            QCOMPARE(answers, QList<bool>{isAllowed});
            QVERIFY(!asking.dialog.window());
        }
    }

    void askingAgainReplacesTheCallback()
    {
        Asking asking;
        QStringList answered;
        asking.dialog.ask([&](bool) { answered << u"first"_s; });
        QQuickWindow *window = asking.dialog.window();
        asking.dialog.ask([&](bool) {
            answered << u"second"_s;
            asking.dialog.ask([&](bool) { answered << u"third"_s; });
        });
        QCOMPARE(asking.dialog.window(), window);
        window->close();
        QCOMPARE(answered, QStringList{u"second"_s});
        QVERIFY(asking.dialog.window()); // asked again from the callback
        asking.dialog.window()->close();
        QCOMPARE(answered, (QStringList{u"second"_s, u"third"_s}));
    }
};

int main(int argc, char **argv)
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication app(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    InterfaceTextTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_interface_text.moc"
