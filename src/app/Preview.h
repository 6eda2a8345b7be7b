// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "panel/ResultPanelController.h"
#include "pill/NotesEntranceController.h"
#include "ui/BilingualText.h"
#include <QObject>
#include <QPointer>
#include <QQuickWindow>
#include <functional>

namespace vellumo {

/// For developers: a panel and a pill with sample contents, beside the real ones and unconnected
/// to them, and pictures of both in both languages.
class Preview : public QObject {
    Q_OBJECT

public:
    /// Everything must outlive the preview; `collaborators.texts` is not used.
    explicit Preview(const NotesEntranceController::Collaborators &collaborators);
    ~Preview() override;

    void show(bool english);

    /// Writes panel, pill and list as pictures into the folder, then calls `done`.
    void writeSnapshots(const QString &folder, std::function<void()> done);

private:
    void showNotesList();
    [[nodiscard]] QPointer<QQuickWindow> windowShownBy(const std::function<void()> &action) const;

    bool english_ = true;
    BilingualText texts_{
        [this] { return english_ ? QStringLiteral("English") : QStringLiteral("Chinese"); }};
    ResultPanelController previewResultPanel_;
    NotesEntranceController previewNotesEntrance_;
    QPointer<QQuickWindow> panel_;
    QPointer<QQuickWindow> pill_;
};

} // namespace vellumo
