// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/PermissionManager.h"

#include "platform/Accessibility.h"
#include "platform/Clock.h"
#include "platform/Workspace.h"

#include <QGuiApplication>

using namespace std::chrono_literals;

namespace vellumo {

namespace {
constexpr auto desktopSettleTime = 500ms; // the desktop speaks before it has finished changing
constexpr auto pollInterval = 3s;
// The state that is polled follows the desktop's own signals. Asking the desktop itself wakes two
// processes, and only finds what a lost signal would have said.
constexpr int pollsPerRefresh = 10;
} // namespace

PermissionManager::PermissionManager(Accessibility &accessibility, Workspace &workspace,
                                     Clock &clock, bool isTrusted, QObject *parent)
    : QObject(parent)
    , accessibility_(accessibility)
    , workspace_(workspace)
    , clock_(clock)
    , isTrusted_(isTrusted)
{
}

void PermissionManager::startMonitoring()
{
    connect(&accessibility_, &Accessibility::trustChanged, this,
            [this] { clock_.after(desktopSettleTime, this, [this] { recheck(); }); });

    connect(&pollTimer_, &QTimer::timeout, this, [this, polls = 0]() mutable {
        recheck();
        if (++polls % pollsPerRefresh == 0) {
            accessibility_.refreshTrust();
        }
    });
    pollTimer_.setTimerType(Qt::CoarseTimer);
    pollTimer_.start(pollInterval);

    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
            [this](Qt::ApplicationState state) {
                if (state == Qt::ApplicationActive) {
                    recheck();
                    accessibility_.refreshTrust();
                }
            });
}

void PermissionManager::openAccessibilitySettings()
{
    if (!workspace_.openAccessibilitySettings()) {
        accessibility_.isProcessTrustedWithPrompt();
    }
}

void PermissionManager::recheck()
{
    const bool isTrusted = accessibility_.isProcessTrusted();
    if (isTrusted == isTrusted_) {
        return;
    }
    isTrusted_ = isTrusted;
    if (onChange) {
        onChange(isTrusted);
    }
}

} // namespace vellumo
