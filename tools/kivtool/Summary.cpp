#include "Summary.h"

#include "InputFile.h"

#include "esi/ESIXmlDescriptions.h"
#include "esi/ESIXmlDevice.h"
#include "esi/ESIXmlDictionary.h"
#include "esi/ESIXmlProfile.h"
#include "esi/ESIXmlVendor.h"
#include "esi/XmlEtherCATInfo.h"
#include "ic/XmlDatabase.h"
#include "ic/XmlGroup.h"
#include "ic/XmlPinGroup.h"
#include "ic/XmlPins.h"
#include "ic/XmlProductIC.h"
#include "ic/XmlRegisterSet.h"
#include "ic/XmlRegisterVariant.h"
#include "ic/XmlValueRegister.h"
#include "product/XmlAnalogInputs.h"
#include "product/XmlAxisParameters.h"
#include "product/XmlCoordinates.h"
#include "product/XmlDigitalInputs.h"
#include "product/XmlDigitalOutputs.h"
#include "product/XmlGlobalParameters.h"
#include "product/XmlIrqs.h"
#include "product/XmlProductModule.h"

#include <QStringList>

namespace {

QString line(const char* label, const QString& value)
{
    return QString(QLatin1String(label) + QLatin1Char(':')).leftJustified(22) + QLatin1Char(' ') + value;
}

QString line(const char* label, qsizetype count)
{
    return line(label, QString::number(count));
}

QString hex8(unsigned int value)
{
    return QString::number(value, 16).rightJustified(8, QLatin1Char('0'));
}

/// Item count of a container that may be missing.
template<typename Container, typename List> qsizetype countOf(Container* container, List* (Container::*items)())
{
    return container ? (container->*items)()->size() : 0;
}

void summariseModule(XmlProductModule* module, QStringList& lines)
{
    lines << line("Name", module->getName()) << line("Version", module->getVersion())
          << line("Firmware", module->getNameOfFirmwareType());
    for (XmlAxisParameters* block : qAsConst(*module->getAxisParameters())) {
        if (block)
            lines << line("Axis parameters",
                QString::number(block->getAxisParameter()->size()) + QStringLiteral(" (axis ")
                    + QString::number(block->getAxis()) + QLatin1Char(')'));
    }
    for (XmlGlobalParameters* bank : qAsConst(*module->getGlobalParameters())) {
        if (bank)
            lines << line("Global parameters",
                QString::number(bank->getGlobalParameter()->size()) + QStringLiteral(" (bank ")
                    + QString::number(bank->getBank()) + QLatin1Char(')'));
    }
    lines << line("Digital inputs", countOf(module->getDigitalInputs(), &XmlDigitalInputs::getDigitalInputs))
          << line("Analog inputs", countOf(module->getAnalogInputs(), &XmlAnalogInputs::getAnalogInputs))
          << line("Digital outputs", countOf(module->getDigitalOutputs(), &XmlDigitalOutputs::getDigitalOutputs))
          << line("Interrupts", countOf(module->getIrqs(), &XmlIrqs::getIrqs))
          << line("Coordinates", countOf(module->getCoordinates(), &XmlCoordinates::getCoordinates))
          << line("CANopen objects", module->getCANopenObjects()->size())
          << line("Drive configurations", module->driveConfigurations()->size())
          << line("Pin map", module->getPinMap() ? QStringLiteral("yes") : QStringLiteral("no"))
          << line("Database", module->getDatabase() ? QStringLiteral("yes") : QStringLiteral("no"));
}

void summariseIC(XmlProductIC* ic, QStringList& lines)
{
    lines << line("Name", ic->name()) << line("Version", ic->version()) << line("Author", ic->author())
          << line("Date", ic->date());
    qsizetype registers = 0;
    qsizetype variants = 0;
    qsizetype fields = 0;
    qsizetype groups = 0;
    if (XmlRegisterSet* set = ic->registerSet()) {
        groups = set->getGroups()->size();
        for (XmlValueRegister* reg : qAsConst(*set->getRegisters())) {
            if (!reg)
                continue;
            ++registers;
            for (XmlRegisterVariant* variant : qAsConst(*reg->getRegisterVariants())) {
                if (!variant)
                    continue;
                ++variants;
                fields += variant->getRegisterFields()->size();
            }
        }
    }
    qsizetype pins = 0;
    qsizetype pinGroups = 0;
    QString packaging;
    if (XmlPins* icPins = ic->pins()) {
        packaging = icPins->getPackaging();
        for (XmlPinGroup* group : qAsConst(*icPins->getPinGroups())) {
            if (!group)
                continue;
            ++pinGroups;
            pins += group->getPins()->size();
        }
    }
    lines << line("Registers", registers) << line("Register groups", groups) << line("Variants", variants)
          << line("Fields", fields)
          << line("Pins",
                 packaging.isEmpty() ? QString::number(pins)
                                     : QString::number(pins) + QStringLiteral(" (") + packaging + QLatin1Char(')'))
          << line("Pin groups", pinGroups);
    if (XmlDatabase* database = ic->database())
        lines << line("Database",
            QStringLiteral("R_Sense %1, V_SRTL %2, V_SRTH %3, offset %4")
                .arg(QString::number(database->getRSense()), QString::number(database->getVSRTL()),
                    QString::number(database->getVSRTH()), QString::number(database->getOffset() ? 1 : 0)));
    else
        lines << line("Database", QStringLiteral("no"));
}

void summariseESI(XmlEtherCATInfo* info, QStringList& lines)
{
    if (ESIXmlVendor* vendor = info->getVendor())
        lines << line(
            "Vendor", vendor->getName() + QStringLiteral(" (id ") + QString::number(vendor->id()) + QLatin1Char(')'));
    else
        lines << line("Vendor", QStringLiteral("none"));
    QStringList deviceLines;
    for (ESIXmlDescriptions* descriptions : info->getDescriptions()) {
        if (!descriptions)
            continue;
        for (ESIXmlDevice* device : descriptions->getDevices()) {
            if (!device)
                continue;
            qsizetype objects = 0;
            for (ESIXmlProfile* profile : device->getProfiles()) {
                if (profile && profile->getDictionary())
                    objects += profile->getDictionary()->getObjects().size();
            }
            deviceLines << QStringLiteral("  %1  product code 0x%2  revision 0x%3  objects %4")
                               .arg(device->getName(), hex8(device->getProductCode()), hex8(device->getRevisionNo()),
                                   QString::number(objects));
        }
    }
    lines << line("Devices", deviceLines.size());
    lines += deviceLines;
}

} // namespace

QString summaryText(const InputFile& input)
{
    QStringList lines;
    lines << line("File", input.path()) << line("Kind", input.kindName());
    if (XmlProductModule* module = input.module())
        summariseModule(module, lines);
    else if (XmlProductIC* ic = input.ic())
        summariseIC(ic, lines);
    else if (XmlEtherCATInfo* info = input.esi())
        summariseESI(info, lines);
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}
