// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/CommandLine.h"

#include "platform/Diagnostics.h"
#include "platform/dbus/ApplicationInterface.h"

#include <QCommandLineParser>
#include <algorithm>
#include <array>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

struct CommandOption {
    LaunchRequest::Command command;
    const char *name; ///< of the option, and of the action on the bus
    const char *description;
};

constexpr std::array commandOptions{
    CommandOption{LaunchRequest::Command::Explain, "explain",
                  "Explain what is selected, as a double-tap does."},
    CommandOption{LaunchRequest::Command::Notes, "notes", "Show the list of notes."},
    CommandOption{LaunchRequest::Command::Focus, "focus",
                  "Bring the keyboard into the panel on screen."},
    CommandOption{LaunchRequest::Command::Quit, "quit", "End the vellumo that runs."},
    CommandOption{LaunchRequest::Command::Doctor, "doctor",
                  "Print what works in this session, for a bug report."},
    CommandOption{LaunchRequest::Command::UndoDesktopChanges, "undo-desktop-changes",
                  "End it, and undo what it added to the desktop's settings."},
};

/// Session managers start a program again with "-session ID". Answers whether that was so, and
/// leaves the rest.
bool takeSession(QStringList &arguments)
{
    for (qsizetype i = 1; i < arguments.size() && arguments[i] != "--"_L1; ++i) {
        const bool isAlone = arguments[i] == "-session"_L1 || arguments[i] == "--session"_L1;
        if (isAlone || arguments[i].startsWith("--session="_L1)) {
            arguments.remove(i, isAlone ? std::min<qsizetype>(2, arguments.size() - i) : 1);
            return true;
        }
    }
    return false;
}

} // namespace

InstanceRequest LaunchRequest::forInstance() const
{
    const auto *option =
        std::find_if(commandOptions.begin(), commandOptions.end(),
                     [this](const CommandOption &entry) { return entry.command == command; });
    return {option != commandOptions.end() ? QString::fromLatin1(option->name) : QString(), urls};
}

bool CommandLine::isOwnUrl(const QString &text)
{
    return text.startsWith("vellumo:"_L1, Qt::CaseInsensitive);
}

std::variant<int, LaunchRequest> CommandLine::parse(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Explains the text you select: select it anywhere and double-tap Option (Alt)."_s);
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    for (const CommandOption &option : commandOptions) {
        parser.addOption(
            {QString::fromLatin1(option.name), QString::fromLatin1(option.description)});
    }
    const QCommandLineOption background(u"background"_s, u"Start without a window, as at login."_s);
    parser.addOption(background);
    parser.addPositionalArgument(u"url"_s, u"An address that begins with vellumo:"_s,
                                 u"[url...]"_s);
    QStringList own = arguments;
    const bool isFromSession = takeSession(own);
    if (!parser.parse(own)) {
        printDiagnostic(parser.errorText());
        return EXIT_FAILURE;
    }
    if (parser.isSet(help)) {
        // which names the program as it was called
        printText(parser.helpText().replace(u"<executable_name>"_s, u"vellumo"_s).trimmed());
        return EXIT_SUCCESS;
    }
    if (parser.isSet(version)) {
        printLine(QStringLiteral("vellumo " VELLUMO_VERSION));
        return EXIT_SUCCESS;
    }

    LaunchRequest request;
    request.urls = parser.positionalArguments();
    request.isInBackground = parser.isSet(background) || isFromSession;
    qsizetype commands = request.urls.isEmpty() ? 0 : 1;
    for (const CommandOption &option : commandOptions) {
        if (parser.isSet(QString::fromLatin1(option.name))) {
            request.command = option.command;
            ++commands;
        }
    }
    if (commands > 1) {
        printDiagnostic(u"only one thing can be asked at a time"_s);
        return EXIT_FAILURE;
    }
    const auto canBeOpened = [](const QString &url) {
        return url.size() <= ApplicationInterface::maxUrlLength && isOwnUrl(url);
    };
    if (request.urls.size() > ApplicationInterface::maxUrls
        || !std::all_of(request.urls.begin(), request.urls.end(), canBeOpened)) {
        printDiagnostic(u"only addresses that begin with vellumo: can be opened"_s);
        return EXIT_FAILURE;
    }
    return request;
}

} // namespace vellumo
