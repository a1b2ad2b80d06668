#pragma once

#include "kivcore_export.h"

#include <QString>

#include <memory>

class QFile;
class QXmlStreamReader;

class XmlProductInterface;
class XmlProductModule;
class XmlAxisParameters;
class XmlAxisParameter;
class XmlGlobalParameters;
class XmlGlobalParameter;
class XmlDigitalInputs;
class XmlDigitalInput;
class XmlDigitalOutputs;
class XmlDigitalOutput;
class XmlAnalogInputs;
class XmlAnalogInput;
class XmlIrqs;
class XmlIrq;
class XmlCoordinates;
class XmlCoordinate;
class XmlCANopenObject;
class XmlCANopenEntry;
class XmlDriveConfiguration;
class XmlDriveApSettings;
class XmlDriveApSetting;
class XmlValueSigned;
class XmlValueUnsigned;
class XmlValueBool;
class XmlValueBool2;
class XmlValueChoice;
class XmlValueDate;
class XmlValueTime;
class XmlValueVersion;
class XmlValueASCII;
class XmlValueDb;
class XmlValueAlert;
class XmlProductIC;
class XmlRegisterSet;
class XmlGroup;
class XmlValueRegister;
class XmlValueRegisterField;
class XmlRegisterVariant;
class XmlRegisterVariantImpacts;
class XmlRegisterVariantImpactedBy;
class XmlPins;
class XmlPinGroup;
class XmlPin;
class XmlPinMap;
class XmlPinMapping;
class XmlDatabase;

/// Streams a product description file ("product_module" or "product_ic") in one pass into a new model tree
/// that the caller owns and releases with deleteProduct(). Stateless and re-entrant: two threads may parse two files
/// with two readers at once. Every parse function is called with the reader on its element's start tag and returns a
/// new object that the caller owns, or null when the document ends inside the element. Nothing throws; problems go to
/// the debug log.
class KIVCORE_EXPORT KIVXmlParser
{
public:
    KIVXmlParser() = delete;

    /// The file must already be open for reading; it is neither opened nor closed here.
    /// The caller releases the result with deleteProduct (or holds it in a ProductPtr).
    static XmlProductInterface* parseProduct(QFile* file);

    /// Releases a product that parseProduct returned, completely: a module's pin map, which the module
    /// itself leaves to its keeper, goes with it. Null is ignored.
    static void deleteProduct(XmlProductInterface* product);

    /// Deleter for std::unique_ptr that releases a product with deleteProduct.
    struct ProductDeleter
    {
        void operator()(XmlProductInterface* product) const { KIVXmlParser::deleteProduct(product); }
    };
    /// A parsed product that is released completely when it goes.
    using ProductPtr = std::unique_ptr<XmlProductInterface, ProductDeleter>;

    /// Replaces every backslash-u-four-hex-digit escape by the code unit it names, in place.
    static QString& replaceUnicode(QString& text);

    // Module side.
    static XmlProductModule* parseProductModule(QXmlStreamReader* reader);
    static XmlAxisParameters* parseAxisParameters(QXmlStreamReader* reader);
    static XmlAxisParameter* parseAxisParameter(QXmlStreamReader* reader);
    static XmlGlobalParameters* parseGlobalParameters(QXmlStreamReader* reader);
    static XmlGlobalParameter* parseGlobalParameter(QXmlStreamReader* reader);
    static XmlDigitalInputs* parseDigitalInputs(QXmlStreamReader* reader);
    static XmlDigitalInput* parseDigitalInput(QXmlStreamReader* reader);
    static XmlDigitalOutputs* parseDigitalOutputs(QXmlStreamReader* reader);
    static XmlDigitalOutput* parseDigitalOutput(QXmlStreamReader* reader);
    static XmlAnalogInputs* parseAnalogInputs(QXmlStreamReader* reader);
    static XmlAnalogInput* parseAnalogInput(QXmlStreamReader* reader);
    static XmlIrqs* parseIrqs(QXmlStreamReader* reader);
    static XmlIrq* parseIrq(QXmlStreamReader* reader);
    static XmlCoordinates* parseCoordinates(QXmlStreamReader* reader);
    static XmlCoordinate* parseCoordinate(QXmlStreamReader* reader);
    static XmlCANopenObject* parseCANopenObject(QXmlStreamReader* reader);
    static XmlCANopenEntry* parseCANopenEntry(QXmlStreamReader* reader);
    static XmlDriveConfiguration* parseDriveConfig(QXmlStreamReader* reader);
    static XmlDriveApSettings* parseDriveApSettings(QXmlStreamReader* reader);
    static XmlDriveApSetting* parseDriveApSetting(QXmlStreamReader* reader);

    // Value descriptors. Except for the choice, "value_bool2", "value_db" and "value_alert" they read the
    // attributes only and leave the reader where it is.
    static XmlValueSigned* parseValueSigned(QXmlStreamReader* reader);
    static XmlValueUnsigned* parseValueUnsigned(QXmlStreamReader* reader);
    static XmlValueBool* parseValueBool(QXmlStreamReader* reader);
    static XmlValueBool2* parseValueBool2(QXmlStreamReader* reader);
    static XmlValueChoice* parseValueChoice(QXmlStreamReader* reader);
    static XmlValueDate* parseValueDate(QXmlStreamReader* reader);
    static XmlValueTime* parseValueTime(QXmlStreamReader* reader);
    static XmlValueVersion* parseValueVersion(QXmlStreamReader* reader);
    static XmlValueASCII* parseValueASCII(QXmlStreamReader* reader);
    static XmlValueDb* parseValueDb(QXmlStreamReader* reader);
    static XmlValueAlert* parseValueAlert(QXmlStreamReader* reader);

    // IC side.
    static XmlProductIC* parseProductIC(QXmlStreamReader* reader);
    static XmlRegisterSet* parseRegisterSet(QXmlStreamReader* reader);
    static XmlGroup* parseGroup(QXmlStreamReader* reader);
    static XmlValueRegister* parseValueRegister(QXmlStreamReader* reader);
    static XmlValueRegisterField* parseValueRegisterField(QXmlStreamReader* reader);
    static XmlRegisterVariant* parseRegisterVariant(QXmlStreamReader* reader);
    static XmlRegisterVariantImpacts* parseRegisterVariantImpacts(QXmlStreamReader* reader);
    static XmlRegisterVariantImpactedBy* parseRegisterVariantImpactedBy(QXmlStreamReader* reader);
    static XmlPins* parsePins(QXmlStreamReader* reader);
    static XmlPinGroup* parsePinGroup(QXmlStreamReader* reader);
    static XmlPin* parsePin(QXmlStreamReader* reader);
    static XmlPinMap* parsePinMap(QXmlStreamReader* reader);
    static XmlPinMapping* parsePinMapping(QXmlStreamReader* reader);
    static XmlDatabase* parseDatabase(QXmlStreamReader* reader);
};
