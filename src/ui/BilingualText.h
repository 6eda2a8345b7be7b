// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>
#include <functional>

namespace vellumo {

class DefaultsStore;

/// Chooses between the two texts that every visible sentence has. Views bind to `english`, so that
/// a changed preference shows everywhere at once. Main thread only.
class BilingualText : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool english READ isEnglish NOTIFY languageChanged)

public:
    /// `outputLanguage` answers the preference as it is now; it is asked again by refresh().
    explicit BilingualText(std::function<QString()> outputLanguage, QObject *parent = nullptr);

    /// Refreshes whenever the stored preference changes. The store may go before this object.
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
