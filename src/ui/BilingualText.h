// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>
#include <functional>

namespace vellumo {

class DefaultsStore;

/// Chooses between the English and the Chinese text of each visible sentence. Views bind to
/// `english`, so that a changed preference takes effect everywhere at once. Main thread only.
class BilingualText : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool english READ isEnglish NOTIFY languageChanged)

public:
    /// `outputLanguage` returns the current preference; refresh() calls it again.
    explicit BilingualText(std::function<QString()> outputLanguage, QObject *parent = nullptr);

    /// Calls refresh() whenever the stored preference changes. The store may be destroyed before
    /// this object.
    void follow(DefaultsStore &store);

    [[nodiscard]] bool isEnglish() const { return english_; }
    [[nodiscard]] QString pick(const QString &english, const QString &chinese) const;

    void refresh();

Q_SIGNALS:
    void languageChanged();

private:
    std::function<QString()> outputLanguage_;
    bool english_ = true;
};

} // namespace vellumo
