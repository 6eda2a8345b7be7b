// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/x11/X11Pasteboard.h"

#include "platform/Diagnostics.h"
#include "platform/SelectionTypes.h"
#include "platform/x11/ToolkitClipboard.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Problems.h"
#include "platform/x11/X11SelectionReader.h"
#include "platform/x11/X11Windows.h"
#include <QSet>
#include <chrono>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr qsizetype maxTargets = 256;
constexpr auto handOverTime = 900ms; // less than the timeout of a call to the thread

/// Maximum number of owner changes that are kept. More occur between two calls only when programs
/// compete for the clipboard.
constexpr qsizetype maxChanges = 32;
constexpr int maxChangesAtOnce = 1000;

} // namespace

X11Pasteboard::X11Pasteboard(X11Connection &connection, X11Problems &problems)
    : connection_(connection)
    , clipboard_(connection.atom("CLIPBOARD"_ba))
{
    if (!connection_.isUsable()) {
        return;
    }
    auto *xcb = connection_.xcb();
    const auto *extension = connection_.extension(&xcb_xfixes_id);
    if (extension != nullptr
        && connection_.reply<xcb_xfixes_query_version_reply_t>(
            xcb_xfixes_query_version(xcb, 5, 0))) {
        fixesEvent_ = extension->first_event;
        xcb_xfixes_select_selection_input(
            xcb, connection_.root(), clipboard_,
            XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER
                | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY
                | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    } else {
        problems.add(u"no XFIXES extension, so copied text is not noticed"_s);
    }
    connection_.setEventHandler([this](const auto &event) {
        if (isOwnerChange(event)) {
            note(eventAs<xcb_xfixes_selection_notify_event_t>(event));
        }
    });
    connection_.flush();
}

X11Pasteboard::~X11Pasteboard()
{
    connection_.setEventHandler(nullptr);
    if (thread_) {
        thread_->handOver(QDeadlineTimer(handOverTime));
    }
}

bool X11Pasteboard::isOwnerChange(const xcb_generic_event_t &event) const
{
    return fixesEvent_ != 0 && eventType(event) == fixesEvent_ + XCB_XFIXES_SELECTION_NOTIFY
        && eventAs<xcb_xfixes_selection_notify_event_t>(event).selection == clipboard_;
}

void X11Pasteboard::note(const xcb_xfixes_selection_notify_event_t &change)
{
    if (!isServed(change.owner)) {
        served_.clear();
    }
    changes_.append({++changeCount_, change.owner, change.selection_timestamp});
    if (changes_.size() > maxChanges) {
        changes_.removeFirst();
    }
    if (isChangePending_) {
        return;
    }
    isChangePending_ = true;
    QMetaObject::invokeMethod(
        &context_,
        [this] {
            isChangePending_ = false;
            Q_EMIT ownerChanged();
        },
        Qt::QueuedConnection);
}

bool X11Pasteboard::takeOwnerChange(QDeadlineTimer deadline)
{
    const auto event =
        connection_.takeEvent([this](const auto &each) { return isOwnerChange(each); }, deadline);
    if (event) {
        note(eventAs<xcb_xfixes_selection_notify_event_t>(*event));
    }
    return event != nullptr;
}

quint64 X11Pasteboard::changeCount()
{
    connection_.roundTrip();
    // Programs that compete for the clipboard may never stop.
    for (int i = 0; i < maxChangesAtOnce && takeOwnerChange(QDeadlineTimer(0)); ++i) { }
    return changeCount_;
}

std::optional<qint64> X11Pasteboard::ownerProcess()
{
    const auto owner = connection_.reply<xcb_get_selection_owner_reply_t>(
        xcb_get_selection_owner(connection_.xcb(), clipboard_));
    return owner ? X11Windows(connection_).clientProcess(owner->owner) : std::nullopt;
}

std::optional<quint32> X11Pasteboard::waitForOwner(qint64 process, quint64 count,
                                                   QDeadlineTimer deadline)
{
    static_cast<void>(changeCount());
    do {
        for (const auto &change : std::as_const(changes_)) {
            if (change.count <= count) {
                continue;
            }
            count = change.count;
            if (X11Windows(connection_).clientProcess(change.owner) == process) {
                return change.time;
            }
        }
    } while (!deadline.hasExpired() && takeOwnerChange(deadline));
    return std::nullopt;
}

X11SelectionThread &X11Pasteboard::thread()
{
    if (!thread_) {
        thread_ = std::make_unique<X11SelectionThread>(connection_.display(), "CLIPBOARD"_ba);
    }
    return *thread_;
}

bool X11Pasteboard::isServed(xcb_window_t owner)
{
    return thread_ && owner != XCB_WINDOW_NONE && owner == thread_->window();
}

bool X11Pasteboard::isOwnedByOwnToolkit(xcb_window_t owner)
{
    return !isServed(owner) && X11Windows(connection_).clientProcess(owner) == getpid();
}

std::optional<QList<PasteboardItem>> X11Pasteboard::items(QDeadlineTimer deadline)
{
    // Contents that cannot be served cannot be restored, nor contents whose changes are not
    // reported.
    if (fixesEvent_ == 0 || thread().window() == XCB_WINDOW_NONE) {
        return std::nullopt;
    }
    const auto countBefore = changeCount();
    X11SelectionReader reader(connection_, clipboard_, deadline);
    if (!reader.isOwnerKnown()) {
        return std::nullopt;
    }
    if (reader.owner() == XCB_WINDOW_NONE) {
        return QList<PasteboardItem>();
    }
    if (isOwnedByOwnToolkit(reader.owner())) {
        return toolkitClipboardItems();
    }
    PasteboardItem item;
    forms_.clear();
    const auto add = [&](const QByteArray &name, const SelectionValue &value) {
        const QString type = QString::fromUtf8(name);
        forms_.insert(type, {value.type, value.format});
        item.append({type, value.bytes});
    };
    if (isServed(reader.owner())) {
        for (const auto &content : std::as_const(served_)) {
            add(connection_.atomName(content.target), content.value);
        }
    } else {
        const auto targets = reader.targets();
        if (!targets || targets->size() > maxTargets) {
            return std::nullopt;
        }
        for (const auto target : *targets) {
            const auto name = connection_.atomName(target);
            if (!hasContents(name)) {
                continue;
            }
            const auto answer = reader.convert(target);
            if (answer.outcome == X11SelectionReader::Outcome::Failed
                || answer.outcome == X11SelectionReader::Outcome::Cut) {
                return std::nullopt;
            }
            if (answer.outcome == X11SelectionReader::Outcome::Value) {
                add(name, answer.value);
            }
        }
    }
    if (changeCount() != countBefore) {
        return std::nullopt; // the owner changed while it was read
    }
    // An owner that has targets but returns none of them is not an empty clipboard.
    return item.isEmpty() ? std::nullopt : std::optional(QList<PasteboardItem>{item});
}

std::optional<QString> X11Pasteboard::string(QDeadlineTimer deadline)
{
    if (!connection_.isUsable()) {
        return std::nullopt;
    }
    X11SelectionReader reader(connection_, clipboard_, deadline);
    if (isOwnedByOwnToolkit(reader.owner())) {
        return toolkitClipboardText(QClipboard::Clipboard);
    }
    if (!isServed(reader.owner())) {
        return reader.text();
    }
    for (const auto target :
         {connection_.atom("UTF8_STRING"_ba), connection_.atom("text/plain;charset=utf-8"_ba),
          static_cast<xcb_atom_t>(XCB_ATOM_STRING)}) {
        for (const auto &content : std::as_const(served_)) {
            if (content.target == target) {
                return selectionText(content.value);
            }
        }
    }
    return std::nullopt;
}

void X11Pasteboard::clear()
{
    served_.clear();
    if (connection_.isUsable()) {
        xcb_set_selection_owner(connection_.xcb(), XCB_WINDOW_NONE, clipboard_, XCB_CURRENT_TIME);
        // Waits until it is processed, before another connection sends requests.
        static_cast<void>(changeCount());
    }
}

X11Pasteboard::Form X11Pasteboard::formOf(const QString &type, qsizetype size)
{
    if (const auto known = forms_.constFind(type);
        known != forms_.cend() && size % (known->format / 8) == 0) {
        return *known;
    }
    const auto name = type == "TEXT"_L1 ? u"UTF8_STRING"_s : type;
    return {connection_.atom(name.toUtf8()), 8};
}

void X11Pasteboard::write(const QList<PasteboardItem> &items)
{
    QList<X11SelectionServer::Content> contents;
    QSet<QString> seen;
    for (const auto &item : items) {
        for (const auto &[type, bytes] : item) {
            if (type.isEmpty() || seen.contains(type)) {
                continue;
            }
            seen.insert(type);
            const auto form = formOf(type, bytes.size());
            contents.append({connection_.atom(type.toUtf8()), {form.type, form.format, bytes}});
        }
    }
    if (contents.isEmpty()) {
        clear();
    } else if (connection_.isUsable()) {
        if (!thread().own(contents) && !thread().own(contents)) {
            printDiagnostic(u"the clipboard could not be put back"_s);
            return;
        }
        static_cast<void>(changeCount()); // changes recorded from now on are newer
        served_ = std::move(contents);
    }
}

} // namespace vellumo
