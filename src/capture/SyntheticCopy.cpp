// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "capture/SyntheticCopy.h"

#include "capture/ReadingBudget.h"
#include "platform/Accessibility.h"
#include "platform/EventMonitoring.h"
#include "platform/KeyPosting.h"
#include "platform/Workspace.h"
#include "settings/UserPreferences.h"

#include <QStringList>
#include <QThread>

using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr auto snapshotTime = 150ms;
constexpr auto copyTime = 350ms;
// Without a known selection, "nothing selected" has to be reported within 250 ms.
constexpr auto nothingTime = 210ms;
constexpr auto minCopyTime = 100ms; // with less time the copy would arrive after the deadline
constexpr auto lateTime = 5s; // a copy that arrives later than this is not undone
// Where owners are not named, a late copy looks like one by the user, who is slower than this.
constexpr auto anonymousLateTime = 500ms;

} // namespace

SyntheticCopy::SyntheticCopy(const Desktop &desktop, ReadingBudget &budget)
    : desktop_(desktop)
    , budget_(budget)
{
    lateTimer_.setSingleShot(true);
    lateTimer_.callOnTimeout([this] { forgetLate(); });
    QObject::connect(&desktop_.pasteboard, &Pasteboard::ownerChanged, &lateTimer_,
                     [this] { undoLate(); });
}

SyntheticCopy::~SyntheticCopy()
{
    forgetLate();
}

std::optional<QString> SyntheticCopy::textFrom(const RunningApplication &application,
                                               Selection selection)
{
    const qint64 process = application.processIdentifier;
    Pasteboard &pasteboard = desktop_.pasteboard;
    undoLate(); // a late copy that has arrived but was not processed yet
    if (!isAllowedIn(application) || desktop_.accessibility.isUnresponsive(process)
        || !desktop_.keys.canPostCopy(process) || !waitForMenusToClose()) {
        return std::nullopt;
    }
    // Contents that cannot be restored are not replaced.
    const quint64 changeCount = pasteboard.changeCount();
    const auto before = pasteboard.items(budget_.selectionDeadline(snapshotTime));
    if (!before || budget_.leftForSelection() < minCopyTime) {
        return std::nullopt;
    }
    const bool isWorthWaiting = selection == Selection::Known || slowProcesses_.contains(process);
    const auto time = isWorthWaiting ? copyTime
                                     : std::clamp<std::chrono::milliseconds>(
                                         nothingTime - budget_.elapsed(), minCopyTime, copyTime);
    if (!desktop_.keys.postCopy(process)
        || !pasteboard.waitForOwner(process, changeCount, budget_.selectionDeadline(time))) {
        expectLate(process, changeCount, *before);
        return std::nullopt;
    }
    auto copied = pasteboard.string(budget_.selectionDeadline(ReadingBudget::total));
    const bool isTheirs = pasteboard.ownerProcess() == process;
    restore(*before);
    return isTheirs ? copied : std::nullopt;
}

bool SyntheticCopy::isAllowedIn(const RunningApplication &application) const
{
    if (desktop_.settings == nullptr) {
        return true;
    }
    const UserPreferences preferences(*desktop_.settings);
    const QStringList exceptions = preferences.noCopyingIn();
    const auto isException = [&exceptions](const std::optional<QString> &name) {
        return name && exceptions.contains(*name, Qt::CaseInsensitive);
    };
    return preferences.readsByCopying() && !isException(application.bundleIdentifier)
        && !isException(application.localizedName);
}

/// A tap of Option opens the menu bar of some applications, and the release of the second tap
/// closes it; copy keys sent in between would go to the menu.
bool SyntheticCopy::waitForMenusToClose()
{
    if (budget_.areMenusClosed) {
        return true;
    }
    const auto time = budget_.leftForSelection() - ReadingBudget::menuSettleTime - minCopyTime;
    if (time < 0ms || !desktop_.events.waitForRelease(ModifierFlag::Option, QDeadlineTimer(time))) {
        return false;
    }
    QThread::msleep(static_cast<unsigned long>(ReadingBudget::menuSettleTime.count()));
    return true;
}

void SyntheticCopy::restore(const QList<PasteboardItem> &items)
{
    if (items.isEmpty()) {
        desktop_.pasteboard.clear();
    } else {
        desktop_.pasteboard.write(items);
    }
    if (late_) {
        late_->changeCount = desktop_.pasteboard.changeCount();
    }
}

void SyntheticCopy::expectLate(qint64 process, quint64 changeCount,
                               const QList<PasteboardItem> &before)
{
    late_ = Late{};
    late_->process = process;
    late_->changeCount = changeCount;
    late_->before = before;
    late_->monitor = desktop_.events.addGlobalMonitor(
        PanelEvents::mouseDown | maskOf(EventType::FlagsChanged), [this](const Event &event) {
            const bool isRelease = event.type == EventType::FlagsChanged
                && (event.modifierFlags & ~ModifierFlag::CapsLock) == 0;
            if (late_ && !late_->userActed && !isRelease) {
                late_->userActed = static_cast<quint32>(event.timestampMs);
            }
        });
    lateTimer_.start(desktop_.pasteboard.namesOwners() ? lateTime : anonymousLateTime);
}

/// Restores the clipboard if the late copy has arrived. The timer keeps running, since an
/// application that was asked several times may copy again.
void SyntheticCopy::undoLate()
{
    if (!late_ || desktop_.pasteboard.changeCount() == late_->changeCount) {
        return;
    }
    const auto taken =
        desktop_.pasteboard.waitForOwner(late_->process, late_->changeCount, QDeadlineTimer(0));
    const bool isTheirs = taken && desktop_.pasteboard.ownerProcess() == late_->process;
    // A copy that the user has made meanwhile must stay. Most applications report the time of the
    // keys that caused the copy.
    const bool isUsers =
        taken && late_->userActed && static_cast<qint32>(*taken - *late_->userActed) >= 0;
    if (isTheirs && !isUsers) {
        slowProcesses_.insert(late_->process);
        restore(late_->before);
    } else {
        forgetLate();
    }
}

void SyntheticCopy::forgetLate()
{
    late_.reset();
}

} // namespace vellumo
