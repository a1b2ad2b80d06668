#pragma once

#include "product/KIVXmlParser.h"

#include <QString>
#include <QStringList>

#include <memory>

class XmlEtherCATInfo;
class XmlProductIC;
class XmlProductInterface;
class XmlProductModule;

/// The three kinds of file kivtool understands, told apart by their root element.
enum class FileKind
{
    Module,
    IC,
    ESI
};

/// Why a file could not be loaded: the exit status and the message for stderr.
struct LoadError
{
    int exitCode = 0;
    QString message;
};

/// A product description or ESI file, parsed. Owns the model, including the pin map a module leaves to
/// its keeper.
class InputFile
{
public:
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    /// Null with `error` filled when the file cannot be opened (exit 2), is not well-formed XML, has a root
    /// kivtool does not know or yields no model (exit 1). With `audit`, a file that loads is read once more
    /// and what the parser took in silence is listed there (NumberAudit).
    static std::unique_ptr<InputFile> load(const QString& path, LoadError* error, QStringList* audit = nullptr);

    FileKind kind() const { return m_kind; }
    QString path() const { return m_path; }
    /// Null unless the file is of that kind.
    XmlProductModule* module() const;
    XmlProductIC* ic() const;
    XmlEtherCATInfo* esi() const { return m_esi.get(); }

    /// "module", "IC" or "ESI".
    QString kindName() const;
    /// The model's debug text.
    QString debugText() const;

private:
    InputFile() = default;

    FileKind m_kind = FileKind::Module;
    QString m_path;
    KIVXmlParser::ProductPtr m_product; ///< released with the module's pin map
    std::unique_ptr<XmlEtherCATInfo> m_esi;
};
