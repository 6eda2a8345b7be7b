// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Three versions, one on each line, have a consistent order.

#include "Fuzzing.h"
#include "update/DebianVersion.h"
#include <QList>

using namespace vellumo;
using namespace vellumo::fuzzing;

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QList<DebianVersion> versions;
    for (const QByteArray &line : bytes(data, size).split('\n')) {
        const auto version = DebianVersion::fromString(QString::fromUtf8(line));
        if (version && versions.size() < 3) {
            require(version->toString().toUtf8() == line, "a version stays as it was written");
            versions.append(*version);
        }
    }
    for (const DebianVersion &a : versions) {
        require((a <=> a) == 0, "a version is itself");
        for (const DebianVersion &b : versions) {
            require(((a <=> b) < 0) == ((b <=> a) > 0), "one order in both directions");
            for (const DebianVersion &c : versions) {
                require(!((a <=> b) <= 0 && (b <=> c) <= 0) || (a <=> c) <= 0, "no circles");
            }
        }
    }
    return 0;
}
