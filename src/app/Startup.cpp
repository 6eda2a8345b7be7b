// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/Startup.h"

#include "platform/Diagnostics.h"
#include "platform/windowing/QtFloatingWindows.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace vellumo {

void prepareProcess()
{
    QCoreApplication::setApplicationName(u"vellumo"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(VELLUMO_VERSION));
    QGuiApplication::setDesktopFileName(u"app.vellumo.Vellumo"_s);

    // On a Wayland session the program runs through XWayland, where windows can be placed.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        if (qEnvironmentVariableIsEmpty("DISPLAY")) {
            printDiagnostic(u"no X display; start it in a desktop session (DISPLAY is not set)"_s);
            std::exit(EXIT_FAILURE);
        }
        qputenv("QT_QPA_PLATFORM", "xcb");
    }
    QtFloatingWindows::chooseRenderer();
}

} // namespace vellumo
