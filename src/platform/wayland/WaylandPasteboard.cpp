// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/WaylandPasteboard.h"

#include "platform/wayland/client/ManagedClipboard.h"
#include "platform/x11/ToolkitClipboard.h"
#include "platform/x11/X11Pasteboard.h"
#include <QGuiApplication>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

WaylandPasteboard::WaylandPasteboard(X11Pasteboard &x11, ManagedClipboard *managed,
                                     FrontProcess frontProcess)
    : x11_(x11)
    , managed_(managed)
    , frontProcess_(std::move(frontProcess))
{
    connect(&x11_, &Pasteboard::ownerChanged, this, [this] {
        if (!isManaged()) {
            Q_EMIT ownerChanged();
        }
    });
    if (managed_ != nullptr) {
        managed_->onChange = [this] { announceSoon(); };
        connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this,
                &WaylandPasteboard::noteOwnCopy);
    }
}

WaylandPasteboard::~WaylandPasteboard()
{
    if (managed_ != nullptr) {
        managed_->onChange = nullptr;
    }
}

/// Qt also signals a change when the compositor confirms the same contents.
void WaylandPasteboard::noteOwnCopy()
{
    const auto *toolkit = QGuiApplication::clipboard();
    const QMimeData *contents = toolkit->ownsClipboard() ? toolkit->mimeData() : nullptr;
    if (std::exchange(ownContents_, contents) != contents && contents != nullptr) {
        ownCount_ = managed_->seenChangeCount() + 1; // its event is not read yet
    }
}

bool WaylandPasteboard::isManaged() const
{
    return managed_ != nullptr && managed_->isAvailable();
}

bool WaylandPasteboard::namesOwners() const
{
    return !isManaged();
}

void WaylandPasteboard::announceSoon()
{
    if (std::exchange(isChangePending_, true)) {
        return;
    }
    QMetaObject::invokeMethod(
        this,
        [this] {
            isChangePending_ = false;
            if (isManaged()) {
                static_cast<void>(attributeChanges());
                Q_EMIT ownerChanged();
            }
        },
        Qt::QueuedConnection);
}

/// Records the owner if the contents have changed since the last call. Returns the change count.
quint64 WaylandPasteboard::attributeChanges(std::optional<qint64> expected)
{
    const quint64 count = managed_->changeCount();
    if (attributedCount_ != count) {
        attributedCount_ = count;
        owner_ = expected;
        if (!expected && !isOwnedByOwnToolkit()) {
            owner_ = frontProcess_();
        }
        changedAt_ = static_cast<quint32>(std::chrono::duration_cast<std::chrono::milliseconds>(
                                              std::chrono::steady_clock::now().time_since_epoch())
                                              .count());
    }
    return count;
}

quint64 WaylandPasteboard::changeCount()
{
    return isManaged() ? attributeChanges() : x11_.changeCount();
}

std::optional<qint64> WaylandPasteboard::ownerProcess()
{
    if (!isManaged()) {
        return x11_.ownerProcess();
    }
    static_cast<void>(attributeChanges());
    return owner_;
}

std::optional<quint32> WaylandPasteboard::waitForOwner(qint64 process, quint64 count,
                                                       QDeadlineTimer deadline)
{
    if (!isManaged()) {
        return x11_.waitForOwner(process, count, deadline);
    }
    // The process is in front if it is waited for. XWayland, which would have to be asked, is busy
    // for a while after another keyboard was used.
    const auto expected = deadline.hasExpired() ? std::nullopt : std::optional(process);
    if (!managed_->waitForChange(count, deadline)) {
        return std::nullopt;
    }
    static_cast<void>(attributeChanges(expected));
    return owner_ == process ? std::optional(changedAt_) : std::nullopt;
}

/// Qt learns of another owner only from the event loop.
bool WaylandPasteboard::isOwnedByOwnToolkit()
{
    return QGuiApplication::clipboard()->ownsClipboard() && managed_->changeCount() == ownCount_;
}

std::optional<QList<PasteboardItem>> WaylandPasteboard::items(QDeadlineTimer deadline)
{
    if (!isManaged()) {
        return x11_.items(deadline);
    }
    return isOwnedByOwnToolkit() ? toolkitClipboardItems() : managed_->items(deadline);
}

std::optional<QString> WaylandPasteboard::string(QDeadlineTimer deadline)
{
    if (!isManaged()) {
        return x11_.string(deadline);
    }
    return isOwnedByOwnToolkit() ? toolkitClipboardText(QClipboard::Clipboard)
                                 : managed_->string(deadline);
}

void WaylandPasteboard::clear()
{
    if (!isManaged()) {
        x11_.clear();
        return;
    }
    managed_->clear();
    static_cast<void>(attributeChanges());
    owner_.reset();
}

void WaylandPasteboard::write(const QList<PasteboardItem> &items)
{
    if (!isManaged()) {
        x11_.write(items);
        return;
    }
    managed_->write(items);
    static_cast<void>(attributeChanges());
    owner_.reset();
}

} // namespace vellumo
