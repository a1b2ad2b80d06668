#pragma once

#include "kivcore_export.h"
#include "product/XmlProductInterface.h"

#include <QList>
#include <QString>

class XmlAnalogInputs;
class XmlAxisParameter;
class XmlAxisParameters;
class XmlCANopenObject;
class XmlCoordinates;
class XmlDatabase;
class XmlDigitalInputs;
class XmlDigitalOutputs;
class XmlDriveConfiguration;
class XmlGlobalParameters;
class XmlIrqs;
class XmlPinMap;

/// A module product parsed from a "product_module" file, owning and deleting everything it holds except
/// its pin map; whoever keeps a parsed module releases it with KIVXmlParser::deleteProduct, which frees both.
///
/// It holds identification texts, axis-parameter blocks, global-parameter banks, inputs, outputs,
/// interrupts, coordinates, CANopen objects, drive configurations, a pin map and a database, with lookups
/// and the firmware manual's LaTeX fragments. The pin map is deliberately not deleted by the module itself.
class KIVCORE_EXPORT XmlProductModule : public XmlProductInterface
{
    Q_OBJECT
public:
    XmlProductModule();
    /// Deletes the inputs, outputs, analog inputs, database, irqs, coordinates, then the axis-parameter
    /// blocks, global banks, drive configurations and CANopen objects. Not the pin map.
    ~XmlProductModule() override;

    QString getName() const { return m_name; }
    void setName(QString name) { m_name = name; }
    QString getNameInFirmwareVersion() const { return m_nameInFirmwareVersion; }
    void setNameInFirmwareVersion(QString name) { m_nameInFirmwareVersion = name; }
    QString getNameOfFirmwareType() const { return m_nameOfFirmwareType; }
    void setNameOfFirmwareType(QString name) { m_nameOfFirmwareType = name; }
    QString getHardwareVersion() const { return m_hardwareVersion; }
    void setHardwareVersion(QString version) { m_hardwareVersion = version; }
    QString getSoftwareVersion() const { return m_softwareVersion; }
    void setSoftwareVersion(QString version) { m_softwareVersion = version; }
    /// "HW: <hardware>; SW: <software>".
    QString getVersion() const;

    /// @name The module's own lists
    /// Callers may read and change them in place; the module deletes what they hold.
    ///@{
    QList<XmlAxisParameters*>* getAxisParameters() { return &m_axisParameters; }
    QList<XmlGlobalParameters*>* getGlobalParameters() { return &m_globalParameters; }
    QList<XmlCANopenObject*>* getCANopenObjects() { return &m_canopenObjects; }
    QList<XmlDriveConfiguration*>* driveConfigurations() { return &m_driveConfigurations; }
    ///@}

    /// @name Appending to the lists
    /// Take ownership; a null pointer is appended like any other.
    ///@{
    void appendAxisParameters(XmlAxisParameters* block) { m_axisParameters.append(block); }
    void appendGlobalParameters(XmlGlobalParameters* bank) { m_globalParameters.append(bank); }
    void appendCANopenObject(XmlCANopenObject* object) { m_canopenObjects.append(object); }
    void appendDriveConfiguration(XmlDriveConfiguration* configuration) { m_driveConfigurations.append(configuration); }
    ///@}

    /// @name The module's parts
    /// The setters take ownership (the pin map excepted, see the class comment) but deliberately do not
    /// delete an object they replace: a caller swapping parts keeps the old one.
    ///@{
    void setDigitalInputs(XmlDigitalInputs* inputs) { m_digitalInputs = inputs; }
    void setDigitalOutputs(XmlDigitalOutputs* outputs) { m_digitalOutputs = outputs; }
    void setAnalogInputs(XmlAnalogInputs* inputs) { m_analogInputs = inputs; }
    void setIrqs(XmlIrqs* irqs) { m_irqs = irqs; }
    void setCoordinates(XmlCoordinates* coordinates) { m_coordinates = coordinates; }
    void setPinMap(XmlPinMap* pinMap) { m_pinMap = pinMap; }
    void setDatabase(XmlDatabase* database) { m_database = database; }

    XmlDigitalInputs* getDigitalInputs() const { return m_digitalInputs; }
    XmlDigitalOutputs* getDigitalOutputs() const { return m_digitalOutputs; }
    XmlAnalogInputs* getAnalogInputs() const { return m_analogInputs; }
    XmlIrqs* getIrqs() const { return m_irqs; }
    XmlCoordinates* getCoordinates() const { return m_coordinates; }
    /// Not owned by the module: the caller deletes it.
    XmlPinMap* getPinMap() const { return m_pinMap; }
    XmlDatabase* getDatabase() const { return m_database; }
    ///@}

    /// @name Clearing the lists
    /// Delete every element of the list; the list ends empty.
    ///@{
    void clearAxisParameters();
    void clearGlobalParameters();
    void clearCANopenObjects();
    void clearDriveConfigurations();
    ///@}
    /// @name Clearing the containers
    /// Delete the container's items; the container itself stays.
    ///@{
    void clearDigitalInputs();
    void clearDigitalOutputs();
    void clearAnalogInputs();
    void clearIrqs();
    void clearCoordinates();
    ///@}
    /// Deliberately does nothing: the database stays attached (callers rely on it surviving a reset).
    void clearDatabase() { }

    /// The first parameter with this number in the blocks of `axis` (compared as 8-bit values), or null.
    /// Despite the name the result is the parameter, not its value.
    XmlAxisParameter* getAxisParameterValue(unsigned char axis, unsigned char type);
    /// The same, matching the identifier exactly.
    XmlAxisParameter* getAxisParameterValue(unsigned char axis, QString identifier);

    /// Debug text: the six header lines, the blocks, banks, CANopen objects and containers; drive
    /// configurations and the pin map are left out.
    QString toString();
    /// A complete HTML5 page of the module.
    QString toHtml();

    /// The manual's generated preamble: macros naming the product, counters and today's date.
    QString toLaTeXHeader();
    /// One long table per axis-parameter block, headed by its list position. Deliberately closes only the
    /// last table: the manual's hand-written source relies on the single "\end{longtable}".
    QString toLaTeXAxisParam();
    /// The long table of the bank at list position `index`; empty when there is none.
    QString toLaTeXGlobalParamBank(int index);
    /// The table of digital inputs (0), analog inputs (1) or digital outputs (2 with SIO, 3 with GIO);
    /// empty for another kind or a missing or empty container.
    QString toLaTeXIOs(int kind);
    /// "%" becomes "\%", then "_" becomes "\textunderscore ".
    static QString EscapeSpecialLaTeXCharacters(QString text);

private:
    friend class KIVXmlParser;

    QString m_name;
    QString m_nameInFirmwareVersion;
    QString m_nameOfFirmwareType;
    QString m_hardwareVersion;
    QString m_softwareVersion;
    QList<XmlAxisParameters*> m_axisParameters;
    QList<XmlGlobalParameters*> m_globalParameters;
    QList<XmlCANopenObject*> m_canopenObjects;
    QList<XmlDriveConfiguration*> m_driveConfigurations;
    XmlDigitalInputs* m_digitalInputs = nullptr;
    XmlDigitalOutputs* m_digitalOutputs = nullptr;
    XmlIrqs* m_irqs = nullptr;
    XmlCoordinates* m_coordinates = nullptr;
    XmlAnalogInputs* m_analogInputs = nullptr;
    XmlPinMap* m_pinMap = nullptr;
    XmlDatabase* m_database = nullptr;
    /// Set only while the parser builds the module, so that a module given up on a truncated file does not
    /// leak its pin map. Never set on a module that a caller receives.
    bool m_deletesPinMap = false;
};
