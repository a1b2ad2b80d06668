#include "base/GraphicsOpacityEffect.h"
#include "base/LineEditStyle.h"
#include "base/SpacerWidget.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QtTest>

class TestWidgets : public QObject
{
    Q_OBJECT

private slots:
    void dockShading_data();
    void dockShading();

private:
    /// A 100 x 80 widget that draws only a black 10 x 10 square at (40, 30), rendered with `effect`.
    static QImage render(QGraphicsOpacityEffect* effect);
};

class SquareWidget : public SpacerWidget
{
protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(40, 30, 10, 10, Qt::black); }
};

QImage TestWidgets::render(QGraphicsOpacityEffect* effect)
{
    SquareWidget widget;
    widget.resize(100, 80);
    // Fully opaque: a translucent source goes through a device pixmap that an unshown widget does not have.
    effect->setOpacity(1.0);
    widget.setGraphicsEffect(effect); // the widget owns the effect
    QImage image(100, 80, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    widget.render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    return image;
}

void TestWidgets::dockShading_data()
{
    QTest::addColumn<int>("dock");
    QTest::addColumn<bool>("shaded");
    QTest::newRow("none") << 0 << false;
    QTest::newRow("left") << 1 << true;
    QTest::newRow("right") << 2 << true;
    QTest::newRow("top") << 3 << true;
    QTest::newRow("bottom") << 4 << true;
    QTest::newRow("above four") << 5 << false;
}

void TestWidgets::dockShading()
{
    QFETCH(int, dock);
    QFETCH(bool, shaded);
    auto* effect = new GraphicsOpacityEffect;
    QVERIFY(effect->qt_metacast("GraphicsOpacityEffect"));
    effect->setAddEffect(GraphicsOpacityEffect::Dock(dock));
    const QImage image = render(effect);
    const QImage plain = render(new QGraphicsOpacityEffect);

    // The widget's own content lies above the shading.
    QCOMPARE(image.pixelColor(45, 35), QColor(Qt::black));
    if (!shaded) {
        QCOMPARE(image, plain);
        return;
    }
    QCOMPARE(plain.pixelColor(5, 5).alpha(), 0);
    for (const QPoint inside : {QPoint(5, 5), QPoint(94, 74), QPoint(20, 60)}) {
        const QColor shade = image.pixelColor(inside);
        QVERIFY2(qAbs(shade.alpha() - 50) <= 1 && qAbs(shade.blue() - 192) <= 6 && shade.red() < 20,
            qPrintable(shade.name(QColor::HexArgb)));
    }
    for (const QPoint outside : {QPoint(4, 4), QPoint(95, 40), QPoint(50, 75), QPoint(0, 0)})
        QCOMPARE(image.pixelColor(outside).alpha(), 0);
}

QTEST_MAIN(TestWidgets)

#include "tst_widgets.moc"
