// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "desktop/ReadApplications.h"

#include <QFileInfo>
#include <unistd.h>

namespace vellumo::test {

using namespace Qt::StringLiterals;

Application::Command chromium(const QString &address, const QString &title, const QString &profile,
                              bool exposesTree)
{
    QStringList arguments{u"--no-first-run"_s,
                          u"--no-default-browser-check"_s,
                          u"--disable-gpu"_s,
                          u"--password-store=basic"_s,
                          u"--disable-background-networking"_s,
                          u"--disable-component-update"_s,
                          u"--disable-sync"_s,
                          u"--user-data-dir="_s + profile,
                          u"--window-size=1200,760"_s,
                          u"--window-position=20,20"_s};
    if (::getuid() == 0)
        arguments.append(u"--no-sandbox"_s);
    if (!exposesTree)
        arguments.append(u"--disable-renderer-accessibility"_s);
    arguments.append(address);
    return {exposesTree ? u"Chromium with its tree"_s : u"Chromium"_s, u"chromium"_s, arguments,
            u"chromium"_s, title};
}

Application::Command epiphany(const QString &address, const QString &title)
{
    return {u"GNOME Web"_s,
            u"epiphany-browser"_s,
            {u"--incognito-mode"_s, address},
            u"epiphany"_s,
            title};
}

Application::Command gnomeTextEditor(const QString &file)
{
    return {u"GNOME Text Editor"_s,
            u"gnome-text-editor"_s,
            {u"--standalone"_s, file},
            u"gnome-text-editor"_s,
            QFileInfo(file).fileName()};
}

Application::Command evince(const QString &file)
{
    return {u"Evince"_s, u"evince"_s, {file}, u"evince"_s, QFileInfo(file).fileName()};
}

Application::Command writer(const QString &file, const QString &profile)
{
    return {u"LibreOffice Writer"_s,
            u"soffice"_s,
            {u"--norestore"_s, u"--nologo"_s, u"--nofirststartwizard"_s, u"--nolockcheck"_s,
             u"-env:UserInstallation=file://"_s + profile, u"--writer"_s, file},
            u"libreoffice"_s,
            QFileInfo(file).fileName()};
}

Application::Command xterm(const QString &script)
{
    return {u"xterm"_s,
            u"xterm"_s,
            {u"-fa"_s, u"DejaVu Sans Mono"_s, u"-fs"_s, u"12"_s, u"-geometry"_s, u"80x12+100+300"_s,
             u"-e"_s, u"bash"_s, u"-c"_s, script},
            u"xterm"_s,
            {}};
}

QByteArray pdf(const QStringList &lines)
{
    QByteArray text("BT /F1 24 Tf 72 700 Td ");
    for (const QString &line : lines) {
        QByteArray escaped = line.toLatin1();
        escaped.replace('\\', "\\\\").replace('(', "\\(").replace(')', "\\)");
        text += '(' + escaped + ") Tj 0 -40 Td ";
    }
    text += "ET";
    const QByteArrayList objects{
        "<< /Type /Catalog /Pages 2 0 R >>",
        "<< /Type /Pages /Kids [4 0 R] /Count 1 >>",
        "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>",
        "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Contents 5 0 R "
        "/Resources << /Font << /F1 3 0 R >> >> >>",
        "<< /Length " + QByteArray::number(text.size()) + " >>\nstream\n" + text + "\nendstream",
    };
    QByteArray file("%PDF-1.4\n");
    QByteArray table("0000000000 65535 f \n");
    for (qsizetype i = 0; i < objects.size(); ++i) {
        table += QByteArray::number(file.size()).rightJustified(10, '0') + " 00000 n \n";
        file += QByteArray::number(i + 1) + " 0 obj\n" + objects.at(i) + "\nendobj\n";
    }
    const QByteArray start = QByteArray::number(file.size());
    const QByteArray count = QByteArray::number(objects.size() + 1);
    file += "xref\n0 " + count + '\n' + table + "trailer << /Size " + count
        + " /Root 1 0 R >>\nstartxref\n" + start + "\n%%EOF\n";
    return file;
}

} // namespace vellumo::test
