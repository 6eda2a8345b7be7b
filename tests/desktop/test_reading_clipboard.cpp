// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "desktop/ReadingDesk.h"
#include "driver/Waiting.h"
#include "platform/x11/PeerProcess.h"
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>

using namespace vellumo;
using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

using Contents = QList<std::pair<QString, QByteArray>>;

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

/// An editor in front with everything selected. Its selection can only be copied.
class SilentEditor {
public:
    explicit SilentEditor(ReadingDesk &desk)
        : edit(qtTextEdit(desk.writeFile(u"note.txt"_s, text.toUtf8())))
        , desk_(desk)
    {
        edit.setEnvironment(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nowhere"_s);
    }

    [[nodiscard]] bool open()
    {
        const bool isSelected =
            desk_.open(edit)
            && waitUntil(
                [this] {
                    desk_.desktop.chord(Key::ControlLeft, Key::A);
                    return waitUntil([this] { return desk_.primary() == text; }, 300ms);
                },
                10s);
        // another program takes the selection of the middle button; the text stays selected
        outputOf(u"xclip"_s, {u"-i"_s, u"-selection"_s, u"primary"_s}, "other");
        return isSelected && waitUntil([this] { return desk_.primary() == u"other"_s; });
    }

    Application edit;

private:
    ReadingDesk &desk_;
};

/// Returns the arguments of a program that owns the clipboard.
QStringList owning(ReadingDesk &desk, const Contents &contents)
{
    QStringList arguments{u"own"_s};
    for (const auto &[type, bytes] : contents) {
        const QString file = desk.writeFile(u"type%1"_s.arg(arguments.size()), bytes);
        arguments.append(u"%1|%1|8|%2"_s.arg(type, file));
    }
    return arguments;
}

} // namespace

/// An application that neither answers accessibility questions nor publishes its selection
/// can only be read by copying, which must not change the user's clipboard.
class TestReadingClipboard : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void isByForByteTheSameAfterACopy()
    {
        const Contents contents{{u"text/plain"_s, "plain 潮水"},
                                {u"text/html"_s, "<b>plain</b> \xe6\xbd\xae"},
                                {u"image/png"_s, anyBytes(700'000)},
                                {u"application/x-own"_s, QByteArray("\0\1\2\0", 4)}};
        ReadingDesk desk;

        SilentEditor editor(desk);
        QVERIFY(editor.open());
        const WindowId window = desk.desktop.activeWindow();
        auto owner = std::make_unique<PeerProcess>(owning(desk, contents));
        QVERIFY(owner->isReady());
        const Contents before = desk.clipboard();
        QVERIFY(!before.isEmpty());

        // The first tap has opened the menu bar, where a copy would go astray; only the release of
        // the second closes it.
        desk.desktop.tap(Key::AltLeft);
        desk.desktop.pressForAMoment(Key::AltLeft);
        QCOMPARE(desk.read(), text);

        QCOMPARE(sorted(desk.clipboard()), sorted(before));
        QCOMPARE(desk.desktop.activeWindow(), window);
        // it belongs to us now, since the copy has replaced the old owner
        owner.reset();
        QCOMPARE(sorted(desk.clipboard()), sorted(before));
    }

    void isTheSameAfterACopyThatComesLate()
    {
        ReadingDesk desk;
        SilentEditor editor(desk);
        QVERIFY(editor.open());
        auto owner = std::make_unique<PeerProcess>(
            owning(desk, {{u"text/html"_s, "<b>kept</b>"}, {u"text/plain"_s, "kept"}}));
        QVERIFY(owner->isReady());
        const Contents before = desk.clipboard();

        const QSignalSpy newOwners(QGuiApplication::clipboard(), &QClipboard::dataChanged);
        editor.edit.stopAll();
        QCOMPARE(desk.read(), std::nullopt);
        QCOMPARE(newOwners.size(), 0);
        editor.edit.continueAll();
        QVERIFY(waitUntil([&] { return newOwners.size() > 0; }));
        owner.reset(); // from now on only the restored contents exist
        QVERIFY(waitUntil([&] { return sorted(desk.clipboard()) == sorted(before); }));
    }
};

QTEST_MAIN(TestReadingClipboard)
#include "test_reading_clipboard.moc"
