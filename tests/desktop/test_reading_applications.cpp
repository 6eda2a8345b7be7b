// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "desktop/ReadApplications.h"
#include "desktop/ReadingDesk.h"
#include "driver/Waiting.h"
#include <QElapsedTimer>
#include <QFile>
#include <QTest>
#include <thread>
#include <unistd.h>

using namespace vellumo;
using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr QStringView firstLine = u"The tide turns 潮水 twice 🌊 a day 👩‍👩‍👧 here";
constexpr QStringView secondLine = u"Nobody asks it why.";

/// Waits until a thread of ours has slept for longer than a running application takes to answer.
void waitUntilAsleep(pid_t thread)
{
    QFile file(u"/proc/self/task/%1/stat"_s.arg(thread));
    const QDeadlineTimer deadline(5s);
    for (int asleep = 0; asleep < 30 && !deadline.hasExpired(); ++asleep) {
        // the state follows the name in parentheses
        if (!file.open(QIODevice::ReadOnly) || !file.readAll().contains(") S "))
            asleep = 0;
        file.close();
        std::this_thread::sleep_for(1ms);
    }
}

} // namespace

class TestReadingApplications : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsWhatIsSelectedInAnEditor_data() { editors(); }

    void readsWhatIsSelectedInAnEditor()
    {
        ReadingDesk desk;
        const QString whole = firstLine.toString() + u'\n' + secondLine.toString();
        Application application(editor(desk, desk.writeFile(u"note.txt"_s, whole.toUtf8())));
        if (!application.isInstalled())
            QSKIP("not installed");
        QVERIFY(desk.open(application));
        const WindowId window = desk.desktop.activeWindow();

        // Keys reach a window some time after it has the focus: press them until they act. The wait
        // is long, because repeated keys change the selection while it is read.
        const auto selects = [&desk](const std::function<void()> &keys, const QString &expected) {
            return waitUntil(
                [&] {
                    keys();
                    return waitUntil([&] { return desk.primary() == expected; }, 2s);
                },
                10s);
        };
        const struct {
            std::function<void()> keys;
            QString expected;
        } rows[] = {
            {[&desk] {
                 desk.desktop.chord(Key::ControlLeft, Key::Home);
                 desk.desktop.chord(Key::ShiftLeft, Key::End);
             },
             firstLine.toString()},
            {[&desk] { desk.desktop.chord(Key::ControlLeft, Key::A); }, whole},
        };
        for (const auto &row : rows) {
            QVERIFY2(selects(row.keys, row.expected), qPrintable(row.expected));
            QCOMPARE(desk.read(), row.expected);
            QCOMPARE(desk.desktop.activeWindow(), window);
            QCOMPARE(desk.read(), row.expected); // still selected, still in the focused element
        }

        // its windows name their application only after they are shown
        if (QLatin1StringView(QTest::currentDataTag()).startsWith("LibreOffice"_L1)) {
            const QString key = desk.context().value_or(ReadingContext()).key;
            QVERIFY2(key.startsWith("app-window:libreoffice-writer:"_L1), qPrintable(key));
        }

        desk.desktop.chord(Key::ControlLeft, Key::Home); // collapses the selection
        QVERIFY(waitUntil([&] { return !desk.read(); }));
    }

    void anEditorThatHangsOrDiesCostsLittle_data() { editors(); }

    void anEditorThatHangsOrDiesCostsLittle()
    {
        ReadingDesk desk;
        Application application(editor(desk, desk.writeFile(u"note.txt"_s, firstLine.toUtf8())));
        if (!application.isInstalled())
            QSKIP("not installed");
        QVERIFY(desk.open(application));
        QVERIFY(waitUntil(
            [&] {
                desk.desktop.chord(Key::ControlLeft, Key::A);
                return desk.read() == firstLine;
            },
            10s));

        application.stopAll();
        const auto stopped = desk.timeOfReading();
        application.continueAll();
        QCOMPARE_LE(stopped, ReadingDesk::longestReading);
        QVERIFY(waitUntil([&] { return desk.read() == firstLine; }));

        // in the middle of a reading, while it waits for an answer
        application.stopAll();
        std::thread death([&application, reader = gettid()] {
            waitUntilAsleep(reader);
            application.killAll();
        });
        const auto killed = desk.timeOfReading();
        death.join();
        QCOMPARE_LE(killed, ReadingDesk::longestReading);
        QVERIFY(application.waitForEnd(5s));
        QCOMPARE(desk.read(), std::nullopt);
    }

    void readsStrangeTextOrNothing_data()
    {
        QTest::addColumn<QString>("editor");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        const QString arabic = u"\u202Bقال \"مرحبا\" في 2024\u202C ثم שלום\u200F."_s;
        const QString huge = u"潮水 turns 🌊\n"_s.repeated(250'000); // 5 MB
        QTest::newRow("right to left") << u"qt"_s << arabic << arabic;
        QTest::newRow("white space") << u"mousepad"_s << u" \t\n\u3000 "_s << u""_s;
        QTest::newRow("5 MB") << u"mousepad"_s << huge << huge; // Qt's editor takes minutes for it
        QTest::newRow("NULs") << u"qt"_s << u"a tide\0 turns\0"_s << u"a tide turns"_s;
    }

    void readsStrangeTextOrNothing()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        ReadingDesk desk;
        Application application(editor(desk, desk.writeFile(u"note.txt"_s, text.toUtf8())));
        if (!application.isInstalled())
            QSKIP("not installed");
        QVERIFY(desk.open(application));
        const auto isSelected = [&] { // the Qt editor prints it, the other publishes
            return application.standardOutput().contains("selected"_L1)
                || !desk.primary().isEmpty();
        };
        QVERIFY(waitUntil(
            [&] {
                desk.desktop.chord(Key::ControlLeft, Key::A);
                return waitUntil(isSelected, 2s);
            },
            20s));
        QElapsedTimer timer;
        timer.start();
        const auto read = desk.read();
        QCOMPARE_LE(std::chrono::milliseconds(timer.elapsed()), ReadingDesk::longestReading);
        // a text that is too long may be cut, or come too late
        const bool isTooLong = expected.size() > maxSelectionLength;
        QVERIFY2(isTooLong ? !read || read->size() > maxSelectionLength
                           : read.value_or(QString()) == expected,
                 qPrintable(read.value_or(u"nothing"_s).left(100)));
    }

    void readsALineOfADocument()
    {
        ReadingDesk desk;
        const QString first = u"The tide turns twice a day."_s;
        Application application(
            evince(desk.writeFile(u"tides.pdf"_s, pdf({first, u"Nobody asks it why."_s}))));
        if (!application.isInstalled())
            QSKIP("Evince is not installed");
        QVERIFY(desk.open(application));
        const WindowId window = desk.desktop.activeWindow();

        // below the tool bar and the page's own edge
        const auto page = [&] { return desk.desktop.geometry(window).adjusted(30, 70, -30, -10); };
        QVERIFY(waitUntil(
            [&] {
                // the page may still move; a drag inside of a selection would move the text
                desk.desktop.click(page().center());
                const QRect line = desk.desktop.firstLineOfPrint(page());
                desk.desktop.drag({line.left() + 1, line.center().y()},
                                  {line.right() + 3, line.center().y()});
                return waitUntil([&] { return desk.primary().trimmed() == first; }, 500ms);
            },
            10s));
        QCOMPARE(desk.read().value_or(QString()).trimmed(), first);
        QCOMPARE(desk.desktop.activeWindow(), window);
        const auto context = desk.context();
        QVERIFY(context);
        QCOMPARE(context->source, ReadingContextSource::appWindow);
        QVERIFY2(context->displayName.contains("tides.pdf"_L1), qPrintable(context->displayName));
    }

    void readsATerminalWithoutTypingIntoIt()
    {
        ReadingDesk desk;
        const QString typed = desk.writeFile(u"typed"_s, {});
        Application application(xterm(
            u"stty raw -echo; printf 'The tide turns twice a day.'; exec cat > '%1'"_s.arg(typed)));
        if (!application.isInstalled())
            QSKIP("xterm is not installed");
        QVERIFY(desk.open(application));
        const WindowId window = desk.desktop.activeWindow();
        const auto typedBytes = [&typed] {
            QFile file(typed);
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
        };

        // nothing is selected, so all three ways are tried
        QCOMPARE(desk.read(), std::nullopt);

        const QString line = u"The tide turns twice a day."_s;
        QVERIFY(waitUntil([&] {
            const QRect place = desk.desktop.geometry(window);
            desk.desktop.click(place.topLeft() + QPoint(30, 10), 3);
            // the second click selects a word, the third drops that selection
            return waitUntil([&] { return desk.primary().trimmed() == line; }, 700ms);
        }));
        QCOMPARE(desk.read().value_or(QString()).trimmed(), line);
        QCOMPARE(desk.desktop.activeWindow(), window);

        // typed text arrives, and nothing else has
        desk.desktop.type(u"x"_s);
        QVERIFY(waitUntil([&] { return !typedBytes().isEmpty(); }));
        QCOMPARE(typedBytes(), QByteArray("x"));

        application.stopAll();
        const auto took = desk.timeOfReading();
        application.continueAll();
        QCOMPARE_LE(took, ReadingDesk::longestReading);
    }

private:
    static void editors()
    {
        QTest::addColumn<QString>("editor");
        QTest::newRow("GTK 3: Mousepad") << u"mousepad"_s;
        QTest::newRow("GTK 4: GNOME Text Editor") << u"gnome-text-editor"_s;
        QTest::newRow("Qt: text edit with a menu bar") << u"qt"_s;
        QTest::newRow("LibreOffice Writer") << u"writer"_s;
    }

    static Application::Command editor(ReadingDesk &desk, const QString &file)
    {
        QFETCH(QString, editor);
        if (editor == "mousepad"_L1)
            return mousepad(file);
        if (editor == "gnome-text-editor"_L1)
            return gnomeTextEditor(file);
        if (editor == "writer"_L1)
            return writer(file, desk.folder(u"writer"_s));
        return qtTextEdit(file);
    }
};

QTEST_MAIN(TestReadingApplications)
#include "test_reading_applications.moc"
