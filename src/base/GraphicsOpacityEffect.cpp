#include "base/GraphicsOpacityEffect.h"

#include <QBrush>
#include <QPainter>

void GraphicsOpacityEffect::draw(QPainter* p)
{
    if (m_dock != NoDock) {
        const QBrush brush(QColor(10, 10, 192, 50), Qt::SolidPattern);
        if (m_dock >= DockLeft && m_dock <= DockBottom) {
            const QRectF bounds = boundingRect();
            p->fillRect(QRect(5, 5, int(bounds.width() - 10), int(bounds.height() - 10)), brush);
        }
    }
    QGraphicsOpacityEffect::draw(p);
}
