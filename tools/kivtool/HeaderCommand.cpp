#include "HeaderCommand.h"

#include "Arguments.h"
#include "InputFile.h"
#include "Output.h"

#include "ic/IcCHeader.h"
#include "product/ModuleCHeader.h"

#include <QFileInfo>

int runHeader(const InputFile& input, const Arguments& arguments)
{
    const QString output = arguments.value(QStringLiteral("output"));
    const QString selfTest = arguments.value(QStringLiteral("selftest"));
    const QString lead = QStringLiteral("kivtool: ") + input.path() + QStringLiteral(": ");
    if (input.kind() == FileKind::ESI)
        return fail(1, lead + QStringLiteral("an ESI file has no C header; use 'kivtool json'"));
    if (arguments.isSet(QStringLiteral("selftest"))) {
        if (output.isEmpty() || selfTest.isEmpty())
            return fail(2,
                QStringLiteral("kivtool: --selftest needs -o <path> for the header and a path for the self-test\n"
                               "Try 'kivtool help header'."));
        if (input.kind() != FileKind::IC)
            return fail(2,
                QStringLiteral("kivtool: --selftest exercises register fields; a module has none\n"
                               "Try 'kivtool help header'."));
    }

    CHeaderOptions options;
    options.prefixGiven = arguments.isSet(QStringLiteral("prefix"));
    options.prefix = arguments.value(QStringLiteral("prefix"));
    options.generator = QStringLiteral("kivtool ") + QStringLiteral(KIVTOOL_VERSION);
    if (!selfTest.isEmpty())
        options.selfTestInclude = QFileInfo(output).fileName();
    const CHeaderResult result = input.kind() == FileKind::IC ? IcCHeader::generate(input.ic(), options)
                                                              : ModuleCHeader::generate(input.module(), options);
    for (const CHeaderDiagnostic& diagnostic : result.diagnostics)
        fail(0,
            lead
                + (diagnostic.severity == CHeaderDiagnostic::Error ? QStringLiteral("error: ")
                                                                   : QStringLiteral("warning: "))
                + diagnostic.text);
    if (result.hasErrors())
        return fail(1, lead + QStringLiteral("no header written"));
    if (const int status = writeOutput(result.header, output))
        return status;
    return selfTest.isEmpty() ? 0 : writeFile(selfTest, result.selfTest.toUtf8());
}
