// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/x11/SelectionValue.h"

namespace vellumo {

namespace {

/// Decodes a surrogate of the 0x400 values from `first` on at this position, three bytes long; 0 if
/// there is none.
char16_t surrogateAt(QByteArrayView bytes, qsizetype place, char16_t first)
{
    if (bytes.size() - place < 3 || static_cast<quint8>(bytes[place]) != 0xED) {
        return 0;
    }
    const auto middle = static_cast<quint8>(bytes[place + 1]);
    const auto last = static_cast<quint8>(bytes[place + 2]);
    const auto unit = static_cast<char16_t>(0xD000 | ((middle & 0x3F) << 6) | (last & 0x3F));
    const bool isEncoded = (middle & 0xC0) == 0x80 && (last & 0xC0) == 0x80;
    return isEncoded && (unit & 0xFC00) == first ? unit : char16_t{0};
}

QString withJoinedSurrogates(QByteArrayView bytes)
{
    QString text;
    qsizetype done = 0;
    for (qsizetype i = bytes.indexOf('\xED'); i >= 0; i = bytes.indexOf('\xED', i)) {
        const char16_t high = surrogateAt(bytes, i, 0xD800);
        const char16_t low = high != 0 ? surrogateAt(bytes, i + 3, 0xDC00) : char16_t{0};
        if (low == 0) {
            ++i;
            continue;
        }
        text += QString::fromUtf8(bytes.sliced(done, i - done)) + QChar(high) + QChar(low);
        i += 6;
        done = i;
    }
    return text + QString::fromUtf8(bytes.sliced(done));
}

} // namespace

QString selectionText(const SelectionValue &value)
{
    QByteArrayView bytes = value.bytes;
    while (bytes.endsWith('\0')) {
        bytes.chop(1);
    }
    return value.type == XCB_ATOM_STRING ? QString::fromLatin1(bytes) : withJoinedSurrogates(bytes);
}

} // namespace vellumo
