#pragma once

#include "kivcore_export.h"

#include <QFileInfo>
#include <QObject>
#include <QString>
#include <QStringList>

/// Opens a PDF manual at a named destination in an external viewer; the object instance() creates lives until
/// the process ends. The viewer is chosen once, at construction, from the program the desktop associates with
/// PDF documents; the command-line conventions of the known viewers are built in. A singleton registered as
/// "___ExternPDF___".
class KIVCORE_EXPORT ExternPDF : public QObject
{
    Q_OBJECT

public:
    /// The program and arguments that show a document in the chosen viewer.
    struct Command
    {
        QString program;
        QStringList arguments;
    };

    /// `name` becomes the object name; asks the system for the PDF viewer.
    ExternPDF(const QString& name, const QString& pdfFile);

    /// The registered launcher, created for `pdfFile` on first use; later documents are ignored.
    static ExternPDF* instance(const QString& pdfFile);

    /// Starts the viewer on the document's directory + `file` at `destination`; nothing when the file is
    /// missing. The process object is owned by the launcher.
    void view(const QString& destination, const QString& file);
    void view(const QString& destination);

    /// The program and arguments view() starts, without starting anything.
    Command commandFor(const QString& destination, const QString& file) const;
    QString program() const { return m_program; }

private:
    QFileInfo m_document;
    QString m_program;
    bool m_destinationAfterFile = false;
    QStringList m_fixedArguments;
    QString m_destinationTemplate;
    bool m_withoutDestination = false;
};
