// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// PRIMARY and CLIPBOARD through the test's compositor, whose application misbehaves.

#include "TestCompositor.h"
#include "platform/Accessibility.h"
#include "platform/wayland/WaylandClipboardText.h"
#include "platform/wayland/client/WaylandClientModule.h"
#include "platform/x11/X11ClipboardText.h"
#include <QElapsedTimer>
#include <QLibrary>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>

using namespace Qt::StringLiterals;
using namespace vellumo;

class TestDataControl : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        std::signal(SIGPIPE, SIG_IGN);
        QVERIFY(folder_.isValid());
        qputenv("XDG_RUNTIME_DIR", folder_.path().toLocal8Bit());
        qputenv("WAYLAND_DISPLAY", "test");
        make_ = reinterpret_cast<waylandClientModule::MakeClient>(QLibrary::resolve(
            QStringLiteral(VELLUMO_WAYLAND_CLIENT), waylandClientModule::makeClient));
        QVERIFY(make_ != nullptr);
    }

    void readsWhatApplicationsPublish()
    {
        constexpr qsizetype maxBytes = 4 * (maxSelectionLength + 1);
        const struct {
            const char *name;
            const DataControlProtocol &protocol;
            Behaviour behaviour;
            std::optional<qsizetype> length; ///< minimum; absent for no text
        } rows[] = {
            {"text", wlr_, {}, 8},
            {"text, later protocol", ext_, {}, 8},
            {"an old type", wlr_, {"image/png STRING", "selected", Answer::Text}, 8},
            {"no text", wlr_, {"image/png", "selected", Answer::Text}, {}},
            {"a secret", wlr_, {"text/plain x-kde-passwordManagerHint", "x", Answer::Text}, {}},
            {"never writes", wlr_, {"text/plain", {}, Answer::Nothing}, {}},
            {"never ends", ext_, {"text/plain", {}, Answer::Endless}, maxBytes},
            {"closed at once", wlr_, {"text/plain", {}, Answer::Closed}, 0},
        };
        for (const auto &row : rows) {
            const TestCompositor compositor(row.protocol, row.behaviour);
            const std::unique_ptr<waylandClientModule::Client> client(make_());
            QVERIFY2(client, row.name);
            PrimarySelection *primary = &client->primarySelection();
            QTRY_VERIFY2(primary->publication(), row.name);
            QCOMPARE(primary->publication()->processIdentifier,
                     waylandClientModule::unknownProcess);
            QElapsedTimer timer;
            timer.start();
            const auto text = primary->string(QDeadlineTimer(150));
            QVERIFY2(timer.elapsed() < 600, row.name);
            QVERIFY2(text.has_value() == row.length.has_value(), row.name);
            QVERIFY2(!text || text->size() >= *row.length, row.name);
        }
    }

    void keepsTheWholeClipboard()
    {
        QByteArray manyTypes = "text/plain";
        for (int i = 0; i < 256; ++i) {
            manyTypes += " type/" + QByteArray::number(i);
        }
        const struct {
            const char *name;
            Behaviour behaviour;
            QStringList types; ///< empty for no snapshot
        } rows[] = {
            {"two types", {"text/plain image/png"}, {u"text/plain"_s, u"image/png"_s}},
            {"no contents", {"text/plain TARGETS SAVE_TARGETS"}, {u"text/plain"_s}},
            {"an empty type", {"image/png", {}, Answer::Closed}, {u"image/png"_s}},
            {"never writes", {"text/plain", {}, Answer::Nothing}, {}},
            {"never ends", {"text/plain", {}, Answer::Endless}, {}},
            {"exits while it writes", {"text/plain", "selected", Answer::Dies}, {}},
            {"too many types", {manyTypes}, {}},
        };
        for (const auto &row : rows) {
            const TestCompositor compositor(wlr_, row.behaviour);
            const auto client = connected();
            QElapsedTimer timer;
            timer.start();
            const auto items = client->clipboard().items(QDeadlineTimer(300));
            QVERIFY2(timer.elapsed() < 600, row.name);
            QVERIFY2(items.has_value() == !row.types.isEmpty(), row.name);
            QStringList types;
            for (const auto &[type, bytes] : items ? items->first() : PasteboardItem()) {
                types.append(type);
                QCOMPARE(bytes, row.behaviour.answer == Answer::Closed ? "" : "selected");
            }
            QCOMPARE(types, row.types);
        }
    }

    /// The other client reads in this thread, which therefore does not serve it.
    void servesOthersWithoutTheMainThread()
    {
        TestCompositor compositor(ext_, {});
        const auto client = connected();
        const auto other = connected();
        const quint64 before = other->clipboard().changeCount();
        const QList<PasteboardItem> items{{{u"image/png"_s, QByteArray(3'000'000, 'p')},
                                           {u"text/plain"_s, "caf\xC3\xA9"_ba},
                                           {u"x-kde-passwordManagerHint"_s, "secret"_ba}}};
        client->clipboard().write(items);
        QVERIFY(other->clipboard().waitForChange(before, QDeadlineTimer(1000)));
        compositor.requestWithoutReading();
        QCOMPARE(other->clipboard().items(QDeadlineTimer(5000)), items);
        QVERIFY(!other->clipboard().string(QDeadlineTimer(1000))); // a secret

        other->clipboard().write({{{u"text/plain"_s, "of the other"_ba}}});
        QCOMPARE(client->clipboard().string(QDeadlineTimer(1000)), u"of the other"_s);
        for (int i = 0; i < 20; ++i) { // the events of both may be read by the thread of either
            bool isNoticed = false;
            client->clipboard().onChange = [&isNoticed] { isNoticed = true; };
            other->clipboard().write({{{u"text/plain"_s, QByteArray::number(i)}}});
            QTRY_VERIFY_WITH_TIMEOUT(isNoticed, 1000);
        }
        client->clipboard().onChange = nullptr;
        client->clipboard().clear();
        QCOMPARE(other->clipboard().items(QDeadlineTimer(1000)), QList<PasteboardItem>());
    }

    void doesNotWaitForAStoppedCompositor()
    {
        TestCompositor compositor(wlr_, {});
        const auto client = connected();
        ManagedClipboard &clipboard = client->clipboard();
        const QList<PasteboardItem> items{{{u"text/plain"_s, "put back"_ba}}};
        clipboard.write({{{u"text/plain"_s, "before"_ba}}});
        compositor.stop();
        QElapsedTimer timer;
        timer.start();
        QVERIFY(!clipboard.items(QDeadlineTimer(150)));
        const quint64 count = clipboard.changeCount();
        QVERIFY(!clipboard.string(QDeadlineTimer(150)));
        clipboard.write(items); // later
        QVERIFY(timer.elapsed() < 300);
        compositor.resume();
        QVERIFY(clipboard.waitForChange(count, QDeadlineTimer(2000)));
        QCOMPARE(clipboard.items(QDeadlineTimer(1000)), items);
    }

    void pastesWithoutBlocking()
    {
        const struct {
            const char *name;
            Behaviour behaviour;
            QString text;
        } rows[] = {
            {"text", {"text/plain", "caf\xC3\xA9"}, u"caf\u00E9"_s},
            {"Latin-1", {"STRING", "caf\xE9"}, u"caf\u00E9"_s},
            {"a secret", {"text/plain x-kde-passwordManagerHint"}, u"selected"_s},
            {"no text", {"image/png"}, {}},
            {"never writes", {"text/plain", {}, Answer::Nothing}, {}},
        };
        for (const auto &row : rows) {
            const TestCompositor compositor(ext_, row.behaviour);
            const auto client = connected();
            X11ClipboardText x11(":none"_ba);
            WaylandClipboardText pasting(x11, client.get());
            std::optional<QString> text;
            QObject reader; // no answer arrives after it
            const auto take = [&text](const QString &read) { text = read; };
            if (&row == rows) {
                QObject gone;
                pasting.read(ClipboardText::Source::Published, gone, take);
            }
            QTRY_VERIFY_WITH_TIMEOUT(
                [&] {
                    pasting.read(ClipboardText::Source::Clipboard, reader, take);
                    return text.has_value();
                }(),
                6000);
            QVERIFY2(text == row.text, row.name);
        }
    }

    void survivesTheCompositor()
    {
        std::unique_ptr<waylandClientModule::Client> client;
        {
            const TestCompositor compositor(ext_, {});
            client = connected();
            QTRY_VERIFY(client->primarySelection().publication());
            client->clipboard().write({{{u"text/plain"_s, "text"_ba}}});
        }
        QTRY_VERIFY(!client->primarySelection().publication());
        QVERIFY(!client->primarySelection().string(QDeadlineTimer(150)));
        QVERIFY(!client->clipboard().isAvailable());
        QVERIFY(!std::unique_ptr<waylandClientModule::Client>(make_()));
    }

private:
    [[nodiscard]] std::unique_ptr<waylandClientModule::Client> connected()
    {
        std::unique_ptr<waylandClientModule::Client> client(make_());
        if (!QTest::qWaitFor([&client] { return client && client->clipboard().isAvailable(); })) {
            qFatal("no clipboard");
        }
        return client;
    }

    const DataControlProtocol wlr_{"zwlr_data_control_manager_v1", "zwlr_data_control_device_v1",
                                   "zwlr_data_control_source_v1", "zwlr_data_control_offer_v1", 2};
    const DataControlProtocol ext_{"ext_data_control_manager_v1", "ext_data_control_device_v1",
                                   "ext_data_control_source_v1", "ext_data_control_offer_v1", 1};
    QTemporaryDir folder_;
    waylandClientModule::MakeClient make_ = nullptr;
};

QTEST_GUILESS_MAIN(TestDataControl)
#include "test_data_control.moc"
