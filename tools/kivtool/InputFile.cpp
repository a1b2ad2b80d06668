#include "InputFile.h"

#include "esi/ESIXmlParser.h"
#include "esi/XmlEtherCATInfo.h"
#include "ic/XmlPinMap.h"
#include "ic/XmlProductIC.h"
#include "ic/XmlRegisterSet.h"
#include "ic/XmlValueRegister.h"
#include "product/KIVXmlParser.h"
#include "product/XmlProductModule.h"

#include <QFile>
#include <QXmlStreamReader>

#include <cstdio>

namespace {

const char* const kAcceptedRoots = "product_module, product_ic, EtherCATInfo";

LoadError failure(int exitCode, const QString& message)
{
    return LoadError {exitCode, message};
}

QString xmlErrorMessage(const QString& path, const QXmlStreamReader& reader)
{
    return QStringLiteral("kivtool: %1:%2:%3: malformed XML: %4")
        .arg(path)
        .arg(reader.lineNumber())
        .arg(reader.columnNumber())
        .arg(reader.errorString());
}

/// The name of the first element, or an empty text with `error` set when the XML breaks before it.
QString rootElementName(QFile* file, const QString& path, LoadError* error)
{
    QXmlStreamReader reader(file);
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement)
            return reader.name().toString();
    }
    *error = reader.hasError() ? failure(1, xmlErrorMessage(path, reader))
                               : failure(1, QStringLiteral("kivtool: %1: the file holds no XML element").arg(path));
    return QString();
}

/// Explains a null parse result: the first place where the XML breaks, or what the parser stops at.
LoadError explainNullResult(QFile* file, const QString& path)
{
    file->seek(0);
    QXmlStreamReader reader(file);
    bool markupBeforeRoot = false;
    bool rootSeen = false;
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::StartElement)
            rootSeen = true;
        else if (!rootSeen
            && (token == QXmlStreamReader::Comment || token == QXmlStreamReader::DTD
                || token == QXmlStreamReader::ProcessingInstruction))
            markupBeforeRoot = true;
    }
    if (reader.hasError())
        return failure(1, xmlErrorMessage(path, reader));
    if (markupBeforeRoot)
        return failure(1,
            QStringLiteral("kivtool: %1: a comment, DOCTYPE or processing instruction stands before the root "
                           "element; the parser stops there. Remove it and try again.")
                .arg(path));
    return failure(1, QStringLiteral("kivtool: %1: no model could be built from this file").arg(path));
}

/// Register values are 64 bits: a file that claims a wider register is shown narrower than it says,
/// so say so once (the first such register; control characters of its name are not sent to the terminal).
void warnOfWideRegister(const QString& path, XmlProductIC* ic)
{
    if (!ic->registerSet())
        return;
    for (const XmlValueRegister* reg : qAsConst(*ic->registerSet()->getRegisters())) {
        if (reg && reg->getSize() > 64) {
            QString name = reg->name();
            for (QChar& c : name) {
                if (c.category() == QChar::Other_Control)
                    c = QLatin1Char('?');
            }
            std::fprintf(stderr, "%s\n",
                QStringLiteral("kivtool: %1: register %2 is %3 bits wide; values are shown as 64 bits")
                    .arg(path, name, QString::number(reg->getSize()))
                    .toLocal8Bit()
                    .constData());
            return;
        }
    }
}

} // namespace

InputFile::~InputFile()
{
    // A module leaves its pin map to whoever keeps it.
    if (XmlProductModule* parsed = module())
        delete parsed->getPinMap();
}

std::unique_ptr<InputFile> InputFile::load(const QString& path, LoadError* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = failure(2, QStringLiteral("kivtool: cannot open %1: %2").arg(path, file.errorString()));
        return nullptr;
    }
    const QString root = rootElementName(&file, path, error);
    if (root.isEmpty())
        return nullptr;

    std::unique_ptr<InputFile> input(new InputFile);
    input->m_path = path;
    file.seek(0);
    if (root == QLatin1String("product_module") || root == QLatin1String("product_ic")) {
        input->m_product.reset(KIVXmlParser::parseProduct(&file));
        if (input->m_product)
            input->m_kind = input->m_product->type() == 0 ? FileKind::IC : FileKind::Module;
    } else if (root == QLatin1String("EtherCATInfo")) {
        input->m_kind = FileKind::ESI;
        input->m_esi.reset(ESIXmlParser::parseInfo(&file));
    } else {
        *error = failure(1,
            QStringLiteral("kivtool: %1: root element \"%2\" is not one kivtool reads (accepted: %3)")
                .arg(path, root, QLatin1String(kAcceptedRoots)));
        return nullptr;
    }
    if (!input->m_product && !input->m_esi) {
        *error = explainNullResult(&file, path);
        return nullptr;
    }
    if (XmlProductIC* parsed = input->ic())
        warnOfWideRegister(path, parsed);
    return input;
}

XmlProductModule* InputFile::module() const
{
    return qobject_cast<XmlProductModule*>(m_product.get());
}

XmlProductIC* InputFile::ic() const
{
    return qobject_cast<XmlProductIC*>(m_product.get());
}

QString InputFile::kindName() const
{
    switch (m_kind) {
    case FileKind::Module:
        return QStringLiteral("module");
    case FileKind::IC:
        return QStringLiteral("IC");
    case FileKind::ESI:
        break;
    }
    return QStringLiteral("ESI");
}

QString InputFile::debugText() const
{
    if (XmlProductModule* parsed = module())
        return parsed->toString();
    if (XmlProductIC* parsed = ic())
        return parsed->toString();
    return m_esi ? m_esi->toString() : QString();
}
