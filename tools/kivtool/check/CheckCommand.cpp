#include "CheckCommand.h"

#include "CheckReport.h"
#include "Checks.h"
#include "ProductGrammar.h"
#include "Reporter.h"
#include "SourceTree.h"

#include "../Arguments.h"
#include "../InputFile.h"
#include "../Output.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace {

/// The parser's reason for refusing a file, without the "kivtool: FILE:" lead of load messages.
QString reasonOf(const LoadError& error, const QString& path)
{
    QString reason = error.message;
    const QString lead = QStringLiteral("kivtool: ") + path + QLatin1Char(':');
    if (reason.startsWith(lead))
        reason = reason.mid(lead.size()).trimmed();
    return reason;
}

/// Checks one file into `findings`; 0, or 2 with a message on stderr when it cannot be read at all.
int checkFile(const QString& path, QList<Finding>* findings)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fail(2, QStringLiteral("kivtool: cannot open ") + path + QStringLiteral(": ") + file.errorString());
    SourceTree tree;
    tree.read(&file);
    Reporter reporter(tree, path, findings);
    const QString root = tree.root() >= 0 ? tree.node(tree.root()).name : QString();
    const bool esi = root == QLatin1String("EtherCATInfo");
    if (!root.isEmpty() && !esi && root != QLatin1String("product_module") && root != QLatin1String("product_ic"))
        return fail(2,
            QStringLiteral("kivtool: ") + path + QStringLiteral(": root element ") + quoted(root)
                + QStringLiteral(" is not one kivtool checks (product_module, product_ic, EtherCATInfo)"));

    LoadError error;
    const std::unique_ptr<InputFile> input = InputFile::load(path, &error);
    if (!input) {
        if (error.exitCode == 2)
            return fail(2, error.message);
        const QString reason = reasonOf(error, path);
        if (tree.hasError())
            reporter.reportAt("KIV004", tree.errorLine(), tree.errorColumn(),
                QStringLiteral("malformed XML: ")
                    + tree.errorString().remove(QRegularExpression(QStringLiteral("\\.$")))
                    + QStringLiteral("; the parser stops here and yields no model: correct the XML"));
        else
            reporter.report("KIV004", -1, reason);
        return 0;
    }
    if (esi) {
        checkTexts(reporter, true);
        checkEsi(reporter);
        return 0;
    }
    const ProductGrammar grammar(tree, reporter);
    checkTexts(reporter, false);
    checkIc(input->ic(), grammar, reporter);
    checkModule(input->module(), grammar, reporter);
    return 0;
}

} // namespace

int runCheck(const Arguments& arguments)
{
    QSet<QString> disabled;
    for (const QString& list : arguments.values.value(QStringLiteral("disable"))) {
        for (const QString& part : list.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
            const CheckRule* rule = findCheckRule(part.trimmed());
            if (!rule)
                return fail(2,
                    QStringLiteral("kivtool: --disable: no check ") + quoted(part.trimmed())
                        + QStringLiteral("\nTry 'kivtool help check'."));
            disabled.insert(QLatin1String(rule->id));
        }
    }
    if (arguments.isSet(QStringLiteral("json")) && arguments.isSet(QStringLiteral("sarif")))
        return fail(2, QStringLiteral("kivtool: --json and --sarif exclude each other\nTry 'kivtool help check'."));

    int status = 0;
    QList<Finding> findings;
    for (const QString& path : arguments.operands) {
        QList<Finding> found;
        status = qMax(status, checkFile(path, &found));
        std::stable_sort(found.begin(), found.end(), [](const Finding& a, const Finding& b) {
            return a.line != b.line ? a.line < b.line : a.column < b.column;
        });
        for (const Finding& finding : qAsConst(found)) {
            if (!disabled.contains(finding.id))
                findings.append(finding);
        }
    }
    QString report;
    if (arguments.isSet(QStringLiteral("sarif")))
        report = findingsSarif(findings, QStringLiteral(KIVTOOL_VERSION));
    else if (arguments.isSet(QStringLiteral("json")))
        report = findingsJson(findings);
    else
        report = findingsText(findings);
    if (!report.isEmpty()) {
        if (const int written = writeStandardOutput(report))
            return written;
    }
    if (status)
        return status;
    const bool anyError = std::any_of(
        findings.cbegin(), findings.cend(), [](const Finding& f) { return f.severity == Severity::Error; });
    return anyError ? 1 : 0;
}
