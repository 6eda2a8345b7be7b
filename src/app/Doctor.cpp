// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/Doctor.h"

#include "app/DesktopReport.h"
#include "app/Foundation.h"
#include "app/SessionReport.h"
#include "explain/ForwardingExplainer.h"
#include "explain/ServiceSetup.h"
#include "platform/Diagnostics.h"
#include "platform/dbus/TrayHosts.h"

#include <QApplication>
#include <cstdlib>

namespace vellumo {

int printSessionReport()
{
    Foundation with;
    TrayHosts tray;
    const auto watch = [&] { tray.watch(*with.platform.sessionBus().connection()); };
    if (with.platform.sessionBus().connection()) {
        watch();
    } else {
        QObject::connect(&with.platform.sessionBus(), &SessionBus::opened, &tray, watch);
    }
    ServiceSetup service({.config = with.config,
                          .defaults = with.defaults,
                          .secrets = with.platform.secrets(),
                          .http = with.http,
                          .clock = with.clock});
    const ForwardingExplainer explainer(service.makeService(), with.clock);
    DesktopReport desktop(
        {.platform = with.platform, .tray = tray, .compositor = with.windows.compositor()});
    SessionReport report({.platform = with.platform,
                          .desktop = desktop,
                          .service = service,
                          .explainer = explainer,
                          .defaults = with.defaults,
                          .clock = with.clock,
                          .isRunning = false});
    report.write([](const QString &text, bool canWork) {
        printText(QStringLiteral("vellumo is not running.\n") + text);
        QApplication::exit(canWork ? EXIT_SUCCESS : EXIT_FAILURE);
    });
    return QApplication::exec();
}

} // namespace vellumo
