// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/CommandLine.h"

#include "platform/Diagnostics.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace vellumo::CommandLine {

std::optional<int> handle(int argc, char **argv)
{
    if (argc < 2) {
        return std::nullopt;
    }
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"vellumo"_s);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Explains the text you select: select it anywhere and double-tap Option (Alt)."_s);
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    if (!parser.parse(QCoreApplication::arguments())) {
        printDiagnostic(parser.errorText());
        return EXIT_FAILURE;
    }
    if (parser.isSet(help)) {
        printLine(parser.helpText().trimmed());
        return EXIT_SUCCESS;
    }
    if (parser.isSet(version)) {
        printLine(QStringLiteral("vellumo " VELLUMO_VERSION));
        return EXIT_SUCCESS;
    }
    return std::nullopt;
}

} // namespace vellumo::CommandLine
