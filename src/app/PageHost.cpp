// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "app/PageHost.h"

#include "capture/VellumoCoordinator.h"
#include "panel/ResultPanelController.h"
#include "platform/Workspace.h"

#include <QClipboard>
#include <QGuiApplication>
#include <utility>

namespace vellumo {

PageHost::PageHost(const Collaborators &collaborators)
    : with_(collaborators)
    , dialog_(collaborators.texts)
    , alert_(collaborators.engine)
{
    QObject::connect(&alert_, &Alert::answered, &alert_, [this](bool isAgreed) {
        const auto agreed = std::exchange(onAgreed_, nullptr);
        if (isAgreed && agreed) {
            agreed();
        }
    });
}

void PageHost::copyText(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
}

bool PageHost::openPage(const QUrl &page)
{
    return with_.workspace.openUrl(page);
}

void PageHost::askFurther(const QUuid &note)
{
    with_.coordinator.reopenNote(note);
    with_.panel.focusPanel();
}

void PageHost::chooseFile(const FileQuestion &question)
{
    dialog_.ask(window ? window() : nullptr, question);
}

void PageHost::ask(const Question &question)
{
    if (alert_.window() == nullptr) {
        onAgreed_ = question.onAgreed;
    }
    alert_.show({.message = question.message,
                 .informativeText = question.informativeText,
                 .button = question.agreement,
                 .refusal = question.refusal},
                window ? window() : nullptr);
}

bool PageHost::openFolder(const QString &folder)
{
    return with_.workspace.openFolder(folder);
}

} // namespace vellumo
