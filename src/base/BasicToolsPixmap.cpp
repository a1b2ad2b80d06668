// Pixmap and icon helpers: plain image operations on ARGB32 copies.
#include "base/BasicTools.h"

#include <QAbstractButton>
#include <QAction>
#include <QBuffer>
#include <QFontMetrics>
#include <QIcon>
#include <QPainter>
#include <QTransform>

namespace {

QImage argbCopy(const QPixmap& pixmap)
{
    return pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
}

// Every visible pixel (or only those of colour `from`) takes `color`, keeping its alpha.
void recolor(QImage& image, const QColor& color, bool onlyFrom, const QColor& from)
{
    const QRgb target = color.rgb() & 0x00FFFFFFu;
    const QRgb match = from.rgb() & 0x00FFFFFFu;
    for (int y = 0; y < image.height(); ++y) {
        QRgb* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = row[x];
            if (qAlpha(pixel) == 0 || (onlyFrom && (pixel & 0x00FFFFFFu) != match))
                continue;
            row[x] = (pixel & 0xFF000000u) | target;
        }
    }
}

QPixmap recolored(const QPixmap& pixmap, const QColor& color)
{
    QImage image = argbCopy(pixmap);
    recolor(image, color, false, QColor());
    return QPixmap::fromImage(image);
}

QIcon coloredIcon(const QPixmap& symbol, const QColor& normal, const QColor& disabled, const QColor& active)
{
    QIcon icon;
    icon.addPixmap(recolored(symbol, normal), QIcon::Normal);
    icon.addPixmap(recolored(symbol, disabled), QIcon::Disabled);
    icon.addPixmap(recolored(symbol, active), QIcon::Active);
    icon.addPixmap(recolored(symbol, active), QIcon::Selected);
    return icon;
}

QPixmap iconSymbol(const QIcon& icon)
{
    const QList<QSize> sizes = icon.availableSizes();
    return sizes.isEmpty() ? QPixmap() : icon.pixmap(sizes.last());
}

QPixmap transparentPixmap(const QSize& size)
{
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    return pixmap;
}

} // namespace

QImage BasicTools::rotate(int degrees, QImage image)
{
    if (image.isNull())
        return image;
    return image.transformed(QTransform().rotate(degrees));
}

QPixmap BasicTools::rotate(int degrees, QPixmap pixmap)
{
    if (pixmap.isNull())
        return pixmap;
    return pixmap.transformed(QTransform().rotate(degrees));
}

QPixmap BasicTools::setPixmapToGray(QPixmap pixmap)
{
    if (pixmap.isNull())
        return pixmap;
    QImage image = argbCopy(pixmap);
    for (int y = 0; y < image.height(); ++y) {
        QRgb* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const int grey = qGray(row[x]);
            row[x] = qRgba(grey, grey, grey, qAlpha(row[x]));
        }
    }
    return QPixmap::fromImage(image);
}

void BasicTools::setSymbolColor(QPixmap* pixmap, QColor color, bool onlyFrom, QColor from)
{
    if (!pixmap || pixmap->isNull() || !color.isValid())
        return;
    QImage image = argbCopy(*pixmap);
    recolor(image, color, onlyFrom, from);
    *pixmap = QPixmap::fromImage(image);
}

QPixmap BasicTools::addTextToPixmap(QPixmap pixmap, QString text, QColor color)
{
    if (pixmap.isNull())
        return pixmap;
    QPainter painter(&pixmap);
    painter.setPen(color);
    painter.drawText(pixmap.rect(), Qt::AlignCenter, text);
    return pixmap;
}

QPixmap BasicTools::addTextToPixmapAdjust(
    QPixmap pixmap, QString text, QColor color, Qt::Orientation orientation, QFont font)
{
    const QSize textSize = QFontMetrics(font).size(Qt::TextSingleLine, text);
    QSize size = pixmap.size();
    QRect textRect;
    if (orientation == Qt::Horizontal) {
        size = QSize(size.width() + textSize.width(), qMax(size.height(), textSize.height()));
        textRect = QRect(pixmap.width(), 0, textSize.width(), size.height());
    } else {
        size = QSize(qMax(size.width(), textSize.width()), size.height() + textSize.height());
        textRect = QRect(0, pixmap.height(), size.width(), textSize.height());
    }
    QPixmap result = transparentPixmap(size);
    QPainter painter(&result);
    painter.drawPixmap(0, 0, pixmap);
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(textRect, Qt::AlignCenter, text);
    return result;
}

QPixmap BasicTools::addTextToPixmapRotate(QPixmap pixmap, QString text, QColor color, QFont font)
{
    if (pixmap.isNull())
        return pixmap;
    QPainter painter(&pixmap);
    painter.setFont(font);
    painter.setPen(color);
    // Rotate around the centre so the text reads from bottom to top.
    painter.translate(pixmap.width() / 2.0, pixmap.height() / 2.0);
    painter.rotate(-90);
    const QRectF box(-pixmap.height() / 2.0, -pixmap.width() / 2.0, pixmap.height(), pixmap.width());
    painter.drawText(box, Qt::AlignCenter, text);
    return pixmap;
}

QPixmap BasicTools::addPixmapToPixmap(QPixmap base, QPixmap overlay)
{
    if (base.isNull() || overlay.isNull())
        return base;
    QPainter painter(&base);
    painter.drawPixmap(base.width() - overlay.width(), base.height() - overlay.height(), overlay);
    return base;
}

QString BasicTools::setPixmapToHtml(QPixmap pixmap, QColor background, QSize size)
{
    if (pixmap.isNull())
        return QString();
    if (size.isValid() && size != pixmap.size())
        pixmap = pixmap.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QImage image(pixmap.size(), QImage::Format_ARGB32);
    image.fill(background.isValid() ? background : QColor(Qt::transparent));
    {
        QPainter painter(&image);
        painter.drawPixmap(0, 0, pixmap);
    }
    return QString(QLatin1String("<img src=\"data:image/png;base64,") + QString::fromLatin1(pixmapToImageData(image))
        + QLatin1String("\" width=\"") + QString::number(image.width()) + QLatin1String("\" height=\"")
        + QString::number(image.height()) + QLatin1String("\">"));
}

QString BasicTools::setPixmapToHtml(QPixmap pixmap, QSize size)
{
    return setPixmapToHtml(pixmap, QColor(), size);
}

QString BasicTools::setPixmapToHtml(QPixmap pixmap, QColor background)
{
    return setPixmapToHtml(pixmap, background, QSize());
}

QByteArray BasicTools::pixmapToImageData(QImage image)
{
    if (image.isNull())
        return QByteArray();
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return png.toBase64();
}

QPixmap BasicTools::pixmapFromImageData(QByteArray data)
{
    QPixmap pixmap;
    pixmap.loadFromData(QByteArray::fromBase64(data), "PNG");
    return pixmap;
}

void BasicTools::setButtonIconsColor(QAbstractButton* button, QColor normal, QColor disabled, QColor active)
{
    if (!button)
        return;
    const QPixmap symbol = iconSymbol(button->icon());
    if (!symbol.isNull())
        button->setIcon(coloredIcon(symbol, normal, disabled, active));
}

void BasicTools::setActionIconsColor(QAction* action, QColor normal, QColor disabled, QColor active)
{
    if (!action)
        return;
    const QPixmap symbol = iconSymbol(action->icon());
    if (!symbol.isNull())
        action->setIcon(coloredIcon(symbol, normal, disabled, active));
}
