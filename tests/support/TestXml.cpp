#include "TestXml.h"

#include "product/KIVXmlParser.h"
#include "product/XmlProductInterface.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QTemporaryFile>

namespace TestXml {

std::unique_ptr<XmlProductInterface> parseProduct(const QByteArray& xml)
{
    QTemporaryFile file;
    if (!file.open())
        return nullptr;
    file.write(xml);
    file.seek(0);
    return std::unique_ptr<XmlProductInterface>(KIVXmlParser::parseProduct(&file));
}

Reader::Reader(const QByteArray& xml)
    : m_bytes(xml)
    , m_reader(m_bytes)
{
    while (!m_reader.atEnd() && m_reader.readNext() != QXmlStreamReader::StartElement) { }
}

QString firstDifference(const QString& actual, const QString& expected)
{
    if (actual == expected)
        return QString();
    const QStringList a = actual.split(QLatin1Char('\n'));
    const QStringList e = expected.split(QLatin1Char('\n'));
    const int common = qMin(a.size(), e.size());
    for (int i = 0; i < common; ++i) {
        if (a.at(i) != e.at(i)) {
            return QStringLiteral("texts differ at line %1:\n  actual:   [%2]\n  expected: [%3]")
                .arg(i + 1)
                .arg(a.at(i), e.at(i));
        }
    }
    return QStringLiteral("texts differ in length: actual has %1 lines, expected %2; first extra line: [%3]")
        .arg(a.size())
        .arg(e.size())
        .arg(a.size() > common ? a.at(common) : e.at(common));
}

QByteArray readFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    return file.readAll();
}

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace TestXml
