// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "app/SaveFileDialog.h"
#include "library/PageHosting.h"
#include <functional>

class QWindow;

namespace vellumo {

class BilingualText;
class ResultPanelController;
class VellumoCoordinator;
class Workspace;

/// Gives the pages of the main window what they ask for: the clipboard, the browser, the panel, the
/// desktop's file dialog and its file manager.
class PageHost final : public PageHosting {
public:
    /// All must outlive the host.
    struct Collaborators {
        Workspace &workspace;
        VellumoCoordinator &coordinator;
        ResultPanelController &panel;
        const BilingualText &texts;
    };

    explicit PageHost(const Collaborators &collaborators);

    /// Returns the window that file dialogs are shown above; null when there is none.
    std::function<QWindow *()> window;

    void copyText(const QString &text) override;
    [[nodiscard]] bool openPage(const QUrl &page) override;
    void askFurther(const QUuid &note) override;
    void chooseFile(const FileQuestion &question) override;
    void closeFileDialog() override { dialog_.withdraw(); }
    [[nodiscard]] bool openFolder(const QString &folder) override;

private:
    Collaborators with_;
    SaveFileDialog dialog_;
};

} // namespace vellumo
