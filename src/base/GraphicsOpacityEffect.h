#pragma once

#include "kivcore_export.h"

#include <QGraphicsOpacityEffect>

/// An opacity effect that can also shade its widget in translucent blue to mark it as a docking target.
class KIVCORE_EXPORT GraphicsOpacityEffect : public QGraphicsOpacityEffect
{
    Q_OBJECT

public:
    /// 0 draws as a plain opacity effect; 1 to 4 shade the same inset area whatever the side.
    enum Dock
    {
        NoDock = 0,
        DockLeft = 1,
        DockRight = 2,
        DockTop = 3,
        DockBottom = 4
    };

    using QGraphicsOpacityEffect::QGraphicsOpacityEffect;

    void setAddEffect(GraphicsOpacityEffect::Dock d) { m_dock = d; }
    /// The shading first, so that it lies under the widget's own content.
    void draw(QPainter* p) override;

private:
    Dock m_dock = NoDock;
};
