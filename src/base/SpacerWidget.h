#pragma once

#include "kivcore_export.h"

#include <QWidget>

/// An empty widget for tool bars and layouts: takes up room and draws nothing.
class KIVCORE_EXPORT SpacerWidget : public QWidget
{
    Q_OBJECT

public:
    explicit SpacerWidget(QWidget* parent = nullptr);
};
