#pragma once

#include <QString>
#include <QVector>
#include <QXmlStreamAttributes>

class QIODevice;

/// One element of a file as written: name, where its start tag begins, its attributes and the text the
/// parsers would read for it (the one token after the start tag, when that is character data).
struct SourceNode
{
    QString name;
    int line = 0;
    int column = 0; ///< of the "<", counted in characters from 1
    QXmlStreamAttributes attributes;
    QString text;
    int parent = -1;
    QVector<int> children;
    bool immediate = false; ///< its start tag is the very next token after its parent's start tag
};

/// The elements of a file with their positions, from one read-only pass of the XML reader. The model
/// keeps no positions, so checks find the element a model object came from here.
class SourceTree
{
public:
    /// Reads `device` from its current position to the end.
    void read(QIODevice* device);

    const QVector<SourceNode>& nodes() const { return m_nodes; }
    const SourceNode& node(int index) const { return m_nodes.at(index); }
    /// The root element's index, or -1.
    int root() const { return m_nodes.isEmpty() ? -1 : 0; }
    /// The element's path from the root, e.g. "/product_ic/register_set/value_register[3]" (the position
    /// among siblings of the same name, counted from 1, when there are several).
    QString path(int index) const;

    bool hasError() const { return !m_error.isEmpty(); }
    QString errorString() const { return m_error; }
    int errorLine() const { return m_errorLine; }
    int errorColumn() const { return m_errorColumn; }

private:
    QVector<SourceNode> m_nodes;
    QString m_error;
    int m_errorLine = 0;
    int m_errorColumn = 0;
};
