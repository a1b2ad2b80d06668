#pragma once

#include "Finding.h"
#include "SourceTree.h"

/// Collects the findings of one file: each at the start tag of an element of its source tree.
class Reporter
{
public:
    Reporter(const SourceTree& tree, const QString& file, QList<Finding>* findings)
        : m_tree(tree)
        , m_file(file)
        , m_findings(findings)
    { }

    const SourceTree& tree() const { return m_tree; }
    /// `node` -1 places the finding at the start of the file.
    void report(const char* id, int node, const QString& message);
    /// At a position of its own (a reader error).
    void reportAt(const char* id, int line, int column, const QString& message);

private:
    const SourceTree& m_tree;
    QString m_file;
    QList<Finding>* m_findings;
};

/// `text` in double quotes, on one line and cut when long: file texts in messages.
QString shownText(const QString& text);
/// "0x" and upper-case hexadecimal digits.
QString hexText(quint64 value);
