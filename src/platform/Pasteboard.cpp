// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/Pasteboard.h"

using namespace Qt::StringLiterals;

namespace vellumo {

QList<PasteboardItem> plainText(const QString &text)
{
    PasteboardItem item;
    for (const auto &type : {u"UTF8_STRING"_s, u"text/plain;charset=utf-8"_s, u"text/plain"_s}) {
        item.append({type, text.toUtf8()});
    }
    return {item};
}

} // namespace vellumo
