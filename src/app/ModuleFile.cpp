// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/ModuleFile.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace vellumo {

QString moduleFile(const QString &name)
{
    // not by the application object, before which a module may be needed
    const QFileInfo program(QFileInfo(u"/proc/self/exe"_s).symLinkTarget());
    return program.absolutePath() + u"/" VELLUMO_MODULE_FOLDER "/"_s + name;
}

} // namespace vellumo
