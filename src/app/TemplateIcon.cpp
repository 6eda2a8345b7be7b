// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/TemplateIcon.h"

#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <QStandardPaths>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

class TemplateIconEngine final : public QIconEngine {
public:
    explicit TemplateIconEngine(bool dark) : dark_(dark) { }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        painter->drawPixmap(rect.topLeft(), pixmap(rect.size(), mode, state));
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        QSvgRenderer(u":/vellumo/icons/sparkle.svg"_s).render(&painter);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(pixmap.rect(), dark_ ? Qt::white : Qt::black);
        return pixmap;
    }

    QList<QSize> availableSizes(QIcon::Mode /*mode*/, QIcon::State /*state*/) override
    {
        return {{16, 16}, {22, 22}, {24, 24}, {32, 32}};
    }

    QString iconName() override
    {
        const QString name = u"app.vellumo.Vellumo-symbolic"_s;
        const QString file = u"icons/hicolor/symbolic/apps/"_s + name + u".svg"_s;
        return QStandardPaths::locate(QStandardPaths::GenericDataLocation, file).isEmpty()
            ? QString()
            : name;
    }

    [[nodiscard]] QString key() const override { return u"vellumo-template"_s; }
    [[nodiscard]] QIconEngine *clone() const override { return new TemplateIconEngine(*this); }

private:
    bool dark_;
};

} // namespace

QIcon templateIcon(bool dark)
{
    return QIcon(new TemplateIconEngine(dark));
}

} // namespace vellumo
