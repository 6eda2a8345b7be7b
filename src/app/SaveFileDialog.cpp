// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "app/SaveFileDialog.h"

#include "ui/BilingualText.h"
#include "ui/ProgramIcon.h"

#include <QDir>
#include <QStandardPaths>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace vellumo {

SaveFileDialog::SaveFileDialog(const BilingualText &texts)
    : texts_(texts)
    , folder_(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))
{
}

SaveFileDialog::~SaveFileDialog()
{
    withdraw();
}

void SaveFileDialog::ask(QWindow *above, const PageHosting::FileQuestion &question)
{
    withdraw(); // what was asked before counts no more
    if (!QDir(folder_).exists()) {
        folder_ = QDir::homePath();
    }
    dialog_ = new QFileDialog;
    dialog_->setAttribute(Qt::WA_DeleteOnClose);
    dialog_->setWindowModality(Qt::WindowModal);
    dialog_->setWindowIcon(programIcon());
    dialog_->setAcceptMode(QFileDialog::AcceptSave);
    dialog_->setFileMode(QFileDialog::AnyFile);
    dialog_->setOption(QFileDialog::DontConfirmOverwrite);
    dialog_->setWindowTitle(texts_.pick(u"Export notes"_s, u"导出笔记"_s));
    dialog_->setLabelText(QFileDialog::Accept, texts_.pick(u"Export"_s, u"导出"_s));
    dialog_->setLabelText(QFileDialog::Reject, texts_.pick(u"Cancel"_s, u"取消"_s));
    dialog_->setLabelText(QFileDialog::FileName, texts_.pick(u"Name:"_s, u"文件名："_s));
    dialog_->setLabelText(QFileDialog::FileType, texts_.pick(u"Kind:"_s, u"类型："_s));
    dialog_->setLabelText(QFileDialog::LookIn, texts_.pick(u"Folder:"_s, u"文件夹："_s));
    dialog_->setDirectory(folder_);
    const QString kind = question.suffix == "md"_L1 ? u"Markdown"_s : question.suffix.toUpper();
    dialog_->setNameFilters({u"%1 (*.%2)"_s.arg(kind, question.suffix)});
    dialog_->setDefaultSuffix(question.suffix);
    dialog_->selectFile(question.suggestedName);
    QObject::connect(dialog_, &QFileDialog::fileSelected, dialog_,
                     [this, onChosen = question.onChosen](const QString &path) {
                         folder_ = QFileInfo(path).absolutePath();
                         onChosen(path);
                     });
    dialog_->winId(); // makes its window
    if (dialog_->windowHandle() != nullptr) {
        dialog_->windowHandle()->setTransientParent(above);
    }
    dialog_->show();
}

void SaveFileDialog::withdraw()
{
    delete dialog_;
}

} // namespace vellumo
