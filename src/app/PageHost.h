// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "app/SaveFileDialog.h"
#include "library/PageHosting.h"
#include "ui/Alert.h"
#include <functional>

class QWindow;

namespace vellumo {

class BilingualText;
class ResultPanelController;
class VellumoCoordinator;
class Workspace;

/// Gives the pages of the main window what they ask for: the clipboard, the browser, the panel, the
/// desktop's file dialog, its file manager, and questions to the user.
class PageHost final : public PageHosting {
public:
    /// All must outlive the host.
    struct Collaborators {
        QQmlEngine &engine;
        Workspace &workspace;
        VellumoCoordinator &coordinator;
        ResultPanelController &panel;
        const BilingualText &texts;
    };

    explicit PageHost(const Collaborators &collaborators);

    /// Returns the window that dialogs are shown above; null when there is none.
    std::function<QWindow *()> window;

    void copyText(const QString &text) override;
    [[nodiscard]] bool openPage(const QUrl &page) override;
    void askFurther(const QUuid &note) override;
    void chooseFile(const FileQuestion &question) override;
    void closeFileDialog() override { dialog_.withdraw(); }
    void ask(const Question &question) override;
    [[nodiscard]] bool openFolder(const QString &folder) override;

private:
    Collaborators with_;
    SaveFileDialog dialog_;
    Alert alert_;
    std::function<void()> onAgreed_; ///< of the question that is open
};

} // namespace vellumo
