// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace vellumo {

class BilingualText;

/// The language of the interface, for elements that are used everywhere and have few words of their
/// own. English until follow(). One per QML engine, which owns it.
class InterfaceLanguage : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool english READ isEnglish NOTIFY changed)

public:
    /// Returns the singleton of this engine.
    [[nodiscard]] static InterfaceLanguage &of(QQmlEngine &engine);
    /// The same, for QML.
    [[nodiscard]] static InterfaceLanguage *create(QQmlEngine *engine, QJSEngine *scripts);

    /// The texts may be destroyed before this object.
    void follow(const BilingualText &texts);
    [[nodiscard]] bool isEnglish() const;

Q_SIGNALS:
    void changed();

private:
    explicit InterfaceLanguage(QQmlEngine &engine);

    QPointer<const BilingualText> texts_;
};

} // namespace vellumo
