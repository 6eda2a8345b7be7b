// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Pasteboard.h"
#include <QSet>
#include <QTimer>
#include <chrono>
#include <memory>
#include <optional>

namespace vellumo {

class Accessibility;
class DefaultsStore;
class EventMonitoring;
class EventMonitorHandle;
class KeyPosting;
class ReadingBudget;
struct RunningApplication;

/// Makes an application copy its selection, and restores the clipboard, also when the copy arrives
/// later: up to 5 s, or half a second where the pasteboard does not name its owners. Main thread
/// only.
class SyntheticCopy {
public:
    /// Whether the application is known to have a selection, which determines the timeout of a
    /// copy.
    enum class Selection : quint8 { Unknown, Known };

    /// All must outlive this object. Without `settings` copying is always allowed.
    struct Desktop {
        Accessibility &accessibility;
        Pasteboard &pasteboard;
        KeyPosting &keys;
        EventMonitoring &events;
        const DefaultsStore *settings = nullptr;
    };

    SyntheticCopy(const Desktop &desktop, ReadingBudget &budget);
    ~SyntheticCopy();
    Q_DISABLE_COPY_MOVE(SyntheticCopy)

    /// Returns the text that `application`, which must be in front, copies in time; absent on
    /// timeout. Absent without sending keys when copying is disabled, the application has just let
    /// a question time out, Option stays pressed, or the clipboard could not be restored.
    [[nodiscard]] std::optional<QString> textFrom(const RunningApplication &application,
                                                  Selection selection);

private:
    /// A requested copy that did not arrive in time.
    struct Late {
        qint64 process = 0;
        quint64 changeCount = 0; ///< before the copy
        QList<PasteboardItem> before; ///< contents that the copy replaces
        /// Time of the first input by which the user may have copied.
        std::optional<quint32> userActed;
        std::unique_ptr<EventMonitorHandle> monitor;
    };

    [[nodiscard]] bool isAllowedIn(const RunningApplication &application) const;
    [[nodiscard]] bool waitForMenusToClose();
    void restore(const QList<PasteboardItem> &items);
    void expectLate(qint64 process, quint64 changeCount, const QList<PasteboardItem> &before);
    void undoLate();
    void forgetLate();

    Desktop desktop_;
    ReadingBudget &budget_;
    std::optional<Late> late_;
    QSet<qint64> slowProcesses_; ///< processes whose copies were late before
    QTimer lateTimer_;
};

} // namespace vellumo
