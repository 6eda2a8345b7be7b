// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "desktop/ReadingDesk.h"
#include "support/Waiting.h"
#include <QFile>
#include <QRandomGenerator>
#include <QTest>

using namespace vellumo;
using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

using Contents = QList<std::pair<QString, QByteArray>>;
Q_DECLARE_METATYPE(Contents)

namespace {

constexpr QStringView text = u"The tide turns 潮水 twice 🌊 a day.";

Contents sorted(Contents contents)
{
    std::sort(contents.begin(), contents.end());
    return contents;
}

QByteArray anyBytes(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    QRandomGenerator random(20260101);
    for (char &byte : bytes)
        byte = static_cast<char>(random.bounded(256));
    return bytes;
}

} // namespace

/// An application that neither answers accessibility questions nor owns the selection of the middle
/// button leaves only the copy road, which must not cost the user the clipboard.
class TestReadingClipboard : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void isByForByteTheSameAfterACopy_data();
    void isByForByteTheSameAfterACopy();
};

void TestReadingClipboard::isByForByteTheSameAfterACopy_data()
{
    QTest::addColumn<Contents>("contents");
    QTest::newRow("several formats")
        << Contents{{u"text/plain"_s, "plain 潮水"},
                    {u"text/html"_s, "<b>plain</b> \xe6\xbd\xae"},
                    {u"image/png"_s, anyBytes(70'000)},
                    {u"application/x-own"_s, QByteArray("\0\1\2\0", 4)}};
    QTest::newRow("5 MB") << Contents{{u"application/octet-stream"_s, anyBytes(5'000'000)},
                                      {u"text/plain"_s, "small"}};
    QTest::newRow("invalid UTF-8")
        << Contents{{u"text/plain;charset=utf-8"_s, QByteArray("\xff\xc3 tide \0\xfe", 10)}};
    QTest::newRow("empty") << Contents{};
}

void TestReadingClipboard::isByForByteTheSameAfterACopy()
{
    QFETCH(Contents, contents);
    ReadingDesk desk;

    Application edit(qtTextEdit(desk.writeFile(u"note.txt"_s, text.toUtf8())));
    edit.setEnvironment(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nowhere"_s);
    QVERIFY(desk.open(edit));
    const WindowId window = desk.desktop.activeWindow();
    QVERIFY(waitUntil(
        [&] {
            desk.desktop.chord(Key::ControlLeft, Key::A);
            return waitUntil([&] { return desk.primary() == text; }, 300ms);
        },
        10s));
    // another program takes the selection of the middle button; the text stays selected
    outputOf(u"xclip"_s, {u"-i"_s, u"-selection"_s, u"primary"_s}, "other");
    QVERIFY(waitUntil([&] { return desk.primary() == u"other"_s; }));

    QStringList types;
    for (qsizetype i = 0; i < contents.size(); ++i) {
        const QString file = desk.writeFile(u"type%1"_s.arg(i), contents.at(i).second);
        types.append(contents.at(i).first + u'=' + file);
    }
    Application owner({u"clipboard"_s, QStringLiteral(VELLUMO_TEST_CLIPBOARD), types, {}, {}});
    QVERIFY(owner.launch());
    QVERIFY(waitUntil([&] { return owner.standardOutput().contains("ready"_L1); }));
    const Contents before = desk.clipboard();
    QCOMPARE(before.isEmpty(), contents.isEmpty());

    QCOMPARE(desk.read(), text);

    QCOMPARE(sorted(desk.clipboard()), sorted(before));
    QCOMPARE(desk.desktop.activeWindow(), window);
    // it is really ours now, and not the old owner's, which a copy has displaced
    owner.end();
    QCOMPARE(sorted(desk.clipboard()), sorted(before));
}

QTEST_MAIN(TestReadingClipboard)
#include "test_reading_clipboard.moc"
