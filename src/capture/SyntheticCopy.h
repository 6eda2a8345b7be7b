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

/// Makes an application copy its selection, and puts the clipboard back as it was before, also when
/// the copy comes seconds later. Main thread only.
class SyntheticCopy {
public:
    /// Whether the application is known to have something selected, which decides how long a copy
    /// is waited for.
    enum class Selection : quint8 { Unknown, Known };

    /// Everything must outlive this object. Without `settings` copying is always allowed.
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

    /// What the application in front, which must be this one, copies in time. Absent when nothing
    /// comes, and, without keys being sent, when copying is switched off, the application has just
    /// left a question unanswered, Option stays down or the clipboard could not be put back as it
    /// is.
    [[nodiscard]] std::optional<QString> textFrom(const RunningApplication &application,
                                                  Selection selection);

private:
    /// A copy that was asked for and did not come in time.
    struct Late {
        qint64 process = 0;
        quint64 changeCount = 0; ///< when it had not come yet
        QList<PasteboardItem> before; ///< what it will displace
        std::optional<quint32> userActed; ///< when the user may first have copied
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
    QSet<qint64> slowProcesses_; ///< whose copies came late before
    QTimer lateTimer_;
};

} // namespace vellumo
