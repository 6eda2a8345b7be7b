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

/// The address of a page, kept as the browser spells it.
struct PageUrl {
    QString absoluteString;
    QString host; ///< percent-encoded; empty when the address has none
};

/// Asks browsers for the address of the page in front.
class BrowserContextResolver {
public:
    /// The accessibility must outlive this object.
    explicit BrowserContextResolver(Accessibility &accessibility);

    /// Their .desktop ids.
    [[nodiscard]] static QStringList knownBrowsers();

    [[nodiscard]] static bool isKnownBrowser(const RunningApplication &application);

    /// Absent for applications that are not known browsers, which are not asked, and when the
    /// browser gives no address or one that is no URL.
    [[nodiscard]] std::optional<PageUrl> currentURL(const RunningApplication &application,
                                                    QDeadlineTimer deadline) const;

private:
    /// Browsers run no scripts for others here; the accessibility tree has the address of the tab
    /// in front instead.
    [[nodiscard]] std::optional<PageUrl> runURLScript(qint64 processIdentifier,
                                                      QDeadlineTimer deadline) const;

    Accessibility *accessibility_;
};

} // namespace vellumo
