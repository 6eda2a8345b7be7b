// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// vellumo_test_clipboard [TYPE=FILE...]: owns the clipboard with these types until another program
// takes it; without types it clears the clipboard. Says "ready" when it is so. With --silent first
// it owns the clipboard and answers nobody.
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QMimeData>
#include <QTimer>
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
    for (const QString &argument : arguments) {
        QFile file(argument.section(u'=', 1));
        if (!file.open(QIODevice::ReadOnly))
            return 1;
        data->setData(argument.section(u'=', 0, 0), file.readAll());
    }
    QClipboard *clipboard = QGuiApplication::clipboard();
    if (arguments.isEmpty())
        clipboard->clear();
    else
        clipboard->setMimeData(data);
    QTimer::singleShot(0, [] {
        std::puts("ready");
        std::fflush(stdout);
    });
    return QGuiApplication::exec();
}
