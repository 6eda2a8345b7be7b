// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace vellumo::fuzzing {

/// Ends the run when a property does not hold; the fuzzer keeps the input that showed it.
inline void require(bool holds, const char *property)
{
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", property);
        std::abort();
    }
}

/// The input itself, not a copy: a read beyond its end is seen.
inline QByteArray bytes(const uint8_t *data, size_t size)
{
    return QByteArray::fromRawData(reinterpret_cast<const char *>(data),
                                   static_cast<qsizetype>(size));
}

inline QString text(const uint8_t *data, size_t size)
{
    return QString::fromUtf8(bytes(data, size));
}

} // namespace vellumo::fuzzing

/// Runs one input; what libFuzzer calls.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);
