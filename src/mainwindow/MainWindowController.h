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

/// The program's one ordinary window that stays: made when it is first shown, kept when it is
/// closed, with its place and size.
class MainWindowController : public QObject {
    Q_OBJECT

public:
    /// The engine, the host of the pages and all of the others must outlive the controller.
    MainWindowController(QQmlEngine &engine, MainWindowModel::Collaborators collaborators,
                         PageHosting &host, QObject *parent = nullptr);
    ~MainWindowController() override;
    Q_DISABLE_COPY_MOVE(MainWindowController)

    /// Called when show() has shown the window.
    std::function<void()> onShown;
    /// Gives the shown window the keyboard whatever other application has it.
    std::function<void(QWindow &window)> onActivate;

    /// Brings the window to the front with the keyboard, making it on first use.
    void show();
    /// The same, at the place where a service is entered.
    void showService();

    /// Whether the program itself has hidden the window while one of its panels is being clicked.
    bool hiddenForPanelActivation = false;

    /// Hides the window for that moment, if it is shown.
    void hideForPanelActivation();
    /// Shows it again behind the others, without the keyboard.
    void orderBack();

    /// The place of the note that the window shows; absent while the window is not in front.
    [[nodiscard]] std::optional<ReadingContext> openNoteContext() const;

    /// Null until it is shown first.
    [[nodiscard]] QQuickWindow *window() const { return window_.get(); }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    [[nodiscard]] bool create();

    QQmlEngine &engine_;
    MainWindowModel::Collaborators with_;
    PageHosting &host_;
    std::unique_ptr<MainWindowModel> model_;
    std::unique_ptr<QQuickWindow> window_; ///< goes before the model that it shows
    std::optional<QPoint> lastPosition_; ///< while it is hidden
};

} // namespace vellumo
