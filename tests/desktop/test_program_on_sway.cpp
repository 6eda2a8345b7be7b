// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The panel as a layer surface, above a native window that fills the screen.

#include "desktop/ProgramTest.h"
#include "driver/Application.h"
#include <QGuiApplication>
#include <QImage>
#include <QKeyEvent>
#include <QPainter>
#include <QRasterWindow>

using namespace vellumo::test;

namespace {

/// A white window that keeps what is typed into it.
class Reader : public QRasterWindow {
public:
    QString typed;

protected:
    void paintEvent(QPaintEvent * /*event*/) override
    {
        QPainter(this).fillRect(QRect(QPoint(), size()), Qt::white);
    }
    void keyPressEvent(QKeyEvent *event) override { typed += event->text(); }
};

/// Types into the window that has the keyboard. The arguments are those of wtype.
void type(const QStringList &arguments)
{
    outputOf(u"wtype"_s, arguments);
}

/// The panel is dark.
bool isDarkAt(QPoint point)
{
    const QImage screen = QImage::fromData(outputOf(u"grim"_s, {u"-"_s}), "png");
    return !screen.isNull() && screen.pixelColor(point).lightness() < 64;
}

} // namespace

class TestProgramOnSway : public ProgramTest {
    Q_OBJECT

private Q_SLOTS:
    void init() { ProgramTest::init(); }
    void cleanup() { ProgramTest::cleanup(); }

    void showsThePanelOverAFullScreenWindowAndTakesTheKeyboardOnlyWhenAsked()
    {
        const QPoint inPanel(640, 8);
        const QPoint inReader(640, 600);
        Reader reader;
        reader.showFullScreen();
        // A keyboard that has just been made may lose its first keys.
        const auto arrivesAtReader = [&reader](const QString &text) {
            return waitUntil([&] {
                type({text});
                return waitUntil([&] { return reader.typed.contains(text); }, 500ms);
            });
        };
        QVERIFY(vellumo_->start());
        const auto reporter = vellumo_->another({u"--doctor"_s});
        QVERIFY(reporter->launch() && reporter->waitForEnd(10s));
        QVERIFY2(reporter->standardOutput().contains("Window in front: IPC of sway"_L1),
                 qPrintable(reporter->standardOutput()));
        QVERIFY(arrivesAtReader(u"before"_s));
        QVERIFY(!isDarkAt(inPanel) && !isDarkAt(inReader));

        QCOMPARE(vellumo_->startAgain({u"--explain"_s}), 0);
        QVERIFY(waitUntil([&] { return isDarkAt(inPanel); }));
        QVERIFY(!isDarkAt(inReader));
        QVERIFY(arrivesAtReader(u"during"_s));
        QVERIFY(isDarkAt(inPanel));

        QCOMPARE(vellumo_->startAgain({u"--focus"_s}), 0);
        QVERIFY(waitUntil([&] { return QGuiApplication::focusWindow() == nullptr; }));
        QVERIFY(waitUntil([&] {
            type({u"-k"_s, u"Escape"_s});
            return !isDarkAt(inPanel);
        }));
        QVERIFY(arrivesAtReader(u"after"_s));
    }
};

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "wayland");
    const QGuiApplication application(argc, argv);
    qunsetenv("QT_QPA_PLATFORM"); // the program chooses for itself
    TestProgramOnSway test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_program_on_sway.moc"
