// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "ui/ApplicationFonts.h"

#include "ui/StemDarkening.h"

#include <QFont>
#include <QFontInfo>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

namespace vellumo {

QString chineseFamily()
{
    return u"Noto Sans CJK SC"_s;
}

QStringList readingFontFamilies(const QString &systemFamily)
{
    const QString chinese = chineseFamily();
    // Symbol fonts have outlines of some emoji, and would break joined ones apart.
    const QString emoji = u"Noto Color Emoji"_s;
    return systemFamily.isEmpty() || systemFamily == chinese
        ? QStringList{chinese, emoji}
        : QStringList{systemFamily, chinese, emoji};
}

void installApplicationFonts()
{
    QFont font = QGuiApplication::font();
    // the desktop may name only a generic family, which would be skipped in a list of families
    font.setFamilies(readingFontFamilies(QFontInfo(font).family()));
    QGuiApplication::setFont(font);
    disableStemDarkening();
}

} // namespace vellumo
