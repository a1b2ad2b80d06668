#pragma once

#include "kivcore_export.h"

#include <QProxyStyle>

/// A proxy style for line edits: a text cursor one pixel wide, everything else from the base style.
class KIVCORE_EXPORT LineEditStyle : public QProxyStyle
{
public:
    /// Takes ownership of `style` (null: the application's style).
    explicit LineEditStyle(QStyle* style = nullptr);

    /// 1 for metric 85 (the text cursor width in Qt 5), the base style's answer otherwise.
    int pixelMetric(QStyle::PixelMetric m, const QStyleOption* o = nullptr, const QWidget* w = nullptr) const override;
};
