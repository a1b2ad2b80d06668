#include "RenderAll.h"

#include "esi/XmlEtherCATInfo.h"
#include "ic/IcJson.h"
#include "ic/XmlDatabase.h"
#include "ic/XmlGroup.h"
#include "ic/XmlPinMap.h"
#include "ic/XmlPins.h"
#include "ic/XmlProductIC.h"
#include "ic/XmlRegisterSet.h"
#include "product/ModuleJson.h"
#include "product/XmlCANopenObject.h"
#include "product/XmlDriveConfiguration.h"
#include "product/XmlProductModule.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace {

qint64 renderModule(XmlProductModule* module)
{
    qint64 total = module->toString().size() + module->toHtml().size() + module->toLaTeXHeader().size()
        + module->toLaTeXAxisParam().size() + QJsonDocument(ModuleJson::toJson(module)).toJson().size();
    for (int index = -1; index <= module->getGlobalParameters()->size(); ++index)
        total += module->toLaTeXGlobalParamBank(index).size();
    for (int kind = -1; kind <= 4; ++kind)
        total += module->toLaTeXIOs(kind).size();
    for (const XmlCANopenObject* object : qAsConst(*module->getCANopenObjects())) {
        if (object)
            total += object->toLatex().size() + object->toString(QString()).size();
    }
    for (const XmlDriveConfiguration* configuration : qAsConst(*module->driveConfigurations())) {
        if (configuration)
            total += configuration->toString().size();
    }
    if (const XmlPinMap* pinMap = module->getPinMap())
        total += pinMap->toString(QString()).size() + pinMap->toHtml().size();
    if (const XmlDatabase* database = module->getDatabase())
        total += database->toString().size();
    return total;
}

qint64 renderIC(XmlProductIC* ic)
{
    qint64 total = ic->toString().size() + ic->toHtml().size() + ic->toLaTeXHeader().size()
        + ic->toLaTeXRegisterMap().size() + ic->toLaTeXRegisterMapDefaults().size()
        + ic->toLaTeXRegisterOverview().size() + ic->toLaTeXRegisterOverviewByGroup(nullptr).size()
        + QJsonDocument(IcJson::toJson(ic)).toJson().size();
    if (XmlRegisterSet* set = ic->registerSet()) {
        for (XmlGroup* group : qAsConst(*set->getGroups()))
            total += ic->toLaTeXRegisterOverviewByGroup(group).size();
    }
    if (const XmlPins* pins = ic->pins())
        total += pins->toHtml().size();
    return total;
}

} // namespace

namespace RenderAll {

qint64 product(XmlProductInterface* product)
{
    if (auto* module = qobject_cast<XmlProductModule*>(product))
        return renderModule(module);
    if (auto* ic = qobject_cast<XmlProductIC*>(product))
        return renderIC(ic);
    return 0;
}

qint64 esi(XmlEtherCATInfo* info)
{
    QJsonObject json;
    info->toJson(json);
    return info->toString().size() + QJsonDocument(json).toJson().size();
}

} // namespace RenderAll
