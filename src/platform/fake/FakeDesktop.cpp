// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/fake/FakeDesktop.h"

#include <QThread>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

void spend(QDeadlineTimer time)
{
    QThread::msleep(static_cast<unsigned long>(time.remainingTime()));
}

} // namespace

void FakeDefaultsStore::setValue(const QString &key, const QVariant &value)
{
    if (values_.value(key) == value) {
        return;
    }
    if (value.isValid()) {
        values_.insert(key, value);
    } else {
        values_.remove(key);
    }
    Q_EMIT changed(key);
}

bool FakeWorkspace::openUrl(const QUrl &url)
{
    openedUrls.append(url);
    return opensUrls;
}

bool FakeAccessibility::isProcessTrustedWithPrompt()
{
    calls_.append(u"ask for trust"_s);
    return trusted;
}

void FakeAccessibility::requestManualAccessibility(qint64 processIdentifier)
{
    calls_.append(u"request accessibility of %1"_s.arg(processIdentifier));
}

std::optional<AccessibleElement> FakeAccessibility::focusedElement(qint64 processIdentifier,
                                                                   QDeadlineTimer deadline)
{
    calls_.append(u"focused element"_s);
    if (hangs) {
        spend(deadline);
    }
    if (hangs || !focusedKind) {
        return std::nullopt;
    }
    return AccessibleElement{processIdentifier, {}, {}, *focusedKind, isEditable};
}

SelectedText FakeAccessibility::selectedText(const AccessibleElement &element,
                                             QDeadlineTimer deadline)
{
    Q_UNUSED(element)
    Q_UNUSED(deadline)
    calls_.append(u"selected text"_s);
    if (selections.isEmpty()) {
        return {};
    }
    return selections.size() > 1 ? selections.takeFirst() : selections.constFirst();
}

std::optional<std::chrono::milliseconds>
FakeAccessibility::sinceSelectionChange(qint64 processIdentifier, std::chrono::milliseconds atLeast)
{
    Q_UNUSED(processIdentifier)
    const auto change =
        std::ranges::find_if(selectionChanges, [atLeast](auto age) { return age >= atLeast; });
    return change == selectionChanges.end() ? std::nullopt : std::optional(*change);
}

std::optional<TextRange> FakeAccessibility::selectedTextRange(const AccessibleElement &element,
                                                              QDeadlineTimer deadline)
{
    Q_UNUSED(element)
    Q_UNUSED(deadline)
    calls_.append(u"selected range"_s);
    return range;
}

std::optional<QString> FakeAccessibility::stringForRange(const AccessibleElement &element,
                                                         TextRange asked, QDeadlineTimer deadline)
{
    Q_UNUSED(element)
    Q_UNUSED(deadline)
    calls_.append(u"string for range"_s);
    return range == asked ? std::optional(rangeText) : std::nullopt;
}

std::optional<QString> FakeAccessibility::focusedWindowTitle(qint64 processIdentifier)
{
    calls_.append(u"title of %1"_s.arg(processIdentifier));
    return title;
}

std::optional<QString> FakeAccessibility::pageAddress(qint64 processIdentifier,
                                                      QDeadlineTimer deadline)
{
    Q_UNUSED(deadline)
    calls_.append(u"page of %1"_s.arg(processIdentifier));
    return page;
}

std::optional<quint32> FakePasteboard::waitForOwner(qint64 process, quint64 count,
                                                    QDeadlineTimer deadline)
{
    const bool isWait = !deadline.hasExpired();
    if (isWait) {
        calls_.append(u"wait for copy"_s);
    }
    if (isWait && copied && deadline.remainingTimeAsDuration() > copyingTime) {
        put({{{u"UTF8_STRING"_s, copied->toUtf8()}}}, copier, 0);
    }
    return owner_ == process && ownedSince_ > count ? std::optional(time_) : std::nullopt;
}

void FakePasteboard::put(const QList<PasteboardItem> &items, qint64 process, quint32 time)
{
    contents = items;
    owner_ = process;
    time_ = time;
    ownedSince_ = ++changeCount_;
    Q_EMIT ownerChanged();
}

std::optional<QList<PasteboardItem>> FakePasteboard::items(QDeadlineTimer deadline)
{
    calls_.append(u"snapshot"_s);
    if (isSlow) {
        spend(deadline);
    }
    return contents;
}

std::optional<QString> FakePasteboard::string(QDeadlineTimer deadline)
{
    Q_UNUSED(deadline)
    calls_.append(u"read copy"_s);
    return copied;
}

void FakePasteboard::clear()
{
    calls_.append(u"clear"_s);
    contents = QList<PasteboardItem>();
    owner_.reset();
    ++changeCount_;
}

void FakePasteboard::write(const QList<PasteboardItem> &items)
{
    calls_.append(u"write"_s);
    contents = items;
    ++changeCount_;
}

std::optional<QString> FakePrimarySelection::string(QDeadlineTimer deadline)
{
    calls_.append(u"primary"_s);
    if (hangs) {
        spend(deadline);
    }
    return hangs ? std::nullopt : text;
}

bool FakeKeyPosting::canPostCopy(qint64 process)
{
    Q_UNUSED(process)
    calls_.append(u"may keys be posted"_s);
    return canPost;
}

bool FakeKeyPosting::postCopy(qint64 process)
{
    Q_UNUSED(process)
    calls_.append(u"copy keys"_s);
    return canPost;
}

} // namespace vellumo
