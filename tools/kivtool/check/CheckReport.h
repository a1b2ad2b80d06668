#pragma once

#include "Finding.h"

// The three forms of kivtool check's findings.

/// "FILE:LINE:COLUMN: SEVERITY: MESSAGE [ID]" per finding, then a count; empty without findings.
QString findingsText(const QList<Finding>& findings);
/// {"findings": [{"id", "severity", "file", "line", "column", "message"}]}
QString findingsJson(const QList<Finding>& findings);
/// A SARIF 2.1.0 log with one run: the rules of every check and one result per finding.
QString findingsSarif(const QList<Finding>& findings, const QString& toolVersion);
