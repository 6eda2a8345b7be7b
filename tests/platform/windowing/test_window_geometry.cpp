// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/LayerShell.h"
#include "platform/windowing/OwnPointer.h"
#include "platform/windowing/PanelShape.h"
#include "platform/windowing/ScreenCoordinates.h"
#include "platform/windowing/ShadowImage.h"
#include "platform/windowing/x11/WorkArea.h"
#include <QMouseEvent>
#include <QTest>
#include <QWindow>

using namespace vellumo;

class WindowGeometryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Of the pointer over a layer surface, whose position only a property knows.
    void followsThePointer()
    {
        const OwnPointer pointer;
        QWindow window;
        const auto move = [&window](QPointF to) {
            QMouseEvent event(QEvent::MouseMove, to, to, Qt::NoButton, Qt::NoButton,
                              Qt::NoModifier);
            QCoreApplication::sendEvent(&window, &event);
        };
        move({3, 4});
        QVERIFY(!pointer.position());
        window.setProperty(layerProperty::position, QPoint(100, 50));
        move({5, 6});
        QCOMPARE(pointer.position(), QPoint(105, 56));
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&window, &leave);
        QVERIFY(!pointer.position());
    }

    void convertsBetweenOrigins_data()
    {
        QTest::addColumn<QRect>("main");
        QTest::addColumn<QRectF>("qt");
        QTest::addColumn<Rect>("desktop");
        const QRect single(0, 0, 1440, 900);
        QTest::newRow("hangs from the top")
            << single << QRectF(460, 0, 520, 96) << Rect{460, 804, 520, 96};
        QTest::newRow("fractions")
            << single << QRectF(10.5, 20.25, 30, 40) << Rect{10.5, 839.75, 30, 40};
        QTest::newRow("screen to the right, lower")
            << single << QRectF(1440, 200, 1920, 1080) << Rect{1440, -380, 1920, 1080};
        QTest::newRow("main screen is not the first")
            << QRect(1920, 120, 1280, 720) << QRectF(0, 0, 1920, 1080)
            << Rect{-1920, -240, 1920, 1080};
    }

    void convertsBetweenOrigins()
    {
        QFETCH(QRect, main);
        QFETCH(QRectF, qt);
        QFETCH(Rect, desktop);
        QCOMPARE(toDesktop(qt, main), desktop);
        QCOMPARE(toQt(desktop, main), qt);
    }

    void pixelsStayInsideTheirRectangle()
    {
        const QRect main(0, 0, 1440, 900);
        const QRect panel(460, 0, 520, 96);
        const Rect frame = toDesktop(QRectF(panel), main);
        for (const QPoint pixel : {panel.topLeft(), panel.bottomRight(), QPoint(459, 0),
                                   QPoint(979, 96), QPoint(980, 50)}) {
            QCOMPARE(frame.contains(toDesktop(pixel, main)), panel.contains(pixel));
        }
    }

    void roundsCorners()
    {
        using Bands = QList<QRect>;
        QCOMPARE(roundedBands({5, 6, 100, 50}, 0, 0), Bands{QRect(5, 6, 100, 50)});
        QCOMPARE(roundedBands({0, 0, 20, 10}, 0, 4),
                 (Bands{{0, 0, 20, 8}, {1, 8, 18, 1}, {2, 9, 16, 1}}));
        // radii beyond the half
        QCOMPARE(roundedBands({0, 0, 4, 4}, 50, 50),
                 (Bands{{1, 0, 2, 1}, {0, 1, 4, 2}, {1, 3, 2, 1}}));
        QCOMPARE(roundedBands({0, 0, 10, 0}, 3, 3), Bands());
    }

    void cutsTheMarginAtTheScreen()
    {
        const auto window = [](const QRect &frame) {
            return withShadowMargin(frame, 20, QRect(0, 0, 800, 600));
        };
        QCOMPARE(window({100, 100, 50, 50}), QRect(80, 80, 90, 90));
        QCOMPARE(window({750, 0, 50, 50}), QRect(730, 0, 70, 70));
        QCOMPARE(window({780, 100, 50, 50}), QRect(760, 80, 70, 90)); // never cuts the frame itself
    }

    void shadowFadesAtItsEdges()
    {
        const std::pair<QSizeF, qreal> panels[] = {
            {{520, 400}, 1}, {{118, 44}, 1}, {{520, 96}, 2}, {{118, 44}, 1.25}};
        for (const auto &[panel, scale] : panels) {
            const QSizeF all = panel + QSizeF(2 * shadowMargin, 2 * shadowMargin);
            const QSizeF size = shadowImageSize(all, 22);
            QVERIFY(size.width() <= all.width() && size.height() <= all.height());

            const ShadowImage shadow = drawShadow(size, 22, 22, scale);
            QVERIFY(2 * shadow.padding.width() < size.width());
            QVERIFY(2 * shadow.padding.height() < size.height());
            const QImage &image = shadow.image;
            const auto alpha = [&image](int x, int y) { return qAlpha(image.pixel(x, y)); };
            for (int x = 0; x < image.width(); ++x) {
                QVERIFY(alpha(x, 0) <= 1 && alpha(x, image.height() - 1) <= 1);
            }
            for (int y = 0; y < image.height(); ++y) {
                QVERIFY(alpha(0, y) <= 1 && alpha(image.width() - 1, y) <= 1);
            }
            QVERIFY(alpha(image.width() / 2, image.height() / 2) > 40);
        }
    }

    void desktopPanelsTakeRoom_data()
    {
        QTest::addColumn<QList<quint32>>("strut"); // left, right, top, bottom, then their stretches
        QTest::addColumn<QMargins>("first");
        QTest::addColumn<QMargins>("second");
        using Numbers = QList<quint32>;
        const QMargins none;
        // screens side by side, the second lower: (0, 0, 1000, 800) and (1000, 200, 1200, 1000)
        QTest::newRow("none") << Numbers{} << none << none;
        QTest::newRow("top of the first")
            << Numbers{0, 0, 24, 0, 0, 0, 0, 0, 0, 999, 0, 0} << QMargins(0, 24, 0, 0) << none;
        QTest::newRow("top of the second, from the desktop's edge")
            << Numbers{0, 0, 230, 0, 0, 0, 0, 0, 1000, 2199, 0, 0} << none << QMargins(0, 30, 0, 0);
        QTest::newRow("bottom of the first, which ends earlier")
            << Numbers{0, 0, 0, 440, 0, 0, 0, 0, 0, 0, 0, 999} << QMargins(0, 0, 0, 40) << none;
        QTest::newRow("left of the second, across all of the first")
            << Numbers{1048, 0, 0, 0, 200, 1199, 0, 0, 0, 0, 0, 0} << none << QMargins(48, 0, 0, 0);
        QTest::newRow("right") << Numbers{0, 60, 0, 0, 0, 0, 200, 1199, 0, 0, 0, 0} << none
                               << QMargins(0, 0, 60, 0);
        QTest::newRow("a whole edge") << Numbers{0, 0, 24, 0} << QMargins(0, 24, 0, 0) << none;
        QTest::newRow("nonsense") << Numbers{0, 0, 0xFFFFFFFF, 0, 0, 0, 0, 0, 0, 0xFFFFFFFF, 0, 0}
                                  << none << none;
        QTest::newRow("cut short") << Numbers{0, 0, 24, 0, 0} << none << none;
    }

    void desktopPanelsTakeRoom()
    {
        QFETCH(QList<quint32>, strut);
        const QSize desktop(2200, 1200);
        const QList<Strut> struts{Strut::fromNumbers(strut), Strut()};
        QTEST(reservedMargins({0, 0, 1000, 800}, desktop, struts), "first");
        QTEST(reservedMargins({1000, 200, 1200, 1000}, desktop, struts), "second");
    }
};

QTEST_MAIN(WindowGeometryTest)
#include "test_window_geometry.moc"
