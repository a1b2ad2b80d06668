#include "product/XmlCANopenObject.h"

#include "base/BasicTools.h"
#include "base/ReserveHint_p.h"
#include "product/XmlCANopenEntry.h"
#include "values/XmlValueInterface.h"

XmlCANopenObject::XmlCANopenObject(
    unsigned int index, QString name, QString objectType, QString dataType, QString segment)
    : m_index(index)
    , m_name(name)
    , m_objectType(objectType)
    , m_dataType(dataType)
    , m_segment(segment)
{ }

XmlCANopenObject::~XmlCANopenObject()
{
    qDeleteAll(m_entries);
}

QString XmlCANopenObject::getSegmentAsString() const
{
    if (m_segment == QLatin1String("D"))
        return QStringLiteral("Device Profile");
    if (m_segment == QLatin1String("M"))
        return QStringLiteral("Manufacturer");
    if (m_segment == QLatin1String("C"))
        return QStringLiteral("Communication");
    return m_segment;
}

QString XmlCANopenObject::toString(QString indent) const
{
    const QString nested = indent + QLatin1Char('\t');
    QString text;
    text.reserve(KivReserve::chars(128 + m_name.size(), qint64(m_descriptions.size()) + m_entries.size(), 96));
    text += QLatin1String("XmlCANopenObject( index: 0x");
    text += QString::number(m_index, 16);
    text += QLatin1String(", name: ");
    text += m_name;
    text += QLatin1String(", objectType: ");
    text += m_objectType;
    text += QLatin1String(", dataType: ");
    text += m_dataType;
    text += QLatin1String(", segment: ");
    text += m_segment;
    for (int i = 0; i < m_descriptions.size(); ++i) {
        text += QLatin1String("\n\t");
        text += indent;
        text += QLatin1String("description[");
        text += QString::number(i);
        text += QLatin1String("]: ");
        text += m_descriptions.at(i);
    }
    for (int i = 0; i < m_entries.size(); ++i) {
        text += QLatin1String("\n\t");
        text += indent;
        text += QLatin1String("entry[");
        text += QString::number(i);
        text += QLatin1String("]: ");
        if (const XmlCANopenEntry* entry = m_entries.at(i))
            text += entry->toString(nested);
    }
    text += QLatin1Char('\n');
    text += indent;
    text += QLatin1Char(')');
    return text;
}

QString XmlCANopenObject::toLatex() const
{
    const QString hex = BasicTools::iToHex(quint32(m_index), 4, QString());
    QString text;
    text.reserve(KivReserve::chars(1200, qint64(m_descriptions.size()) + m_entries.size(), 80));

    text += QLatin1String("\\subsubsection{Object \\hexnum{");
    text += hex;
    text += QLatin1String("}: ");
    text += m_name;
    text += QLatin1String("}\n\\label{\\labelprefix subsub:obj");
    text += hex;
    text += QLatin1String("}\n");

    for (int i = 0; i < m_descriptions.size(); ++i) {
        text += m_descriptions.at(i);
        text += i + 1 < m_descriptions.size() ? QLatin1String("\\\n\n") : QLatin1String("\n");
    }

    text += QLatin1String("\n\\begin{table}[H]\n"
                          "\\begin{tabular}{|c|c|c|c|} \\hline\n"
                          "\\rowcolor{gray} \\multicolumn{4}{|c|}{Object Description} \\\\ \\hline\n"
                          "\\rowcolor{gray} Index & Name & Object Type & Data Type \\\\ \\hline\n"
                          "\\hexnum{");
    text += hex;
    text += QLatin1String("} & ");
    text += m_name;
    text += QLatin1String(" & ");
    text += m_objectType;
    text += QLatin1String(" & ");
    text += m_dataType;
    text += QLatin1String(" \\\\ \\hline\n"
                          "\\end{tabular}\n"
                          "\\caption{Object Description (\\hexnum{");
    text += hex;
    text += QLatin1String("})}\n\\label{\\labelprefix tab:obj");
    text += hex;
    text += QLatin1String("}\n\\end{table}\n\n");

    text += QLatin1String(
        "\\begin{table}[H]\n"
        "\\begin{tabular}{|c|c|c|c|c|c|c|c|} \\hline\n"
        "\\rowcolor{gray} \\multicolumn{8}{|c|}{Entry Description} \\\\ \\hline\n"
        "\\rowcolor{gray} Sub- & & PDO & & & & & \\\\ \n"
        "\\rowcolor{gray} index & Name & Mapping & Min & Max & Default & Unit & Access \\\\ \\hline\n");
    for (const XmlCANopenEntry* entry : m_entries) {
        if (!entry)
            continue;
        text += QString::number(entry->getSubIndex());
        text += QLatin1String(" & ");
        text += entry->getName();
        text += entry->isPdoMapped() ? QLatin1String(" & yes") : QLatin1String(" & no");
        if (XmlValueInterface* value = entry->getValue()) {
            text += QLatin1String(" & ");
            text += QString::number(value->getMin());
            text += QLatin1String(" & ");
            text += QString::number(value->getMax());
            text += QLatin1String(" & ");
            text += QString::number(value->getDefault());
            text += QLatin1String(" & ");
            text += value->getUnit();
            text += QLatin1String(" & ");
            text += value->getAccessAsString();
        } else {
            // No descriptor: the five value cells stay empty so the row keeps its eight columns.
            text += QLatin1String(" &  &  &  &  & ");
        }
        text += QLatin1String(" \\\\ \\hline\n");
    }
    text += QLatin1String("\\end{tabular}\n\\caption{Entry Description (\\hexnum{");
    text += hex;
    text += QLatin1String("})}\n\\label{\\labelprefix tab:ent");
    text += hex;
    text += QLatin1String("}\n\\end{table}\n");

    text.replace(QLatin1String("_"), QLatin1String("\\_"));
    return text;
}
