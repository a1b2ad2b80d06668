#include "SourceTree.h"

#include <QIODevice>
#include <QXmlStreamReader>

void SourceTree::read(QIODevice* device)
{
    QXmlStreamReader reader(device);
    QVector<int> open;
    int pendingText = -1; // an element whose next token is its text
    // Where the previous token ended; after character data the reader has already taken the next "<".
    qint64 line = 1;
    qint64 column = 0;
    bool tookNextChar = false;
    bool afterStart = false;
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (pendingText >= 0 && token == QXmlStreamReader::Characters)
            m_nodes[pendingText].text = reader.text().toString();
        pendingText = -1;
        if (token == QXmlStreamReader::StartElement) {
            SourceNode node;
            node.name = reader.name().toString();
            node.line = int(line);
            node.column = int(tookNextChar ? column : column + 1);
            node.attributes = reader.attributes();
            node.parent = open.isEmpty() ? -1 : open.last();
            node.immediate = afterStart;
            const int index = m_nodes.size();
            if (node.parent >= 0)
                m_nodes[node.parent].children.append(index);
            // A second root cannot happen in well-formed XML; the reader reports it as an error.
            m_nodes.append(node);
            open.append(index);
            pendingText = index;
        } else if (token == QXmlStreamReader::EndElement && !open.isEmpty()) {
            open.removeLast();
        }
        afterStart = token == QXmlStreamReader::StartElement;
        line = reader.lineNumber();
        column = reader.columnNumber();
        tookNextChar = token == QXmlStreamReader::Characters && !reader.isCDATA();
    }
    if (reader.hasError()) {
        m_error = reader.errorString();
        m_errorLine = int(reader.lineNumber());
        m_errorColumn = int(reader.columnNumber());
    }
}

QString SourceTree::path(int index) const
{
    QStringList parts;
    for (int at = index; at >= 0; at = m_nodes.at(at).parent) {
        const SourceNode& node = m_nodes.at(at);
        QString part = node.name;
        if (node.parent >= 0) {
            int position = 0;
            int count = 0;
            for (int sibling : m_nodes.at(node.parent).children) {
                if (m_nodes.at(sibling).name == node.name) {
                    ++count;
                    if (sibling == at)
                        position = count;
                }
            }
            if (count > 1)
                part += QLatin1Char('[') + QString::number(position) + QLatin1Char(']');
        }
        parts.prepend(part);
    }
    return QLatin1Char('/') + parts.join(QLatin1Char('/'));
}
