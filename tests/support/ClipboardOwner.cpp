// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// vellumo_test_clipboard [TYPE=FILE...]: owns the clipboard with these types until another program
// takes it; without types it clears the clipboard. Says "ready" when it is so. With --silent first
// it owns the clipboard and never answers. With --selected first it owns the selection of the
// middle button instead, as an application does that shows a window in which this is selected.
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QMimeData>
#include <QTimer>
#include <QWindow>
#include <cstdio>
#include <unistd.h>

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    auto *data = new QMimeData;
    QStringList arguments = QGuiApplication::arguments().mid(1);
    if (arguments.removeOne(QStringLiteral("--silent"))) {
        data->setText(QStringLiteral("never told"));
        QGuiApplication::clipboard()->setMimeData(data);
        QGuiApplication::sync();
        std::puts("ready");
        std::fflush(stdout);
        ::pause();
        return 0;
    }
    QWindow window;
    const bool isSelected = arguments.removeOne(QStringLiteral("--selected"));
    if (isSelected)
        window.show();
    for (const QString &argument : arguments) {
        QFile file(argument.section(u'=', -1)); // a type may have a parameter
        if (!file.open(QIODevice::ReadOnly))
            return 1;
        data->setData(argument.section(u'=', 0, -2), file.readAll());
    }
    QClipboard *clipboard = QGuiApplication::clipboard();
    const auto mode = isSelected ? QClipboard::Selection : QClipboard::Clipboard;
    if (arguments.isEmpty())
        clipboard->clear(mode);
    else
        clipboard->setMimeData(data, mode);
    QTimer::singleShot(0, [] {
        std::puts("ready");
        std::fflush(stdout);
    });
    return QGuiApplication::exec();
}
