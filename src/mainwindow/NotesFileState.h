// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace vellumo {

class BilingualText;
class DefaultsStore;
class NotesStoring;

/// Composes the notice about the file of notes: it cannot be saved, or could not be read.
class NotesFileState : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(QString notice READ notice NOTIFY changed)
    Q_PROPERTY(bool isUnsaved READ isUnsaved NOTIFY changed)

public:
    /// All must outlive this object.
    NotesFileState(const NotesStoring &store, DefaultsStore &defaults, const BilingualText &texts,
                   QObject *parent = nullptr);

    /// Returns the text of the notice; empty without a problem and once the user knows of it.
    [[nodiscard]] QString notice() const;
    /// Returns whether notes cannot be saved. The notice then stays until they can.
    [[nodiscard]] bool isUnsaved() const;
    /// Returns the text for a failed save, which the panel shows as well.
    [[nodiscard]] static QString unsavedText(const QString &failure, const BilingualText &texts);

    /// Remembers that the user has seen the notice about an unreadable file, in later runs and
    /// after the file is renamed as well.
    Q_INVOKABLE void acknowledge();

Q_SIGNALS:
    void changed();

private:
    void update();
    [[nodiscard]] bool isAcknowledged(const QString &file) const;
    [[nodiscard]] QString unreadableText() const;

    const NotesStoring &store_;
    DefaultsStore &defaults_;
    const BilingualText &texts_;
    QString unreadableFile_; ///< path of the newest that the user does not know of; or empty
    QString acknowledgedFile_; ///< in this run; later runs compare the time of the file
};

} // namespace vellumo
