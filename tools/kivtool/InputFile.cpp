#include "InputFile.h"

#include "NumberAudit.h"
#include "Output.h"

#include "esi/ESIXmlParser.h"
#include "esi/XmlEtherCATInfo.h"
#include "ic/XmlPinMap.h"
#include "ic/XmlProductIC.h"
#include "ic/XmlRegisterSet.h"
#include "ic/XmlValueRegister.h"
#include "product/KIVXmlParser.h"
#include "product/XmlProductModule.h"

#include <QFile>
#include <QTemporaryFile>
#include <QXmlStreamReader>

#include <algorithm>
#include <iterator>

namespace {

const char* const kAcceptedRoots = "product_module, product_ic, EtherCATInfo";

LoadError failure(int exitCode, const QString& message)
{
    return LoadError {exitCode, message};
}

/// Line and column (1-based) of byte `offset` of valid UTF-8, the column counted in characters.
QString positionOfByte(const QByteArray& bytes, int offset)
{
    const char* const data = bytes.constData();
    const char* const lineStart
        = std::find(std::reverse_iterator<const char*>(data + offset), std::reverse_iterator<const char*>(data), '\n')
              .base();
    const int line = int(std::count(data, lineStart, '\n')) + 1;
    // The bytes before `offset` are valid UTF-8: every byte but a continuation byte starts a character.
    const int column = int(std::count_if(lineStart, data + offset, [](char c) { return (c & 0xC0) != 0x80; })) + 1;
    return QString::number(line) + QLatin1Char(':') + QString::number(column);
}

/// Offset of the first byte that breaks UTF-8, or -1. Overlong forms, surrogates and code points above
/// U+10FFFF break it too, as the reader's decoder sees it.
int firstBadUtf8Byte(const QByteArray& bytes)
{
    const auto* data = reinterpret_cast<const unsigned char*>(bytes.constData());
    const int size = bytes.size();
    for (int i = 0; i < size;) {
        const unsigned char lead = data[i];
        int length = 1;
        unsigned char low = 0x80; // range of the second byte
        unsigned char high = 0xBF;
        if (lead >= 0xC2 && lead <= 0xDF) {
            length = 2;
        } else if (lead >= 0xE0 && lead <= 0xEF) {
            length = 3;
            low = lead == 0xE0 ? 0xA0 : 0x80;
            high = lead == 0xED ? 0x9F : 0xBF;
        } else if (lead >= 0xF0 && lead <= 0xF4) {
            length = 4;
            low = lead == 0xF0 ? 0x90 : 0x80;
            high = lead == 0xF4 ? 0x8F : 0xBF;
        } else if (lead >= 0x80) {
            return i;
        }
        if (i + length > size || (length > 1 && (data[i + 1] < low || data[i + 1] > high)))
            return i;
        for (int k = 2; k < length; ++k) {
            if ((data[i + k] & 0xC0) != 0x80)
                return i;
        }
        i += length;
    }
    return -1;
}

/// True unless a byte order mark or the XML declaration names another encoding than UTF-8.
bool isUtf8(const QByteArray& bytes)
{
    if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF"))
        return false;
    const int start = bytes.startsWith("\xEF\xBB\xBF") ? 3 : 0;
    if (bytes.mid(start, 5) != "<?xml")
        return true;
    const QByteArray declaration = bytes.mid(start, bytes.indexOf("?>", start) - start);
    const int key = declaration.indexOf("encoding");
    if (key < 0)
        return true;
    const QByteArray rest = declaration.mid(key + 8).trimmed();
    if (!rest.startsWith('='))
        return true;
    const QByteArray value = rest.mid(1).trimmed();
    if (value.isEmpty())
        return true;
    const int close = value.indexOf(value.left(1), 1);
    const QByteArray name = value.mid(1, close - 1).toLower();
    return close < 0 || name == "utf-8" || name == "utf8";
}

/// The reader stops on a badly encoded byte some way after it (it decodes in blocks); for UTF-8 files
/// the byte itself is found here, so that the message points at it.
QString errorPosition(QFile* file, const QXmlStreamReader& reader)
{
    const QString readerPosition
        = QString::number(reader.lineNumber()) + QLatin1Char(':') + QString::number(reader.columnNumber());
    if (!reader.errorString().contains(QLatin1String("encoded")) || !file->seek(0))
        return readerPosition;
    const QByteArray bytes = file->readAll();
    const int bad = isUtf8(bytes) ? firstBadUtf8Byte(bytes) : -1;
    return bad < 0 ? readerPosition : positionOfByte(bytes, bad);
}

QString xmlErrorMessage(const QString& name, QFile* file, const QXmlStreamReader& reader)
{
    return QStringLiteral("kivtool: ") + name + QLatin1Char(':') + errorPosition(file, reader)
        + QStringLiteral(": malformed XML: ") + reader.errorString();
}

/// The name of the first element, or an empty text with `error` set when the XML breaks before it.
QString rootElementName(QFile* file, const QString& name, LoadError* error)
{
    QXmlStreamReader reader(file);
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement)
            return reader.name().toString();
    }
    *error = reader.hasError()
        ? failure(1, xmlErrorMessage(name, file, reader))
        : failure(1, QStringLiteral("kivtool: ") + name + QStringLiteral(": the file holds no XML element"));
    return QString();
}

/// Explains a null parse result: the first place where the XML breaks, or what the parser stops at.
LoadError explainNullResult(QFile* file, const QString& name)
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
        return failure(1, xmlErrorMessage(name, file, reader));
    if (markupBeforeRoot)
        return failure(1,
            QStringLiteral("kivtool: ") + name
                + QStringLiteral(": a comment, DOCTYPE or processing instruction stands before the root "
                                 "element; the parser stops there. Remove it and try again."));
    return failure(1, QStringLiteral("kivtool: ") + name + QStringLiteral(": no model could be built from this file"));
}

/// Opens `path` ("-": standard input). Pipes, FIFOs and terminals cannot be read twice, and the kind is
/// told from the root element before the parser reads the file: their bytes are read once into a
/// temporary file.
std::unique_ptr<QFile> openInput(const QString& path, LoadError* error)
{
    std::unique_ptr<QFile> file(new QFile);
    const bool opened = path == QLatin1String("-") ? file->open(stdin, QIODevice::ReadOnly)
                                                   : (file->setFileName(path), file->open(QIODevice::ReadOnly));
    if (!opened) {
        *error
            = failure(2, QStringLiteral("kivtool: cannot open ") + path + QStringLiteral(": ") + file->errorString());
        return nullptr;
    }
    if (!file->isSequential())
        return file;
    const QByteArray bytes = file->readAll();
    std::unique_ptr<QTemporaryFile> copy(new QTemporaryFile);
    if (file->error() != QFileDevice::NoError || !copy->open() || copy->write(bytes) != bytes.size() || !copy->flush()
        || !copy->seek(0)) {
        *error = failure(2,
            QStringLiteral("kivtool: cannot read ") + path + QStringLiteral(": ")
                + (file->error() != QFileDevice::NoError ? file->errorString() : copy->errorString()));
        return nullptr;
    }
    return copy;
}

/// Register values are 64 bits: a file that claims a wider register is shown narrower than it says, so say
/// so once (the first such register), through the same channel as every other message.
void warnOfWideRegister(const QString& path, XmlProductIC* ic)
{
    if (!ic->registerSet())
        return;
    for (const XmlValueRegister* reg : qAsConst(*ic->registerSet()->getRegisters())) {
        if (reg && reg->getSize() > 64) {
            fail(0,
                QStringLiteral("kivtool: ") + path + QStringLiteral(": register ") + reg->name()
                    + QStringLiteral(" is ") + QString::number(reg->getSize())
                    + QStringLiteral(" bits wide; values are shown as 64 bits"));
            return;
        }
    }
}

} // namespace

InputFile::~InputFile() = default;

std::unique_ptr<InputFile> InputFile::load(const QString& path, LoadError* error, QStringList* audit)
{
    const std::unique_ptr<QFile> file = openInput(path, error);
    if (!file)
        return nullptr;
    const QString name = path == QLatin1String("-") ? QStringLiteral("<stdin>") : path;
    const QString root = rootElementName(file.get(), name, error);
    if (root.isEmpty())
        return nullptr;

    std::unique_ptr<InputFile> input(new InputFile);
    input->m_path = name;
    file->seek(0);
    if (root == QLatin1String("product_module") || root == QLatin1String("product_ic")) {
        input->m_product.reset(KIVXmlParser::parseProduct(file.get()));
        if (input->m_product)
            input->m_kind = input->m_product->type() == 0 ? FileKind::IC : FileKind::Module;
    } else if (root == QLatin1String("EtherCATInfo")) {
        input->m_kind = FileKind::ESI;
        input->m_esi.reset(ESIXmlParser::parseInfo(file.get()));
    } else {
        *error = failure(1,
            QStringLiteral("kivtool: ") + name + QStringLiteral(": root element \"") + root
                + QStringLiteral("\" is not one kivtool reads (accepted: ") + QLatin1String(kAcceptedRoots)
                + QLatin1Char(')'));
        return nullptr;
    }
    if (!input->m_product && !input->m_esi) {
        *error = explainNullResult(file.get(), name);
        return nullptr;
    }
    if (audit && file->seek(0))
        *audit = NumberAudit::findings(file.get(), name, input->m_kind == FileKind::ESI);
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
