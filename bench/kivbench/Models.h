#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class XmlEtherCATInfo;
class XmlProductInterface;

/// What a benchmark input is, told by its root element.
enum class InputKind
{
    Module,
    IC,
    ESI,
    Unknown
};

InputKind inputKind(const QString& path);
QString kindName(InputKind kind);

/// One parsed file, kept for the renderer benchmarks. Owns the model.
struct Model
{
    ~Model();
    XmlProductInterface* product = nullptr;
    XmlEtherCATInfo* esi = nullptr;
};

/// Parses the file with the parser its kind asks for; the caller owns the result.
Model* parseFile(const QString& path, InputKind kind);

/// Reads every token and the attributes of every start element: what any parser of these files must at
/// least do. Returns the number of tokens.
long long readAllTokens(const QString& path);

/// The renderers of a kind, by name; each returns the length of its text.
struct Renderer
{
    QString name;
    std::function<long long(Model*)> render;
};
QList<Renderer> renderersFor(InputKind kind);

/// Resident memory of this process in bytes.
long long residentBytes();
