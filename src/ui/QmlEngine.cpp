// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "ui/QmlEngine.h"

#include <QQmlEngine>

using namespace Qt::StringLiterals;

namespace vellumo {

void prepareEngine(QQmlEngine &engine)
{
    engine.addImportPath(u"qrc:/qt/qml"_s);
}

} // namespace vellumo
