// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Accessibility.h"
#include "platform/DefaultsStore.h"
#include "platform/KeyPosting.h"
#include "platform/Pasteboard.h"
#include "platform/Workspace.h"
#include <QHash>
#include <QStringList>

namespace vellumo {

/// Records the calls to the fakes below, in order.
using FakeCalls = QStringList;

class FakeDefaultsStore : public DefaultsStore {
    Q_OBJECT

public:
    [[nodiscard]] QVariant value(const QString &key) const override { return values_.value(key); }
    void setValue(const QString &key, const QVariant &value) override;
    [[nodiscard]] bool hasFailed() const override { return hasFailed_; }

    void fail()
    {
        hasFailed_ = true;
        Q_EMIT failed();
    }

private:
    QHash<QString, QVariant> values_;
    bool hasFailed_ = false;
};

class FakeWorkspace : public Workspace {
    Q_OBJECT

public:
    std::optional<RunningApplication> frontmost;
    bool ownWindowActive = false;
    bool screenCovered = false;
    int skips = 0; ///< number of calls of skipPastActivations()
    QString ownSelection;
    QList<QUrl> openedUrls;
    bool opensUrls = true; ///< false: as if no browser were registered

    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override
    {
        return frontmost;
    }
    void skipPastActivations() override { ++skips; }
    [[nodiscard]] bool isScreenCovered() override { return screenCovered; }
    [[nodiscard]] bool isOwnWindowActive() const override { return ownWindowActive; }
    [[nodiscard]] QString ownSelectedText() const override { return ownSelection; }
    bool openUrl(const QUrl &url) override;
    bool openFolder(const QString & /*path*/) override { return false; }
    bool openAccessibilitySettings() override { return false; }
};

/// An application with one focused element.
class FakeAccessibility : public Accessibility {
    Q_OBJECT

public:
    explicit FakeAccessibility(FakeCalls &calls) : calls_(calls) { }

    bool trusted = true;
    bool hangs = false; ///< whether a question takes all of its time and has no answer
    bool unresponsive = false; ///< whether the process recently let a question time out
    std::optional<ElementKind> focusedKind = ElementKind::Ordinary; ///< absent: nothing focused
    bool isEditable = false;
    QList<SelectedText> selections; ///< one per question; the last one is repeated
    QList<std::chrono::milliseconds> selectionChanges; ///< how long ago, the latest first
    std::optional<TextRange> range;
    QString rangeText;
    std::optional<QString> title;
    std::optional<QString> page;

    [[nodiscard]] bool isProcessTrusted() const override { return trusted; }
    bool isProcessTrustedWithPrompt() override;
    void refreshTrust() override { }
    void withdrawConsent() override
    {
        trusted = false;
        Q_EMIT trustChanged();
    }
    void requestManualAccessibility(qint64 processIdentifier) override;
    [[nodiscard]] bool isUnresponsive(qint64 /*processIdentifier*/) const override
    {
        return unresponsive;
    }
    [[nodiscard]] std::optional<AccessibleElement> focusedElement(qint64 processIdentifier,
                                                                  QDeadlineTimer deadline) override;
    [[nodiscard]] SelectedText selectedText(const AccessibleElement &element,
                                            QDeadlineTimer deadline) override;
    [[nodiscard]] std::optional<std::chrono::milliseconds>
    sinceSelectionChange(qint64 processIdentifier, std::chrono::milliseconds atLeast) override;
    [[nodiscard]] std::optional<TextRange> selectedTextRange(const AccessibleElement &element,
                                                             QDeadlineTimer deadline) override;
    [[nodiscard]] std::optional<QString> stringForRange(const AccessibleElement &element,
                                                        TextRange range,
                                                        QDeadlineTimer deadline) override;
    [[nodiscard]] std::optional<QString> focusedWindowTitle(qint64 processIdentifier) override;
    [[nodiscard]] std::optional<QString> pageAddress(qint64 processIdentifier,
                                                     QDeadlineTimer deadline) override;

private:
    FakeCalls &calls_;
};

class FakePasteboard : public Pasteboard {
public:
    explicit FakePasteboard(FakeCalls &calls) : calls_(calls) { }

    bool isSlow = false; ///< whether a snapshot takes all of its time
    std::optional<QList<PasteboardItem>> contents = QList<PasteboardItem>();
    std::optional<QString> copied; ///< what the application copies on postCopy()
    std::chrono::milliseconds copyingTime{0}; ///< delay of the copy
    qint64 copier = 4711; ///< the process that copies
    std::optional<qint64> successor; ///< a process that becomes the owner after the copy
    bool isNaming = true; ///< whether owners are named

    [[nodiscard]] bool namesOwners() const override { return isNaming; }
    [[nodiscard]] quint64 changeCount() override { return changeCount_; }
    [[nodiscard]] std::optional<qint64> ownerProcess() override
    {
        return successor ? successor : owner_;
    }
    [[nodiscard]] std::optional<quint32> waitForOwner(qint64 process, quint64 count,
                                                      QDeadlineTimer deadline) override;
    /// Makes a process the owner with this text, at the time that it reports.
    void put(const QList<PasteboardItem> &items, qint64 process, quint32 time);
    [[nodiscard]] std::optional<QList<PasteboardItem>> items(QDeadlineTimer deadline) override;
    [[nodiscard]] std::optional<QString> string(QDeadlineTimer deadline) override;
    void clear() override;
    void write(const QList<PasteboardItem> &items) override;

private:
    FakeCalls &calls_;
    quint64 changeCount_ = 7;
    quint64 ownedSince_ = 0; ///< change count
    std::optional<qint64> owner_; ///< absent: this program
    quint32 time_ = 0;
};

class FakePrimarySelection : public PrimarySelection {
public:
    explicit FakePrimarySelection(FakeCalls &calls) : calls_(calls) { }

    bool hangs = false; ///< whether a question takes all of its time and has no answer
    std::optional<Publication> published;
    std::optional<QString> text;

    [[nodiscard]] std::optional<Publication> publication() override { return published; }
    [[nodiscard]] bool publishes(qint64 processIdentifier) override
    {
        return published && published->processIdentifier == processIdentifier;
    }
    [[nodiscard]] std::optional<QString> string(QDeadlineTimer deadline) override;

private:
    FakeCalls &calls_;
};

class FakeKeyPosting : public KeyPosting {
public:
    explicit FakeKeyPosting(FakeCalls &calls) : calls_(calls) { }

    bool canPost = true;

    [[nodiscard]] bool canPostCopy(qint64 process) override;
    bool postCopy(qint64 process) override;

private:
    FakeCalls &calls_;
};

} // namespace vellumo
