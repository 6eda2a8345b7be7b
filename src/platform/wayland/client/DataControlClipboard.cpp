// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/client/DataControlClipboard.h"

#include "platform/SelectionTypes.h"
#include "platform/wayland/client/DataControlDevice.h"
#include "platform/wayland/client/OfferReader.h"
#include "platform/wayland/client/WaylandConnection.h"
#include <QSet>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr qsizetype maxBytes = qsizetype{64} * 1024 * 1024;
constexpr qsizetype maxTypes = 256;

/// A compositor answers within a millisecond.
constexpr auto answerTimeout = 100ms;

/// GTK's description of its own text buffers, which is of use to no other process.
const QByteArray gtkRichText = "application/x-gtk-text-buffer-rich-text"_ba;

} // namespace

void DataControlClipboard::noteChange()
{
    ++changeCount_;
    if (onChange) {
        onChange();
    }
}

bool DataControlClipboard::isAvailable() const
{
    return device_.isOffered() && device_.isStarted();
}

quint64 DataControlClipboard::changeCount()
{
    connection_.roundTrip(QDeadlineTimer(answerTimeout));
    return changeCount_;
}

bool DataControlClipboard::waitForChange(quint64 count, QDeadlineTimer deadline)
{
    connection_.readEvents();
    while (changeCount_ <= count && connection_.waitForEvents(deadline)) { }
    return changeCount_ > count;
}

std::optional<QList<PasteboardItem>> DataControlClipboard::items(QDeadlineTimer deadline)
{
    if (!connection_.roundTrip(deadline)) {
        return std::nullopt;
    }
    const quint64 countBefore = changeCount_;
    const DataOffer *offer = device_.clipboard();
    if (offer == nullptr) {
        return QList<PasteboardItem>();
    }
    if (offer->types.size() > maxTypes) {
        return std::nullopt;
    }
    PasteboardItem item;
    qsizetype left = maxBytes;
    for (const QByteArray &type : offer->types) {
        if (!hasContents(type) || type == gtkRichText) {
            continue;
        }
        const auto bytes = readOffer(connection_, *offer, type, {left, deadline});
        if (!bytes || bytes->size() >= left) {
            return std::nullopt;
        }
        left -= bytes->size();
        item.append({QString::fromUtf8(type), *bytes});
    }
    // The owner may have exited or been replaced while it was read.
    if (!connection_.roundTrip(deadline) || changeCount_ != countBefore) {
        return std::nullopt;
    }
    // An owner that has types but none of them with contents is not an empty clipboard.
    return item.isEmpty() ? std::nullopt : std::optional(QList<PasteboardItem>{item});
}

std::optional<QString> DataControlClipboard::string(QDeadlineTimer deadline)
{
    if (!connection_.roundTrip(deadline)) {
        return std::nullopt;
    }
    const DataOffer *offer = device_.clipboard();
    return offer == nullptr ? std::nullopt : readText(connection_, *offer, deadline);
}

void DataControlClipboard::clear()
{
    device_.setClipboard(nullptr);
    static_cast<void>(changeCount());
}

void DataControlClipboard::write(const QList<PasteboardItem> &items)
{
    PasteboardItem contents;
    QSet<QString> seen;
    for (const auto &item : items) {
        for (const auto &content : item) {
            if (!content.first.isEmpty() && !seen.contains(content.first)) {
                seen.insert(content.first);
                contents.append(content);
            }
        }
    }
    if (contents.isEmpty()) {
        clear();
        return;
    }
    if (!server_) {
        server_ = std::make_unique<DataControlServer>(connection_.display(), [this] {
            QMetaObject::invokeMethod(
                &context_, [this] { connection_.readEvents(); }, Qt::QueuedConnection);
        });
    }
    server_->own(device_, contents);
    static_cast<void>(changeCount()); // changes from now on are newer
}

} // namespace vellumo
