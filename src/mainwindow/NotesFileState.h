// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace vellumo {

class DefaultsStore;
class NotesStoring;

/// What the user must know about the file of notes.
class NotesFileState : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(QString saveFailure READ saveFailure NOTIFY changed)
    Q_PROPERTY(QString unreadableFile READ unreadableFile NOTIFY changed)
    Q_PROPERTY(bool isSetAside READ isSetAside NOTIFY changed)

public:
    /// Both must outlive this object.
    NotesFileState(const NotesStoring &store, DefaultsStore &defaults, QObject *parent = nullptr);

    /// Why notes cannot be saved, in the system's words; empty when they can.
    [[nodiscard]] QString saveFailure() const;
    /// The text for such a failure, wherever it is shown.
    [[nodiscard]] Q_INVOKABLE static QString unsavedText(const QString &failure, bool english);
    /// The text about a file that could not be read; empty without one.
    [[nodiscard]] Q_INVOKABLE static QString unreadableText(const QString &file, bool isSetAside,
                                                            bool english);
    /// The newest file that could not be read and is kept, as the user would write it; empty when
    /// the user knows of it.
    [[nodiscard]] QString unreadableFile() const;
    /// Whether that file has made room for a new one, under another name. Otherwise that
    /// happens with the next note that is saved.
    [[nodiscard]] bool isSetAside() const;

    /// Remembers that the user has seen the notice, in later runs and once the file is set aside as
    /// well.
    Q_INVOKABLE void acknowledge();

Q_SIGNALS:
    void changed();

private:
    void look();
    [[nodiscard]] bool isKnown(const QString &file) const;

    const NotesStoring &store_;
    DefaultsStore &defaults_;
    QString unreadableFile_; ///< its whole path
    QString knownFile_; ///< in this run; in later ones it is known by its time
};

} // namespace vellumo
