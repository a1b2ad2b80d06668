#pragma once

#include <QByteArray>
#include <QString>
#include <QXmlStreamReader>

#include <memory>

class XmlProductInterface;

namespace TestXml {

/// Runs KIVXmlParser::parseProduct over `xml` through a temporary file, as callers do with real files.
std::unique_ptr<XmlProductInterface> parseProduct(const QByteArray& xml);

/// A reader over `xml`, positioned on its first start element: the state an element parse function
/// expects. Keeps the bytes alive.
class Reader
{
public:
    explicit Reader(const QByteArray& xml);
    QXmlStreamReader* get() { return &m_reader; }
    operator QXmlStreamReader*() { return &m_reader; }

private:
    QByteArray m_bytes;
    QXmlStreamReader m_reader;
};

/// Empty when equal; otherwise says where the first differing line is, with both lines.
QString firstDifference(const QString& actual, const QString& expected);

/// Reads a file of tests/data or examples/ as bytes; empty when missing.
QByteArray readFile(const QString& path);
/// Writes `bytes` to `path`, making its folder first; false when any of it fails.
bool writeFile(const QString& path, const QByteArray& bytes);

} // namespace TestXml

/// Compares long texts and, on mismatch, reports the first differing line instead of two walls of text.
#define KIV_COMPARE_TEXT(actual, expected)                                                                             \
    do {                                                                                                               \
        const QString kivDiff_ = TestXml::firstDifference((actual), (expected));                                       \
        if (!kivDiff_.isEmpty())                                                                                       \
            QFAIL(qPrintable(kivDiff_));                                                                               \
    } while (false)
