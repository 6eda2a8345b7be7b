// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/SwayMessages.h"

#include <cstring>

namespace vellumo {

namespace {

constexpr QByteArrayView magic = "i3-ipc";
constexpr qsizetype headerSize = magic.size() + 2 * qsizetype{sizeof(quint32)};

/// The tree has about 2 KiB for each window.
constexpr quint32 maxPayload = quint32{16} * 1024 * 1024;

} // namespace

QByteArray SwayMessage::framed() const
{
    const quint32 header[2] = {static_cast<quint32>(payload.size()), type}; // in native byte order
    return magic.toByteArray().append(reinterpret_cast<const char *>(header), sizeof(header))
        + payload;
}

void SwayMessageReader::append(const QByteArray &bytes)
{
    bytes_.append(bytes);
}

std::optional<SwayMessage> SwayMessageReader::next()
{
    if (isBroken_ || bytes_.size() < headerSize) {
        return std::nullopt;
    }
    quint32 header[2];
    std::memcpy(header, bytes_.constData() + magic.size(), sizeof(header));
    const auto [size, type] = header;
    if (!bytes_.startsWith(magic) || size > maxPayload) {
        isBroken_ = true;
        bytes_.clear();
        return std::nullopt;
    }
    const qsizetype end = headerSize + static_cast<qsizetype>(size);
    if (bytes_.size() < end) {
        return std::nullopt;
    }
    SwayMessage message{type, bytes_.sliced(headerSize, size)};
    bytes_.remove(0, end);
    return message;
}

} // namespace vellumo
