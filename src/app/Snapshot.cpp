// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/Snapshot.h"

#include "platform/Diagnostics.h"

#include <QDir>
#include <QQuickWindow>

using namespace Qt::StringLiterals;

namespace vellumo {

void writeSnapshot(QQuickWindow *window, const QString &folder, const QString &name, bool isEnglish)
{
    QDir().mkpath(folder);
    const QString path = u"%1/%2-%3.png"_s.arg(folder, name, isEnglish ? u"en"_s : u"zh"_s);
    if (!window || !window->grabWindow().save(path)) {
        printDiagnostic(u"could not write a picture"_s);
    }
}

} // namespace vellumo
