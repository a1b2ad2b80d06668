#include "base/SpacerWidget.h"

SpacerWidget::SpacerWidget(QWidget* parent)
    : QWidget(parent)
{ }
