// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Workspace.h"
#include <QDeadlineTimer>
#include <QString>
#include <QStringList>
#include <optional>

namespace vellumo {

class Accessibility;

/// The address of a page, as the browser spells it.
struct PageUrl {
    QString absoluteString;
    QString host; ///< percent-encoded; empty when the address has none
};

/// Asks browsers for the address of the page in front.
class BrowserContextResolver {
public:
    /// The accessibility must outlive this object.
    explicit BrowserContextResolver(Accessibility &accessibility);

    /// Returns the .desktop ids of the known browsers.
    [[nodiscard]] static QStringList knownBrowsers();

    [[nodiscard]] static bool isKnownBrowser(const RunningApplication &application);

    /// Returns the address of the page in front. Absent for unknown browsers, which are not asked,
    /// and when the browser returns no valid URL.
    [[nodiscard]] std::optional<PageUrl> currentURL(const RunningApplication &application,
                                                    QDeadlineTimer deadline) const;

private:
    /// Reads the address of the tab in front from the accessibility tree, since browsers run no
    /// scripts of other programs here.
    [[nodiscard]] std::optional<PageUrl> runURLScript(qint64 processIdentifier,
                                                      QDeadlineTimer deadline) const;

    Accessibility *accessibility_;
};

} // namespace vellumo
