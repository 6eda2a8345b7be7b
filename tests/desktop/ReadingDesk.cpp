// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "desktop/ReadingDesk.h"

#include "driver/Waiting.h"
#include "platform/ConsentPrompting.h"
#include "platform/atspi/AtspiAccessibility.h"
#include "platform/qt/SettingsDefaultsStore.h"
#include "platform/qt/SystemClock.h"
#include "platform/x11/X11Backend.h"
#include "settings/SettingsKeys.h"
#include <QElapsedTimer>
#include <QFile>

namespace vellumo::test {

using namespace Qt::StringLiterals;

namespace {

class NoPrompt : public ConsentPrompting {
public:
    void ask(std::function<void(bool)> /*answered*/) override { }
};

} // namespace

struct ReadingDesk::Platform {
    SettingsDefaultsStore defaults{SettingsDefaultsStore::defaultPath()};
    NoPrompt prompt;
    X11Backend x11;
    SessionBus session;
    AtspiAccessibility accessibility{
        {.session = session,
         .defaults = defaults,
         .settings = {.consent = settings::accessibilityConsent.name.toString(),
                      .leftOff = settings::accessibilityLeftOff.name.toString()},
         .prompting = prompt,
         .windowTitle = [this](qint64 pid) { return x11.workspace().windowTitle(pid); }}};
    ReadingBudget budget;
    AccessibilitySelectionReader reader{{x11.workspace(), accessibility, x11.pasteboard(),
                                         &x11.primarySelection(), x11.keyPosting(),
                                         x11.eventMonitoring()},
                                        budget};
    SystemClock clock;
    ContextTracker tracker{x11.workspace(), accessibility, budget, clock};
};

ReadingDesk::ReadingDesk() : platform_(std::make_unique<Platform>())
{
    if (!waitUntil([this] { return platform_->accessibility.isConnected(); }))
        qFatal("no accessibility bus");
}

ReadingDesk::~ReadingDesk() = default;

std::optional<QString> ReadingDesk::read()
{
    return platform_->reader.currentSelectedText();
}

std::optional<ReadingContext> ReadingDesk::context()
{
    return platform_->tracker.currentContext();
}

std::chrono::milliseconds ReadingDesk::timeOfReading()
{
    QElapsedTimer timer;
    timer.start();
    static_cast<void>(read());
    static_cast<void>(context());
    return std::chrono::milliseconds(timer.elapsed());
}

bool ReadingDesk::open(Application &application)
{
    const auto window = application.start(desktop);
    return window && desktop.activate(*window)
        && waitUntil([&] { return isFrontmost(application); });
}

bool ReadingDesk::isFrontmost(const Application &application)
{
    const auto frontmost = platform_->x11.workspace().frontmostApplication();
    return frontmost && application.owns(frontmost->processIdentifier);
}

bool ReadingDesk::answers()
{
    const auto frontmost = platform_->x11.workspace().frontmostApplication();
    return frontmost
        && platform_->accessibility.focusedElement(frontmost->processIdentifier,
                                                   QDeadlineTimer(1000));
}

QString ReadingDesk::writeFile(const QString &name, const QByteArray &content)
{
    QFile file(files_.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(name));
    return file.fileName();
}

QString ReadingDesk::folder(const QString &name) const
{
    return files_.filePath(name);
}

QList<std::pair<QString, QByteArray>> ReadingDesk::clipboard()
{
    const auto answer = [](const QString &type) {
        return outputOf(u"xclip"_s, {u"-o"_s, u"-selection"_s, u"clipboard"_s, u"-t"_s, type});
    };
    // answers about the transfer itself are not content
    static const QStringList protocol{u"TARGETS"_s, u"MULTIPLE"_s, u"TIMESTAMP"_s,
                                      u"SAVE_TARGETS"_s, u"DELETE"_s};
    QList<std::pair<QString, QByteArray>> contents;
    const QStringList types = QString::fromUtf8(answer(u"TARGETS"_s)).split(u'\n');
    for (const QString &type : types) {
        if (!type.isEmpty() && !protocol.contains(type))
            contents.append({type, answer(type)});
    }
    return contents;
}

QString ReadingDesk::primary()
{
    return QString::fromUtf8(
        outputOf(u"xclip"_s, {u"-o"_s, u"-selection"_s, u"primary"_s, u"-t"_s, u"UTF8_STRING"_s}));
}

} // namespace vellumo::test
