// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "capture/BrowserContextResolver.h"

#include "platform/Accessibility.h"

#include <QUrl>
#include <algorithm>
#include <array>

namespace vellumo {

namespace {

// Compared exactly. The first four are the bundle identifiers on macOS, the others .desktop ids.
constexpr std::array browsers = {
    QStringView(u"com.apple.Safari"),
    QStringView(u"com.google.Chrome"), // also Chrome's Flatpak
    QStringView(u"com.microsoft.edgemac"),
    QStringView(u"com.brave.Browser"), // also Brave's Flatpak
    QStringView(u"firefox"),
    QStringView(u"firefox-esr"),
    QStringView(u"firefox-beta"),
    QStringView(u"firefox-devedition"),
    QStringView(u"firefox-developer-edition"),
    QStringView(u"firefox-nightly"),
    QStringView(u"firefox_firefox"),
    QStringView(u"org.mozilla.firefox"),
    QStringView(u"chromium"),
    QStringView(u"chromium-browser"),
    QStringView(u"chromium_chromium"),
    QStringView(u"org.chromium.Chromium"),
    QStringView(u"google-chrome"),
    QStringView(u"google-chrome-beta"),
    QStringView(u"google-chrome-unstable"),
    QStringView(u"microsoft-edge"),
    QStringView(u"microsoft-edge-beta"),
    QStringView(u"microsoft-edge-dev"),
    QStringView(u"com.microsoft.Edge"),
    QStringView(u"brave-browser"),
    QStringView(u"brave-browser-beta"),
    QStringView(u"brave-browser-dev"),
    QStringView(u"brave-browser-nightly"),
    QStringView(u"com.brave.Browser.beta"),
    QStringView(u"com.brave.Browser.nightly"),
    QStringView(u"brave_brave"),
    QStringView(u"vivaldi-stable"),
    QStringView(u"vivaldi-snapshot"),
    QStringView(u"vivaldi_vivaldi-stable"),
    QStringView(u"com.vivaldi.Vivaldi"),
    QStringView(u"opera"),
    QStringView(u"com.opera.Opera"),
    QStringView(u"org.gnome.Epiphany"),
};

} // namespace

BrowserContextResolver::BrowserContextResolver(Accessibility &accessibility)
    : accessibility_(&accessibility)
{
}

QStringList BrowserContextResolver::knownBrowsers()
{
    QStringList ids;
    std::ranges::transform(browsers, std::back_inserter(ids), &QStringView::toString);
    return ids;
}

bool BrowserContextResolver::isKnownBrowser(const RunningApplication &application)
{
    return application.bundleIdentifier
        && std::ranges::find(browsers, *application.bundleIdentifier) != browsers.end();
}

std::optional<PageUrl> BrowserContextResolver::currentURL(const RunningApplication &application,
                                                          QDeadlineTimer deadline) const
{
    return isKnownBrowser(application) ? runURLScript(application.processIdentifier, deadline)
                                       : std::nullopt;
}

std::optional<PageUrl> BrowserContextResolver::runURLScript(qint64 processIdentifier,
                                                            QDeadlineTimer deadline) const
{
    const auto address = accessibility_->pageAddress(processIdentifier, deadline);
    if (!address || address->isEmpty()) {
        return std::nullopt;
    }
    // QUrl normalizes what it parses, so it is used only to validate the address and to get the
    // host.
    const QUrl url(*address);
    if (!url.isValid()) {
        return std::nullopt;
    }
    return PageUrl{*address, url.host(QUrl::FullyEncoded)};
}

} // namespace vellumo
