#pragma once

#include "values/XmlValueInterface.h"

#include <QString>

namespace IcTest {

/// A stand-in descriptor with a chosen type code, value descriptions and access, so that the register
/// model can be tested apart from the value kinds.
class FakeValue : public XmlValueInterface
{
public:
    explicit FakeValue(int type, XmlValueDescriptions descriptions = {}, const QString& access = QString())
        : XmlValueInterface(type)
        , m_descriptions(descriptions)
    {
        setAccessString(access);
    }
    QString toString(QString indent) override { return indent + QStringLiteral("\tFake"); }
    QString getStringFromValue(unsigned long long) override { return QString(); }
    XmlValueDescriptions getValueDescriptions() override { return m_descriptions; }
    bool hasMin() override { return m_hasRange; }
    bool hasMax() override { return m_hasRange; }
    bool hasDefault() override { return m_hasRange; }
    FakeValue* withRange(long long min, long long max, long long def)
    {
        setMin(min);
        setMax(max);
        setDefault(def);
        m_hasRange = true;
        return this;
    }

private:
    XmlValueDescriptions m_descriptions;
    bool m_hasRange = false;
};

} // namespace IcTest
