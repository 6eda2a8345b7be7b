// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "PeerProcess.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Pasteboard.h"
#include "platform/x11/X11Problems.h"
#include <QClipboard>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QMimeData>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QWindow>
#include <array>

using namespace Qt::StringLiterals;
using namespace vellumo;
using namespace vellumo::test;
using namespace std::chrono_literals;

namespace {

QByteArray randomBytes(qsizetype size)
{
    QByteArray bytes(size, '\0');
    QRandomGenerator generator(20260101);
    for (char &byte : bytes) {
        byte = static_cast<char>(generator.generate());
    }
    return bytes;
}

QByteArray dumpClipboard()
{
    auto lines = outputOf(QString::fromUtf8(VELLUMO_X11_PEER), {u"dump"_s}, {}, 20s).split('\n');
    lines.removeIf([](const QByteArray &line) {
        return line.startsWith("TIMESTAMP") || line.startsWith("TARGETS");
    });
    std::ranges::sort(lines);
    return lines.join('\n').trimmed();
}

} // namespace

class TestX11Pasteboard : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        connection_ = std::make_unique<X11Connection>(problems_);
        QVERIFY(connection_->isUsable());
        pasteboard_ = std::make_unique<X11Pasteboard>(*connection_, problems_);
    }

    void cleanup()
    {
        pasteboard_.reset();
        connection_.reset();
    }

    void restoresEveryFormByteByByte()
    {
        const PeerProcess owner(
            {u"own"_s, spec("UTF8_STRING", "UTF8_STRING", 8, "Grüße \xF0\x9F\x99\x82"),
             spec("text/html", "text/html", 8, QByteArray("<b>a\0b</b>", 10)),
             spec("STRING", "STRING", 8,
                  "Gr\xFC\xDF"
                  "e"),
             spec("x-kde-passwordManagerHint", "x-kde-passwordManagerHint", 8, "secret"),
             spec("x-atoms", "ATOM", 32, randomBytes(12)),
             spec("x-shorts", "INTEGER", 16, randomBytes(6)), spec("x-empty", "x-empty", 8, ""),
             spec("image/png", "image/png", 8, randomBytes(700'000))});
        QVERIFY(owner.isReady());
        const QByteArray before = dumpClipboard();
        QCOMPARE(before.count('\n'), 7);

        const auto items = pasteboard_->items(QDeadlineTimer(5000));
        QVERIFY(items);
        QCOMPARE(items->size(), 1);
        QCOMPARE(items->first().size(), 8);
        QCOMPARE(items->first().first().first, u"UTF8_STRING"_s); // in the owner's order

        pasteboard_->clear();
        QCOMPARE(dumpClipboard(), QByteArray());
        pasteboard_->write(*items);
        QCOMPARE(dumpClipboard(), before);
        // A snapshot of our own clipboard is equal.
        QElapsedTimer time;
        time.start();
        QCOMPARE(pasteboard_->items(QDeadlineTimer(1000)), items);
        pasteboard_->write(*items);
        QCOMPARE_LT(time.elapsed(), 400); // reading took nothing from the server's own window
        QCOMPARE(dumpClipboard(), before);
    }

    void givesUpOnABadOwner()
    {
        const struct {
            QString manner;
            int deadlineMs;
            int atMostMs;
        } cases[] = {
            {u"stall"_s, 200, 2000}, {u"die"_s, 30'000, 10'000}, {u"endless"_s, 30'000, 20'000}};
        for (const auto &each : cases) {
            const PeerProcess owner(
                {each.manner, spec("UTF8_STRING", "UTF8_STRING", 8, randomBytes(2'000'000))});
            QVERIFY(owner.isReady());
            QElapsedTimer time;
            time.start();
            QVERIFY2(!pasteboard_->items(QDeadlineTimer(each.deadlineMs)), qPrintable(each.manner));
            QCOMPARE_LE(time.elapsed(), each.atMostMs);

            // None of this affects later requests.
            const PeerProcess next({u"own"_s, spec("UTF8_STRING", "UTF8_STRING", 8, "next")});
            QCOMPARE(pasteboard_->string(QDeadlineTimer(2000)), u"next"_s);
        }
        const PeerProcess owner({u"own"_s, spec("PIXMAP", "PIXMAP", 32, randomBytes(4))});
        QVERIFY(owner.isReady());
        QVERIFY(!pasteboard_->items(QDeadlineTimer(1000))); // unreadable, not empty
    }

    void namesTheProcessThatTookItOver()
    {
        int news = 0;
        connect(pasteboard_.get(), &Pasteboard::ownerChanged, this, [&] { ++news; });
        const quint64 before = pasteboard_->changeCount();
        const PeerProcess first({u"own"_s, spec("UTF8_STRING", "UTF8_STRING", 8, "first")});
        QVERIFY(first.isReady());
        const PeerProcess second({u"own"_s, spec("UTF8_STRING", "UTF8_STRING", 8, "second")});
        QVERIFY(second.isReady());
        const auto firstTime =
            pasteboard_->waitForOwner(first.processId(), before, QDeadlineTimer(0));
        const auto secondTime =
            pasteboard_->waitForOwner(second.processId(), before, QDeadlineTimer(0));
        QVERIFY(firstTime && secondTime);
        QVERIFY(static_cast<qint32>(*secondTime - *firstTime) >= 0);
        QCOMPARE(pasteboard_->ownerProcess(), second.processId());
        const quint64 after = pasteboard_->changeCount();
        QVERIFY(!pasteboard_->waitForOwner(second.processId(), after, QDeadlineTimer(10)));
        QVERIFY(!pasteboard_->waitForOwner(QCoreApplication::applicationPid(), before,
                                           QDeadlineTimer(10)));
        QVERIFY(QTest::qWaitFor([&] { return news > 0; })); // also of a change seen before
    }

    void readsText()
    {
        const struct {
            const char *target;
            QByteArray bytes;
            std::optional<QString> text;
        } cases[] = {{"UTF8_STRING", "h\xC3\xA9", u"h\u00E9"_s},
                     {"UTF8_STRING", "a\xFF z", u"a\uFFFD z"_s},
                     {"UTF8_STRING", QByteArray("end\0", 4), u"end"_s},
                     {"UTF8_STRING", QByteArray(600'001, 'p'), QString(600'001, u'p')},
                     {"text/plain;charset=utf-8", "\xE5\xAD\x97", u"\u5B57"_s},
                     {"STRING", "h\xE9", u"h\u00E9"_s},
                     {"image/png", "png", std::nullopt}};
        for (const auto &each : cases) {
            const PeerProcess owner({u"own"_s, spec(each.target, each.target, 8, each.bytes)});
            QVERIFY(owner.isReady());
            QVERIFY2(pasteboard_->string(QDeadlineTimer(2000)) == each.text, each.bytes.left(10));
        }
    }

    void readsOwnToolkitsContents()
    {
        QWindow window; // its events give the toolkit the server's time
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        auto *contents = new QMimeData;
        contents->setText(u"our own text field"_s);
        contents->setHtml(u"<b>field</b>"_s);
        QGuiApplication::clipboard()->setMimeData(contents);
        QElapsedTimer time;
        time.start();
        QCOMPARE(pasteboard_->string(QDeadlineTimer(3000)), u"our own text field"_s);
        const auto items = pasteboard_->items(QDeadlineTimer(3000));
        QVERIFY(items && !items->isEmpty());
        QCOMPARE_LT(time.elapsed(), 2500); // it did not wait for itself
        pasteboard_->write(*items);
        QCOMPARE(outputOf(u"xclip"_s, {u"-selection"_s, u"clipboard"_s, u"-o"_s}, {}, 20s),
                 "our own text field"_ba);
        QCOMPARE(outputOf(u"xclip"_s,
                          {u"-selection"_s, u"clipboard"_s, u"-t"_s, u"text/html"_s, u"-o"_s}, {},
                          20s),
                 "<b>field</b>"_ba);
    }

    void ownTextFieldsDoNotWaitForTheMainThread()
    {
        pasteboard_->write({{{u"UTF8_STRING"_s, "restored"}}});
        QElapsedTimer time;
        time.start();
        QCOMPARE(QGuiApplication::clipboard()->text(),
                 u"restored"_s); // no event is handled meanwhile
        QCOMPARE_LT(time.elapsed(), 2000);
    }

    void survivesRequestorThatGoesAway()
    {
        const QByteArray bytes = randomBytes(3'000'000);
        pasteboard_->write({{{u"UTF8_STRING"_s, bytes}}});
        // Asks, takes the announcement of parts, then takes none of them and leaves.
        auto *xcb = xcb_connect(nullptr, nullptr);
        const auto window = xcb_generate_id(xcb);
        xcb_create_window(xcb, 0, window, connection_->root(), 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        for (int i = 0; i < 40; ++i) {
            xcb_convert_selection(
                xcb, window, connection_->atom("CLIPBOARD"_ba), connection_->atom("UTF8_STRING"_ba),
                connection_->atom("PART_" + QByteArray::number(i)), XCB_CURRENT_TIME);
        }
        xcb_flush(xcb);
        int answered = 0;
        QVERIFY(QTest::qWaitFor([&] {
            while (const XcbEvent event{xcb_poll_for_event(xcb)}) {
                answered += eventType(*event) == XCB_SELECTION_NOTIFY ? 1 : 0;
            }
            return answered == 40;
        }));
        xcb_disconnect(xcb);
        QVERIFY(outputOf(u"xclip"_s,
                         {u"-selection"_s, u"clipboard"_s, u"-o"_s, u"-t"_s, u"UTF8_STRING"_s}, {},
                         20s)
                == bytes);
    }

    void servesSeveralTargetsAtOnce()
    {
        pasteboard_->write({{{u"UTF8_STRING"_s, "text"}, {u"text/html"_s, "<b>text</b>"}}});
        X11Connection requestor(problems_);
        auto *xcb = requestor.xcb();
        const auto window = xcb_generate_id(xcb);
        xcb_create_window(xcb, 0, window, requestor.root(), 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        const auto pairs =
            std::to_array<xcb_atom_t>({requestor.atom("text/html"_ba), requestor.atom("P0"_ba),
                                       requestor.atom("x-unknown"_ba), requestor.atom("P1"_ba),
                                       requestor.atom("UTF8_STRING"_ba), requestor.atom("P2"_ba)});
        const auto list = requestor.atom("PAIRS"_ba);
        xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window, list,
                            requestor.atom("ATOM_PAIR"_ba), 32, pairs.size(), pairs.data());
        xcb_convert_selection(xcb, window, requestor.atom("CLIPBOARD"_ba),
                              requestor.atom("MULTIPLE"_ba), list, XCB_CURRENT_TIME);
        bool answered = false;
        requestor.setEventHandler([&](const xcb_generic_event_t &event) {
            answered = answered || eventType(event) == XCB_SELECTION_NOTIFY;
        });
        requestor.flush();
        QVERIFY(QTest::qWaitFor([&] { return answered; }));
        const auto value = [&](const QByteArray &name) {
            const auto reply = requestor.reply<xcb_get_property_reply_t>(
                xcb_get_property(xcb, 0, window, requestor.atom(name), XCB_ATOM_ANY, 0, 100));
            return QByteArray(static_cast<const char *>(xcb_get_property_value(reply.get())),
                              xcb_get_property_value_length(reply.get()));
        };
        QCOMPARE(value("P0"_ba), "<b>text</b>"_ba);
        QCOMPARE(value("P1"_ba), ""_ba);
        QCOMPARE(value("P2"_ba), "text"_ba);
        auto outcome = pairs;
        outcome[3] = XCB_ATOM_NONE; // the unavailable one
        QCOMPARE(value("PAIRS"_ba),
                 QByteArray(reinterpret_cast<const char *>(outcome.data()), sizeof outcome));
    }

    void handsOverAtExit_data()
    {
        QTest::addColumn<QString>("manager");
        QTest::addColumn<int>("atMostMs");
        QTest::newRow("to the manager") << u"manager"_s << 10'000;
        QTest::newRow("to nobody") << QString() << 900;
        QTest::newRow("to a manager that hangs") << u"stalled-manager"_s << 4000;
    }

    void handsOverAtExit()
    {
        QFETCH(QString, manager);
        QFETCH(int, atMostMs);
        std::optional<PeerProcess> peer;
        if (!manager.isEmpty()) {
            peer.emplace(QStringList{manager});
            QVERIFY(peer->isReady());
        }
        pasteboard_->write(
            {{{u"UTF8_STRING"_s, "kept"}, {u"image/png"_s, randomBytes(1'000'000)}}});
        const auto before = dumpClipboard();
        QElapsedTimer time;
        time.start();
        pasteboard_.reset();
        QCOMPARE_LE(time.elapsed(), atMostMs);
        if (manager == "manager"_L1) {
            QCOMPARE(before.count('\n'), 1);
            QCOMPARE(dumpClipboard(), before);
        }
    }

private:
    [[nodiscard]] QString spec(const char *target, const char *type, int format,
                               const QByteArray &bytes)
    {
        QFile file(folder_.filePath(QString::number(++files_)));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            qFatal("cannot write");
        }
        return u"%1|%2|%3|%4"_s.arg(QString::fromUtf8(target), QString::fromUtf8(type))
            .arg(format)
            .arg(file.fileName());
    }

    QTemporaryDir folder_;
    int files_ = 0; ///< in the folder
    X11Problems problems_;
    std::unique_ptr<X11Connection> connection_;
    std::unique_ptr<X11Pasteboard> pasteboard_;
};

QTEST_MAIN(TestX11Pasteboard)
#include "test_x11_pasteboard.moc"
