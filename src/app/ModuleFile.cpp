// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/ModuleFile.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace vellumo {

QString moduleFile(const QString &name)
{
    return QCoreApplication::applicationDirPath() + u"/" VELLUMO_MODULE_FOLDER "/"_s + name;
}

} // namespace vellumo
