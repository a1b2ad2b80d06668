#include "Checks.h"

#include "Reporter.h"

#include "values/XmlValueChoice.h"

void checkValue(XmlValueInterface* value, int node, Reporter& reporter)
{
    if (!value)
        return;
    const int type = value->getType();
    if (type == XmlValueTypeChoice) {
        const auto* choice = static_cast<XmlValueChoice*>(value);
        if (choice->getElements().isEmpty())
            return;
        for (const XmlValueChoiceElement* element : choice->getElements()) {
            if (static_cast<long long>(element->getValue()) == value->getDefault())
                return;
        }
        reporter.report("KIV053", node,
            QStringLiteral("default ") + QString::number(value->getDefault())
                + QStringLiteral(" is none of the listed choices; set it to a choice_element's value"));
        return;
    }
    if (type != XmlValueTypeSigned && type != XmlValueTypeUnsigned)
        return;
    const long long min = value->getMin();
    const long long max = value->getMax();
    if (min > max) {
        reporter.report("KIV052", node,
            QStringLiteral("min ") + QString::number(min) + QStringLiteral(" is above max ") + QString::number(max)
                + QStringLiteral("; swap them or correct one"));
        return;
    }
    const long long def = value->getDefault();
    if (def < min || def > max)
        reporter.report("KIV051", node,
            QStringLiteral("default ") + QString::number(def) + QStringLiteral(" is outside ") + QString::number(min)
                + QStringLiteral(" to ") + QString::number(max)
                + QStringLiteral("; set a default within the range or widen the range"));
}
