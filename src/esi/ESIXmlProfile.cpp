#include "esi/ESIXmlProfile.h"

#include "esi/ESIXmlDictionary.h"
#include "text/DebugText_p.h"

#include <QJsonObject>

ESIXmlProfile::~ESIXmlProfile()
{
    delete m_dictionary;
}

void ESIXmlProfile::setDictionary(ESIXmlDictionary* dictionary)
{
    if (dictionary == m_dictionary)
        return;
    delete m_dictionary;
    m_dictionary = dictionary;
}

QString ESIXmlProfile::toString(QString indent) const
{
    QString s;
    s.reserve(48 + m_profileNo.size() + 4 * indent.size());
    KivText::openBlock(s, indent, QLatin1String("Profile"));
    KivText::field(s, indent, QLatin1String("\tProfileNo: "), m_profileNo);
    if (m_dictionary)
        s += m_dictionary->toString(indent + QLatin1Char('\t'));
    KivText::closeBlock(s, indent);
    return s;
}

void ESIXmlProfile::toJson(QJsonObject& json) const
{
    json.insert(QStringLiteral("ProfileNo"), m_profileNo);
    if (m_dictionary)
        m_dictionary->toJson(json);
}
