// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/client/OfferReader.h"

#include "platform/Accessibility.h"
#include "platform/wayland/client/DataControlDevice.h"
#include "platform/wayland/client/WaylandConnection.h"
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace vellumo {

namespace {

/// A longer text exceeds maxSelectionLength in any encoding.
constexpr qsizetype maxTextBytes = 4 * (maxSelectionLength + 1);

/// The types of plain text, the best one first. Those of X11 are offered for XWayland's windows.
constexpr const char *textTypes[] = {"text/plain;charset=utf-8", "UTF8_STRING", "text/plain",
                                     "STRING", "TEXT"};

/// Password managers add this type to what must not be kept.
constexpr const char *secretType = "x-kde-passwordManagerHint";

/// Returns the type of plain text that the offer has; null if it has none.
const char *textTypeOf(const DataOffer &offer)
{
    const auto type = std::ranges::find_if(
        textTypes, [&](const char *each) { return offer.types.contains(each); });
    return type == std::end(textTypes) ? nullptr : *type;
}

bool isLatin1(const char *type)
{
    return std::strcmp(type, "STRING") == 0;
}

/// Requests one type. Returns the end of the pipe to read; -1 if the request could not be sent.
int request(WaylandConnection &connection, const DataOffer &offer, const char *type,
            QDeadlineTimer deadline)
{
    int ends[2] = {-1, -1};
    if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) {
        return -1;
    }
    // The owner may not expect a descriptor that does not block.
    ::fcntl(ends[1], F_SETFL, ::fcntl(ends[1], F_GETFL) & ~O_NONBLOCK);
    wl_proxy_marshal_flags(offer.proxy, DataControlProtocol::Receive, nullptr,
                           wl_proxy_get_version(offer.proxy), 0, type, ends[1]);
    const bool isSent = connection.flush(deadline);
    ::close(ends[1]);
    if (!isSent) {
        ::close(ends[0]);
        return -1;
    }
    return ends[0];
}

} // namespace

std::optional<QByteArray> readOffer(WaylandConnection &connection, const DataOffer &offer,
                                    const QByteArray &type, const OfferLimits &limits)
{
    const int pipe = request(connection, offer, type.constData(), limits.deadline);
    if (pipe < 0) {
        return std::nullopt;
    }
    QByteArray bytes;
    bool isWhole = false;
    while (!isWhole && waitForDescriptor(pipe, POLLIN, limits.deadline)) {
        std::array<char, 65536> buffer;
        const ssize_t count = ::read(pipe, buffer.data(), buffer.size());
        if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
            continue;
        }
        if (count < 0) {
            break;
        }
        bytes.append(buffer.data(), std::min(qsizetype{count}, limits.maxBytes - bytes.size()));
        isWhole = count == 0 || bytes.size() >= limits.maxBytes;
        if (!isWhole && limits.deadline.hasExpired()) {
            break; // an owner that never stops
        }
    }
    ::close(pipe);
    return isWhole ? std::optional(bytes) : std::nullopt;
}

std::optional<waylandClientModule::RequestedText> requestText(WaylandConnection &connection,
                                                              const DataOffer &offer)
{
    const char *type = textTypeOf(offer);
    const int pipe = type == nullptr ? -1 : request(connection, offer, type, QDeadlineTimer(0));
    if (pipe < 0) {
        return std::nullopt;
    }
    return waylandClientModule::RequestedText{pipe, isLatin1(type)};
}

std::optional<QString> readText(WaylandConnection &connection, const DataOffer &offer,
                                QDeadlineTimer deadline)
{
    const char *type = textTypeOf(offer);
    if (type == nullptr || offer.types.contains(secretType)) {
        return std::nullopt;
    }
    const auto bytes = readOffer(connection, offer, type, {maxTextBytes, deadline});
    if (!bytes) {
        return std::nullopt;
    }
    return isLatin1(type) ? QString::fromLatin1(*bytes) : QString::fromUtf8(*bytes);
}

} // namespace vellumo
