#pragma once

#include "kivcore_export.h"
#include "product/XmlProductInterface.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

class XmlDatabase;
class XmlGroup;
class XmlPins;
class XmlRegisterSet;

/// A motor-driver IC parsed from a "product_ic" file, owning and deleting its register set, pins and
/// database; the caller of KIVXmlParser::parseProduct releases it with KIVXmlParser::deleteProduct. Beside
/// those: header texts, descriptions and a run-time record of register writes made by tools.
class KIVCORE_EXPORT XmlProductIC : public XmlProductInterface
{
    Q_OBJECT
public:
    XmlProductIC();
    /// Deletes the register set, the database and the pins, in that order.
    ~XmlProductIC() override;

    QString name() const { return m_name; }
    void setName(QString name) { m_name = name; }
    QString version() const { return m_version; }
    void setVersion(QString version) { m_version = version; }
    QString author() const { return m_author; }
    void setAuthor(QString author) { m_author = author; }
    QString date() const { return m_date; }
    void setDate(QString date) { m_date = date; }

    /// The product's own list; the caller may change it in place.
    QStringList* mainDescription() { return &m_mainDescription; }
    /// Empty text is ignored; "\x26" becomes "&".
    void appendMainDescription(QString text);

    /// @name The IC's parts
    /// The three setters store the pointer and take ownership, but deliberately do not delete an object
    /// they replace: a caller swapping parts keeps the old one.
    ///@{
    XmlDatabase* database() { return m_database; }
    void setDatabase(XmlDatabase* database) { m_database = database; }
    XmlRegisterSet* registerSet() { return m_registerSet; }
    void setRegisterSet(XmlRegisterSet* registerSet) { m_registerSet = registerSet; }
    XmlPins* pins() { return m_pins; }
    void setPins(XmlPins* pins) { m_pins = pins; }
    ///@}

    /// Records a write: the last value per address, and the address moved to the end of the write order.
    /// The address is 8 bits wide, as the register set's map key is.
    void insertRegisterHasWritten(unsigned char address, int value);
    /// The write record; `*order` receives the write order (least recently written first). Both point into
    /// the product and live as long as it does.
    QMap<unsigned char, int>* registerHasWritten(QList<unsigned char>** order);

    QString toString();
    QString toHtml();
    /// Always empty: an IC product has no LaTeX header block.
    QString toLaTeXHeader();
    /// The register map long table. A register set or field descriptor that is missing leaves its cells out.
    QString toLaTeXRegisterMap();
    /// Access, address, name, default, minimum, maximum and comment of every register and field.
    QString toLaTeXRegisterMapDefaults();
    QString toLaTeXRegisterOverview();
    /// The overview limited to the registers of `group`.
    QString toLaTeXRegisterOverviewByGroup(XmlGroup* group);

private:
    QString m_name;
    QString m_version;
    QString m_author;
    QString m_date;
    XmlPins* m_pins = nullptr;
    QStringList m_mainDescription;
    XmlRegisterSet* m_registerSet = nullptr;
    XmlDatabase* m_database = nullptr;
    QMap<unsigned char, int> m_registerHasWritten;
    QList<unsigned char> m_writeOrder;
};
