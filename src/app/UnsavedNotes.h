// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QFileSystemWatcher>
#include <QObject>

namespace vellumo {

class BilingualText;
struct IslandContent;
class NotesStoring;
class ResultPanelControlling;

/// Says in the panel, once, that notes cannot be saved, and has them saved as soon as it works: it
/// tries again whenever the panel has been closed and whenever something changes in the folder of
/// the notes. The store itself tries again with each change and at the end.
class UnsavedNotes final : public QObject {
    Q_OBJECT

public:
    /// All must outlive this object.
    struct Collaborators {
        NotesStoring &store;
        const ResultPanelControlling &panel;
        const BilingualText &texts;
    };

    /// `folder` is where the notes are kept; it need not exist.
    UnsavedNotes(const Collaborators &collaborators, QString folder, QObject *parent = nullptr);

    /// To be called when the panel has left the screen.
    void panelClosed();

Q_SIGNALS:
    /// Carries what the panel is to show.
    void noticed(const vellumo::IslandContent &notice);

private:
    void look();
    void say();
    void retry();
    void watch();
    void unwatch();

    Collaborators with_;
    QString folder_;
    QFileSystemWatcher watcher_; ///< watches while there is something to be saved
    bool isSaid_ = false; ///< about the failure that lasts
};

} // namespace vellumo
