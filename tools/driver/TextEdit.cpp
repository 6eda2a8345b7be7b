// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// plain_text_edit FILE: a window with a menu bar and the file's text, as Qt programs have
// it. Prints how many characters are selected, whenever that changes.
#include <QApplication>
#include <QFile>
#include <QMainWindow>
#include <QMenuBar>
#include <QTextCursor>
#include <QTextEdit>
#include <cstdio>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QFile file(QApplication::arguments().value(1));
    if (!file.open(QIODevice::ReadOnly))
        return 1;
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Text edit"));
    window.menuBar()->addMenu(QStringLiteral("&File"))->addAction(QStringLiteral("&Close"));
    auto *edit = new QTextEdit(&window);
    edit->setAcceptRichText(false);
    edit->setCursorWidth(0);
    edit->setPlainText(QString::fromUtf8(file.readAll()));
    QObject::connect(edit, &QTextEdit::selectionChanged, edit, [edit] {
        const QTextCursor cursor = edit->textCursor();
        std::printf("selected %d\n", cursor.selectionEnd() - cursor.selectionStart());
        std::fflush(stdout);
    });
    window.setCentralWidget(edit);
    window.setGeometry(80, 160, 800, 500);
    window.show();
    edit->setFocus();
    return QApplication::exec();
}
