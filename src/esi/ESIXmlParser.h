#pragma once

#include "kivcore_export.h"

#include <QList>
#include <QString>

class ESIXmlDescriptions;
class ESIXmlDevice;
class ESIXmlDictionary;
class ESIXmlDictionaryDataType;
class ESIXmlDictionaryDataTypeSubItem;
class ESIXmlDictionaryObject;
class ESIXmlGroup;
class ESIXmlObjectInfo;
class ESIXmlProfile;
class ESIXmlSubItem;
class ESIXmlVendor;
class QFile;
class QXmlStreamReader;
class XmlEtherCATInfo;

/// Reads an EtherCAT Slave Information file in one streaming pass into a new ESIXml model tree that the
/// caller owns and deletes (deleting the XmlEtherCATInfo frees the whole tree). Only what the
/// environment shows is kept: process data, mailbox, sync managers, FMMUs, distributed clocks and the EEPROM
/// section are passed over token by token, so their size costs no memory.
///
/// Each parse function is called with the reader on the start tag it handles and returns a new object that
/// the caller deletes, or null when the document ends before the element's end tag (the partial object is
/// then deleted with everything below it). Unlisted children are passed over without being skipped, so
/// their descendants are met as children of the element itself.
class KIVCORE_EXPORT ESIXmlParser
{
public:
    ESIXmlParser() = delete;

    /// `file` must be open for reading. Null when the file holds no "EtherCATInfo" element; a later
    /// "EtherCATInfo" element replaces (and frees) the result of an earlier one.
    static XmlEtherCATInfo* parseInfo(QFile* file);

    static XmlEtherCATInfo* parseEtherCATInfo(QXmlStreamReader* reader);
    static ESIXmlVendor* parseVendor(QXmlStreamReader* reader);
    static ESIXmlDescriptions* parseDescriptions(QXmlStreamReader* reader);
    static ESIXmlGroup* parseGroup(QXmlStreamReader* reader);
    static ESIXmlDevice* parseDevice(QXmlStreamReader* reader);
    static ESIXmlProfile* parseProfile(QXmlStreamReader* reader);
    static ESIXmlDictionary* parseDictionary(QXmlStreamReader* reader);
    /// The caller deletes the list and its members.
    static QList<ESIXmlDictionaryDataType*>* parseDictionaryDataTypes(QXmlStreamReader* reader);
    static ESIXmlDictionaryDataType* parseDictionaryDataType(QXmlStreamReader* reader);
    static ESIXmlDictionaryDataTypeSubItem* parseDictionaryDataTypeSubItem(QXmlStreamReader* reader);
    /// The caller deletes the list and its members.
    static QList<ESIXmlDictionaryObject*>* parseDictionaryObjects(QXmlStreamReader* reader);
    static ESIXmlDictionaryObject* parseDictionaryObject(QXmlStreamReader* reader);
    static ESIXmlObjectInfo* parseObjectInfo(QXmlStreamReader* reader);
    static ESIXmlSubItem* parseObjectInfoSubItem(QXmlStreamReader* reader);

    /// Reads tokens up to and including the next end tag called `name`, or to the end of the document.
    /// Deliberately counts no nesting: an inner element of the same name ends the skip early, as the
    /// sections skipped this way never nest their own name in real files.
    static void skipUntilEndTag(QXmlStreamReader* reader, QString name);
};
