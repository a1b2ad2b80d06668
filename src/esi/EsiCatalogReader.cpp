#include "esi/EsiCatalogReader.h"

#include "xml/ElementWalk_p.h"

#include <QFile>
#include <QHash>
#include <QXmlStreamReader>

using namespace KivXml;

namespace {

constexpr int kEnglish = 1033;
constexpr int kNoLanguage = -1;

struct Name
{
    int language;
    QString text;
};

/// The name by the catalog's order: `language`, English, no language, then the first other one.
QString pickName(const QVector<Name>& names, int language)
{
    for (const int wanted : {language, kEnglish, kNoLanguage}) {
        for (const Name& name : names) {
            if (name.language == wanted)
                return name.text;
        }
    }
    return names.isEmpty() ? QString() : names.first().text;
}

QStringList allNames(const QVector<Name>& names)
{
    QStringList texts;
    texts.reserve(names.size());
    for (const Name& name : names)
        texts << name.text;
    return texts;
}

bool isNamed(const QXmlStreamReader& reader, const char* name)
{
    return reader.name() == QLatin1String(name);
}

} // namespace

bool EsiDeviceIdentity::operator==(const EsiDeviceIdentity& other) const
{
    return vendorId == other.vendorId && vendorName == other.vendorName && productCode == other.productCode
        && revision == other.revision && type == other.type && name == other.name && names == other.names
        && group == other.group && groupName == other.groupName && file == other.file && position == other.position;
}

/// One pass over one file; fills the reader's devices or its error.
class EsiCatalogParse
{
public:
    EsiCatalogParse(EsiCatalogReader* owner, QIODevice* device)
        : m_owner(owner)
        , m_xml(device)
    { }

    bool run();

private:
    struct Device
    {
        EsiDeviceIdentity identity;
        QVector<Name> names;
        bool hasType = false;
    };

    bool fail(const QString& reason, qint64 line, qint64 column)
    {
        if (!m_failed)
            m_owner->fail(EsiCatalogReader::Status::Invalid, reason, line, column);
        m_failed = true;
        return false;
    }
    bool failHere(const QString& reason) { return fail(reason, m_xml.lineNumber(), m_xml.columnNumber()); }

    Name readName()
    {
        bool ok = false;
        const int language = m_xml.attributes().value(QLatin1String("LcId")).toInt(&ok);
        return {ok ? language : kNoLanguage, readElementOwnText(&m_xml).trimmed()};
    }

    bool readNumber(const QString& text, const char* what, quint32* value);
    void readVendor();
    void readDescriptions();
    void readGroups();
    void readDevices();
    void readDevice();
    void readType(Device* device);

    EsiCatalogReader* m_owner;
    QXmlStreamReader m_xml;
    bool m_failed = false;
    bool m_hasVendor = false;
    quint32 m_vendorId = 0;
    QString m_vendorName;
    QHash<QString, QString> m_groupNames; ///< group type -> name
    QVector<Device> m_devices;
};

bool EsiCatalogParse::readNumber(const QString& text, const char* what, quint32* value)
{
    if (EsiCatalogReader::parseNumber(text, value))
        return true;
    return failHere(QLatin1String(what) + QStringLiteral(" \"") + text
        + QStringLiteral("\" is not a number (#x hexadecimal or decimal, at most 32 bits)"));
}

void EsiCatalogParse::readVendor()
{
    QVector<Name> names;
    while (!m_failed && readNextChild(&m_xml)) {
        if (isNamed(m_xml, "Id")) {
            const qint64 line = m_xml.lineNumber();
            const qint64 column = m_xml.columnNumber();
            const QString text = readElementOwnText(&m_xml);
            if (!EsiCatalogReader::parseNumber(text, &m_vendorId))
                fail(QStringLiteral("vendor id \"") + text
                        + QStringLiteral("\" is not a number (#x hexadecimal or decimal, at most 32 bits)"),
                    line, column);
            m_hasVendor = true;
        } else if (isNamed(m_xml, "Name")) {
            names << readName();
        } else {
            skipElementTree(&m_xml);
        }
    }
    m_vendorName = pickName(names, m_owner->m_language);
}

void EsiCatalogParse::readDescriptions()
{
    while (!m_failed && readNextChild(&m_xml)) {
        if (isNamed(m_xml, "Groups"))
            readGroups();
        else if (isNamed(m_xml, "Devices"))
            readDevices();
        else
            skipElementTree(&m_xml); // "Modules" and the rest: no device identities
    }
}

void EsiCatalogParse::readGroups()
{
    while (readNextChild(&m_xml)) {
        if (!isNamed(m_xml, "Group")) {
            skipElementTree(&m_xml);
            continue;
        }
        QString type;
        QVector<Name> names;
        while (readNextChild(&m_xml)) {
            if (isNamed(m_xml, "Type"))
                type = readElementOwnText(&m_xml).trimmed();
            else if (isNamed(m_xml, "Name"))
                names << readName();
            else
                skipElementTree(&m_xml);
        }
        if (!m_groupNames.contains(type)) // the first definition of a type counts
            m_groupNames.insert(type, pickName(names, m_owner->m_language));
    }
}

void EsiCatalogParse::readDevices()
{
    while (!m_failed && readNextChild(&m_xml)) {
        if (isNamed(m_xml, "Device"))
            readDevice();
        else
            skipElementTree(&m_xml);
    }
}

void EsiCatalogParse::readType(Device* device)
{
    const QXmlStreamAttributes attributes = m_xml.attributes();
    // Absent numbers are 0, as ESI files mean them; present ones must read.
    if (attributes.hasAttribute(QLatin1String("ProductCode"))
        && !readNumber(
            attributes.value(QLatin1String("ProductCode")).toString(), "product code", &device->identity.productCode))
        return;
    if (attributes.hasAttribute(QLatin1String("RevisionNo"))
        && !readNumber(
            attributes.value(QLatin1String("RevisionNo")).toString(), "revision number", &device->identity.revision))
        return;
    device->identity.type = readElementOwnText(&m_xml).trimmed();
    device->hasType = true;
}

void EsiCatalogParse::readDevice()
{
    const qint64 line = m_xml.lineNumber();
    const qint64 column = m_xml.columnNumber();
    Device device;
    while (!m_failed && readNextChild(&m_xml)) {
        if (isNamed(m_xml, "Type") && !device.hasType)
            readType(&device);
        else if (isNamed(m_xml, "Name"))
            device.names << readName();
        else if (isNamed(m_xml, "GroupType"))
            device.identity.group = readElementOwnText(&m_xml).trimmed();
        else
            skipElementTree(&m_xml); // profiles, process data, EEPROM, slots, images: no identity there
    }
    if (m_failed || m_xml.hasError())
        return;
    if (!device.hasType) {
        fail(QStringLiteral("device ") + QString::number(m_devices.size()) + QStringLiteral(" has no \"Type\""), line,
            column);
        return;
    }
    device.identity.position = m_devices.size();
    m_devices << device;
}

bool EsiCatalogParse::run()
{
    if (!readToRootElement(&m_xml))
        return m_xml.hasError() ? failHere(m_xml.errorString()) : failHere(QStringLiteral("no root element"));
    if (!isNamed(m_xml, "EtherCATInfo")) {
        m_owner->fail(EsiCatalogReader::Status::NotEsi,
            QStringLiteral("root element \"") + m_xml.name() + QStringLiteral("\" is not \"EtherCATInfo\""),
            m_xml.lineNumber(), m_xml.columnNumber());
        return false;
    }
    while (!m_failed && readNextChild(&m_xml)) {
        if (isNamed(m_xml, "Vendor"))
            readVendor();
        else if (isNamed(m_xml, "Descriptions"))
            readDescriptions();
        else
            skipElementTree(&m_xml);
    }
    if (m_failed)
        return false;
    // The rest of the document must be well-formed too: a file cut after its root is no file.
    while (!m_xml.atEnd() && !m_xml.hasError())
        readNextChild(&m_xml);
    if (m_xml.hasError())
        return failHere(m_xml.errorString());
    if (!m_hasVendor && !m_devices.isEmpty())
        return failHere(QStringLiteral("no vendor id (\"Vendor\"/\"Id\")"));

    const int language = m_owner->m_language;
    QVector<EsiDeviceIdentity>& out = m_owner->m_devices;
    out.reserve(m_devices.size());
    for (Device& device : m_devices) {
        EsiDeviceIdentity& identity = device.identity;
        identity.vendorId = m_vendorId;
        identity.vendorName = m_vendorName;
        identity.name = pickName(device.names, language);
        identity.names = allNames(device.names);
        identity.groupName = m_groupNames.value(identity.group);
        identity.file = m_owner->m_file;
        out << identity;
    }
    return true;
}

EsiCatalogReader::EsiCatalogReader(int languageId)
    : m_language(languageId)
{ }

bool EsiCatalogReader::read(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        m_file = path;
        m_devices.clear();
        fail(Status::CannotOpen, file.errorString(), 0, 0);
        return false;
    }
    return read(&file, path);
}

bool EsiCatalogReader::read(QIODevice* device, const QString& fileName)
{
    m_file = fileName;
    m_status = Status::Ok;
    m_error.clear();
    m_line = m_column = 0;
    m_devices.clear();
    EsiCatalogParse parse(this, device);
    if (parse.run())
        return true;
    m_devices.clear();
    return false;
}

void EsiCatalogReader::fail(Status status, const QString& reason, qint64 line, qint64 column)
{
    m_status = status;
    m_error = reason;
    m_line = line;
    m_column = column;
}

QString EsiCatalogReader::errorMessage() const
{
    if (m_status == Status::Ok)
        return QString();
    if (m_line <= 0)
        return m_file + QStringLiteral(": ") + m_error;
    return m_file + QLatin1Char(':') + QString::number(m_line) + QLatin1Char(':') + QString::number(m_column)
        + QStringLiteral(": ") + m_error;
}

bool EsiCatalogReader::parseNumber(const QString& text, quint32* value)
{
    const QString trimmed = text.trimmed();
    const bool hex = trimmed.startsWith(QLatin1String("#x"), Qt::CaseInsensitive)
        || trimmed.startsWith(QLatin1String("0x"), Qt::CaseInsensitive);
    const QStringRef digits = hex ? trimmed.midRef(2) : trimmed.midRef(0);
    if (digits.isEmpty())
        return false;
    for (const QChar c : digits) {
        const bool digit = c >= QLatin1Char('0') && c <= QLatin1Char('9');
        const bool hexLetter
            = (c >= QLatin1Char('a') && c <= QLatin1Char('f')) || (c >= QLatin1Char('A') && c <= QLatin1Char('F'));
        if (!digit && !(hex && hexLetter))
            return false;
    }
    bool ok = false;
    const qulonglong number = digits.toULongLong(&ok, hex ? 16 : 10);
    if (!ok || number > 0xFFFFFFFFull)
        return false;
    *value = static_cast<quint32>(number);
    return true;
}
