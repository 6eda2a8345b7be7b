// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/qt/PostBody.h"

#include <algorithm>
#include <utility>

namespace vellumo {

PostBody::PostBody(QByteArray bytes, bool mayRepeat)
    : bytes_(std::move(bytes))
    , repetitions_(mayRepeat ? 2 : 0)
{
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

bool PostBody::reset()
{
    return repetitions_-- > 0 && QIODevice::reset();
}

qint64 PostBody::readData(char *data, qint64 length)
{
    const qint64 taken = std::min(length, bytes_.size() - pos());
    std::copy_n(bytes_.constData() + pos(), taken, data);
    return taken;
}

} // namespace vellumo
