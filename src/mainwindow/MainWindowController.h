// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "mainwindow/MainWindowModel.h"
#include "notes/ReadingNote.h"
#include <QObject>
#include <QQuickWindow>
#include <functional>
#include <memory>
#include <optional>

class QQmlEngine;

namespace vellumo {

/// Owns the main window. It is created when first shown; closing hides it. Its place and size are
/// kept, also for the next start.
class MainWindowController : public QObject {
    Q_OBJECT

public:
    /// All references must outlive the controller.
    MainWindowController(QQmlEngine &engine, MainWindowModel::Collaborators collaborators,
                         PageHosting &host, QObject *parent = nullptr);
    ~MainWindowController() override;
    Q_DISABLE_COPY_MOVE(MainWindowController)

    /// Called when show() has shown the window.
    std::function<void()> onShown;

    /// Creates the window on first use, brings it to the front and activates it.
    void show();
    /// The same, and opens the service settings.
    void showService();
    /// The same, and opens a note.
    void showNote(const QUuid &id);

    /// Whether hideForPanelActivation() has hidden the window.
    bool hiddenForPanelActivation = false;

    /// Hides a shown window while a panel is clicked, so that it is not raised with the panel.
    void hideForPanelActivation();
    /// Shows the window again behind the others, without activating it.
    void orderBack();

    /// Returns the context of the shown note; absent while the window is not active.
    [[nodiscard]] std::optional<ReadingContext> openNoteContext() const;

    /// Returns null until the window is first shown.
    [[nodiscard]] QQuickWindow *window() const { return window_.get(); }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    [[nodiscard]] bool create();

    QQmlEngine &engine_;
    MainWindowModel::Collaborators with_;
    PageHosting &host_;
    std::unique_ptr<MainWindowModel> model_;
    std::unique_ptr<QQuickWindow> window_; ///< destroyed before its model
    std::optional<QPoint> lastPosition_; ///< while the window is hidden
};

} // namespace vellumo
