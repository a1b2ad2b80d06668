#include "base/GraphicsOpacityEffect.h"
#include "base/LineEditStyle.h"
#include "base/SpacerWidget.h"

#include <QApplication>
#include <QPainter>
#include <QProxyStyle>
#include <QtTest>

class SquareWidget : public SpacerWidget
{
protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(40, 30, 10, 10, Qt::black); }
};

// Answers 7 to every metric.
class SevenStyle : public QProxyStyle
{
public:
    int pixelMetric(PixelMetric, const QStyleOption* = nullptr, const QWidget* = nullptr) const override { return 7; }
};

class TestWidgets : public QObject
{
    Q_OBJECT

private slots:
    void dockShading_data();
    void dockShading();
    void textCursorWidth();
};

void TestWidgets::dockShading_data()
{
    QTest::addColumn<int>("dock");
    QTest::addColumn<bool>("shaded");
    QTest::newRow("none") << 0 << false;
    QTest::newRow("left") << 1 << true;
    QTest::newRow("bottom") << 4 << true;
    QTest::newRow("above four") << 5 << false;
}

void TestWidgets::dockShading()
{
    QFETCH(int, dock);
    QFETCH(bool, shaded);
    SquareWidget widget; // 100 x 80, a black square at (40, 30)
    widget.resize(100, 80);
    auto* effect = new GraphicsOpacityEffect;
    effect->setAddEffect(GraphicsOpacityEffect::Dock(dock));
    // Fully opaque: a translucent source goes through a device pixmap that an unshown widget does not have.
    effect->setOpacity(1.0);
    widget.setGraphicsEffect(effect); // the widget owns the effect
    QImage image(100, 80, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    widget.render(&image, QPoint(), QRegion(), QWidget::RenderFlags());

    // The widget's own content lies above the shading, which keeps 5 pixels from each edge.
    QCOMPARE(image.pixelColor(45, 35), QColor(Qt::black));
    for (const QPoint inside : {QPoint(5, 5), QPoint(94, 74)}) {
        const QColor shade = image.pixelColor(inside);
        QCOMPARE(shade.alpha() == 50 && qAbs(shade.blue() - 192) <= 6 && shade.red() < 20, shaded);
    }
    for (const QPoint outside : {QPoint(4, 4), QPoint(95, 40), QPoint(50, 75)})
        QCOMPARE(image.pixelColor(outside).alpha(), 0);
}

void TestWidgets::textCursorWidth()
{
    const LineEditStyle style(new SevenStyle);
    QCOMPARE(style.pixelMetric(QStyle::PixelMetric(85)), 1);
    QCOMPARE(style.pixelMetric(QStyle::PixelMetric(86)), 7);
}

QTEST_MAIN(TestWidgets)

#include "tst_widgets.moc"
