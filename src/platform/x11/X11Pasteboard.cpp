// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/x11/X11Pasteboard.h"

#include "platform/x11/ToolkitClipboard.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Problems.h"
#include "platform/x11/X11SelectionReader.h"
#include "platform/x11/X11Windows.h"
#include <QSet>
#include <chrono>
#include <unistd.h>
#include <xcb/xfixes.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr qsizetype maxTargets = 256;
constexpr auto handOverTime = 1s;

} // namespace

X11Pasteboard::X11Pasteboard(X11Connection &connection, X11Problems &problems)
    : connection_(connection)
    , clipboard_(connection.atom("CLIPBOARD"_ba))
    , server_(connection, clipboard_)
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
            xcb, server_.window(), clipboard_,
            XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER
                | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY
                | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    } else {
        problems.add(u"no XFIXES extension, so copied text is not noticed"_s);
    }
    connection_.setEventHandler([this](const auto &event) { handleEvent(event); });
    connection_.flush();
}

X11Pasteboard::~X11Pasteboard()
{
    connection_.setEventHandler(nullptr);
    server_.handOver(QDeadlineTimer(handOverTime));
}

bool X11Pasteboard::isOwnerChange(const xcb_generic_event_t &event) const
{
    return fixesEvent_ != 0 && eventType(event) == fixesEvent_ + XCB_XFIXES_SELECTION_NOTIFY
        && eventAs<xcb_xfixes_selection_notify_event_t>(event).selection == clipboard_;
}

void X11Pasteboard::handleEvent(const xcb_generic_event_t &event)
{
    if (isOwnerChange(event)) {
        ++changeCount_;
    } else {
        server_.handleEvent(event);
    }
}

quint64 X11Pasteboard::changeCount()
{
    connection_.roundTrip();
    while (connection_.takeEvent([this](const auto &event) { return isOwnerChange(event); },
                                 QDeadlineTimer(0))) {
        ++changeCount_;
    }
    return changeCount_;
}

bool X11Pasteboard::waitForChange(quint64 count, QDeadlineTimer deadline)
{
    if (changeCount() != count) {
        return true;
    }
    if (!connection_.takeEvent([this](const auto &event) { return isOwnerChange(event); },
                               deadline)) {
        return false;
    }
    ++changeCount_;
    return true;
}

bool X11Pasteboard::isOwnedByOwnToolkit(xcb_window_t owner)
{
    return owner != server_.window() && X11Windows(connection_).clientProcess(owner) == getpid();
}

/// Targets that are no contents: questions about the selection, requests to do something, numbers
/// of objects in the owner's memory or on the server that end with it.
bool X11Pasteboard::isSkipped(const QByteArray &target) const
{
    static const QSet<QByteArray> skipped{
        "TARGETS"_ba,
        "MULTIPLE"_ba,
        "TIMESTAMP"_ba,
        "SAVE_TARGETS"_ba,
        "DELETE"_ba,
        "INSERT_PROPERTY"_ba,
        "INSERT_SELECTION"_ba,
        "PIXMAP"_ba,
        "BITMAP"_ba,
        "DRAWABLE"_ba,
        "COLORMAP"_ba,
        "GTK_TEXT_BUFFER_CONTENTS"_ba,
        "application/x-qt-image"_ba,
    };
    return target.isEmpty() || skipped.contains(target);
}

std::optional<QList<PasteboardItem>> X11Pasteboard::items(QDeadlineTimer deadline)
{
    if (!connection_.isUsable()) {
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
    if (reader.owner() == server_.window()) { // asking ourselves would wait for ourselves
        for (const auto &content : server_.contents()) {
            add(connection_.atomName(content.target), content.value);
        }
    } else {
        const auto targets = reader.targets();
        if (!targets || targets->size() > maxTargets) {
            return std::nullopt;
        }
        for (const auto target : *targets) {
            const auto name = connection_.atomName(target);
            if (isSkipped(name)) {
                continue;
            }
            const auto answer = reader.convert(target);
            if (answer.outcome == X11SelectionReader::Outcome::Failed) {
                return std::nullopt;
            }
            if (answer.outcome == X11SelectionReader::Outcome::Value) {
                add(name, answer.value);
            }
        }
    }
    if (changeCount() != countBefore) {
        return std::nullopt; // parts of two contents
    }
    return item.isEmpty() ? QList<PasteboardItem>() : QList<PasteboardItem>{item};
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
    if (reader.owner() != server_.window()) {
        return reader.text();
    }
    for (const auto target :
         {connection_.atom("UTF8_STRING"_ba), connection_.atom("text/plain;charset=utf-8"_ba),
          static_cast<xcb_atom_t>(XCB_ATOM_STRING)}) {
        for (const auto &content : server_.contents()) {
            if (content.target == target) {
                return selectionText(content.value);
            }
        }
    }
    return std::nullopt;
}

void X11Pasteboard::clear()
{
    if (connection_.isUsable()) {
        server_.clear();
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
        server_.own(std::move(contents));
    }
}

} // namespace vellumo
