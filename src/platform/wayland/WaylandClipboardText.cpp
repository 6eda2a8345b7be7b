// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/WaylandClipboardText.h"

#include <array>
#include <cerrno>
#include <unistd.h>
#include <utility>

using namespace std::chrono_literals;

namespace vellumo {

namespace {

/// A paste that takes longer is of no use to the user.
constexpr auto readingTime = 2s;

constexpr qsizetype maxBytes = qsizetype{64} * 1024 * 1024;

} // namespace

WaylandClipboardText::WaylandClipboardText(ClipboardText &x11, waylandClientModule::Client *client)
    : x11_(x11)
    , client_(client)
{
    deadline_.setSingleShot(true);
    deadline_.callOnTimeout([this] { finish(false); });
}

WaylandClipboardText::~WaylandClipboardText()
{
    if (reading_) {
        static_cast<void>(end());
    }
}

void WaylandClipboardText::read(Source source, QObject &context,
                                std::function<void(const QString &)> done)
{
    if (client_ == nullptr || !client_->clipboard().isAvailable()) {
        x11_.read(source, context, std::move(done));
        return;
    }
    if (reading_) {
        return;
    }
    const auto text = client_->requestText(source);
    if (!text) {
        QMetaObject::invokeMethod(
            &context, [done = std::move(done)] { done({}); }, Qt::QueuedConnection);
        return;
    }
    auto *notifier = new QSocketNotifier(text->descriptor, QSocketNotifier::Read);
    QObject::connect(notifier, &QSocketNotifier::activated, &deadline_, [this] { readMore(); });
    reading_ = Reading{*text, &context, std::move(done), {}, notifier};
    deadline_.start(readingTime);
}

void WaylandClipboardText::readMore()
{
    std::array<char, 65536> buffer;
    const ssize_t count = ::read(reading_->text.descriptor, buffer.data(), buffer.size());
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
        return;
    }
    if (count > 0) {
        reading_->bytes.append(buffer.data(), count);
    }
    if (count <= 0 || reading_->bytes.size() >= maxBytes) {
        finish(count >= 0);
    }
}

WaylandClipboardText::Reading WaylandClipboardText::end()
{
    deadline_.stop();
    Reading reading = *std::exchange(reading_, std::nullopt);
    reading.notifier->setEnabled(false);
    reading.notifier->deleteLater(); // it may be emitting
    ::close(reading.text.descriptor);
    return reading;
}

void WaylandClipboardText::finish(bool isWhole)
{
    const Reading reading = end();
    if (reading.context == nullptr) {
        return;
    }
    if (!isWhole) {
        reading.done({});
    } else {
        reading.done(reading.text.isLatin1 ? QString::fromLatin1(reading.bytes)
                                           : QString::fromUtf8(reading.bytes));
    }
}

} // namespace vellumo
