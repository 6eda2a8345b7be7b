// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "ui/InterfaceLanguage.h"

#include "ui/BilingualText.h"

#include <QQmlEngine>

namespace vellumo {

InterfaceLanguage::InterfaceLanguage(QQmlEngine &engine) : QObject(&engine) { }

InterfaceLanguage &InterfaceLanguage::of(QQmlEngine &engine)
{
    auto *found = engine.findChild<InterfaceLanguage *>(QString(), Qt::FindDirectChildrenOnly);
    return found != nullptr ? *found : *new InterfaceLanguage(engine);
}

InterfaceLanguage *InterfaceLanguage::create(QQmlEngine *engine, QJSEngine * /*scripts*/)
{
    InterfaceLanguage &language = of(*engine);
    QQmlEngine::setObjectOwnership(&language, QQmlEngine::CppOwnership);
    return &language;
}

void InterfaceLanguage::follow(const BilingualText &texts)
{
    texts_ = &texts;
    connect(&texts, &BilingualText::languageChanged, this, &InterfaceLanguage::changed);
    Q_EMIT changed();
}

bool InterfaceLanguage::isEnglish() const
{
    return !texts_ || texts_->isEnglish();
}

} // namespace vellumo
