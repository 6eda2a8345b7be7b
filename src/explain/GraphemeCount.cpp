// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "explain/GraphemeCount.h"

#include <QTextBoundaryFinder>

namespace vellumo {

bool hasMoreGraphemesThan(QStringView text, int limit)
{
    // QTextBoundaryFinder analyses its whole text, so it gets a prefix that doubles until the
    // result is certain. A cluster at the end of the prefix, which may be split, is not counted.
    for (qsizetype length = qsizetype{4} * (limit + 1);; length *= 2) {
        const QStringView prefix = text.left(length);
        const bool isWhole = prefix.size() == text.size();
        QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, prefix.data(), prefix.size());
        int clusters = 0;
        while (clusters <= limit) {
            const qsizetype boundary = finder.toNextBoundary();
            if (boundary < 0 || (!isWhole && boundary == prefix.size())) {
                break;
            }
            ++clusters;
        }
        if (isWhole || clusters > limit) {
            return clusters > limit;
        }
    }
}

} // namespace vellumo
