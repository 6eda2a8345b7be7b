// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// render_icon SVG SIZE... FOLDER: draws the icon in these sizes, as FOLDER/SIZE.png. For icon
// themes that want pixels; run by the build.
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    QSvgRenderer drawing(arguments.value(1));
    bool isDone = drawing.isValid() && arguments.size() > 3;
    for (qsizetype i = 2; isDone && i + 1 < arguments.size(); ++i) {
        const int size = arguments.at(i).toInt();
        QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        drawing.render(&painter);
        painter.end();
        isDone = image.save(arguments.last() + QStringLiteral("/%1.png").arg(size));
    }
    return isDone ? EXIT_SUCCESS : EXIT_FAILURE;
}
