#include "ReferencePage.h"

#include "InputFile.h"
#include "JsonOutput.h"

#include "esi/XmlEtherCATInfo.h"
#include "ic/XmlProductIC.h"
#include "product/XmlProductModule.h"

#include <QCryptographicHash>
#include <QFile>
#include <QJsonDocument>

namespace {

QString resourceText(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(file.readAll());
}

/// The model for a <script type="application/json"> element: "<" only ever stands inside JSON strings,
/// where \u003c reads back the same, and without it no text can close the element.
QString modelText(const InputFile& input)
{
    const QByteArray json = QJsonDocument(jsonObject(input)).toJson(QJsonDocument::Compact);
    QString text = QString::fromUtf8(json);
    return text.replace(QLatin1Char('<'), QLatin1String("\\u003c"));
}

QString titleOf(const InputFile& input)
{
    switch (input.kind()) {
    case FileKind::Module:
        return input.module()->getName().toHtmlEscaped();
    case FileKind::IC:
        return input.ic()->name().toHtmlEscaped();
    case FileKind::ESI:
        break;
    }
    return QStringLiteral("ESI reference");
}

} // namespace

QString referencePageScript()
{
    // One closure keeps the page's names off the window; kivDecode is exported on purpose.
    return QLatin1String("(() => {\n'use strict';\n") + resourceText(QStringLiteral(":/page/decode.js"))
        + resourceText(QStringLiteral(":/page/page.js")) + QLatin1String("})();\n");
}

QString referencePage(const InputFile& input)
{
    const QString pageTemplate = resourceText(QStringLiteral(":/page/page.html"));
    const QString script = referencePageScript();
    const QString hash = QLatin1String("sha256-")
        + QString::fromLatin1(QCryptographicHash::hash(script.toUtf8(), QCryptographicHash::Sha256).toBase64());
    const QString model = modelText(input);
    const QString style = resourceText(QStringLiteral(":/page/page.css"));
    const QString title = titleOf(input);
    const QString kind = input.kindName().toLower();

    // One pass over the template: what is put in is never searched again for markers.
    QString page;
    page.reserve(pageTemplate.size() + script.size() + model.size() + style.size() + 256);
    int at = 0;
    while (true) {
        const int open = pageTemplate.indexOf(QLatin1String("{{"), at);
        const int close = open < 0 ? -1 : pageTemplate.indexOf(QLatin1String("}}"), open);
        if (close < 0) {
            page += QStringView(pageTemplate).mid(at);
            break;
        }
        page += QStringView(pageTemplate).mid(at, open - at);
        const QStringView marker = QStringView(pageTemplate).mid(open + 2, close - open - 2);
        if (marker == QLatin1String("SCRIPT"))
            page += script;
        else if (marker == QLatin1String("SCRIPT_HASH"))
            page += hash;
        else if (marker == QLatin1String("MODEL"))
            page += model;
        else if (marker == QLatin1String("STYLE"))
            page += style;
        else if (marker == QLatin1String("TITLE"))
            page += title;
        else if (marker == QLatin1String("KIND"))
            page += kind;
        at = close + 2;
    }
    return page;
}
