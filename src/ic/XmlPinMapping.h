#pragma once

#include "kivcore_export.h"

#include <QString>

/// Relates one pin number of an IC to the pin number of a board; deleted by the pin map that holds it.
class KIVCORE_EXPORT XmlPinMapping
{
public:
    XmlPinMapping(unsigned int pinIc, unsigned int pinBoard);

    unsigned int getPinIc() const { return m_pinIc; }
    void setPinIc(unsigned int pinIc) { m_pinIc = pinIc; }
    unsigned int getPinBoard() const { return m_pinBoard; }
    void setPinBoard(unsigned int pinBoard) { m_pinBoard = pinBoard; }

    QString toString(QString indent) const;
    QString toHtml() const;

private:
    unsigned int m_pinIc;
    unsigned int m_pinBoard;
};
