// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace vellumo::fuzzing {

/// Ends the run when a property does not hold. The fuzzer keeps the input that caused it.
inline void require(bool holds, const char *property)
{
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", property);
        std::abort();
    }
}

/// Refers to the input without a copy, so that a read beyond its end is noticed.
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

/// Runs one input. Called by libFuzzer.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);
