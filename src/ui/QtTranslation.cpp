// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "ui/QtTranslation.h"

#include "ui/BilingualText.h"

#include <QCoreApplication>
#include <QLibraryInfo>

using namespace Qt::StringLiterals;

namespace vellumo {

QtTranslation::QtTranslation(const BilingualText &texts) : texts_(texts)
{
    connect(&texts_, &BilingualText::languageChanged, this, &QtTranslation::follow);
    follow();
}

void QtTranslation::follow()
{
    if (texts_.isEnglish()) {
        QCoreApplication::removeTranslator(&chinese_);
    } else if (!chinese_.isEmpty()
               || chinese_.load(u"qtbase_zh_CN"_s,
                                QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(&chinese_);
    }
}

} // namespace vellumo
