#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/// One command of kivtool: its name, synopsis, what it does, an example and the options it takes.
struct Command
{
    const char* name;
    const char* synopsis; ///< after "kivtool ", e.g. "html FILE [-o <path>]"
    const char* summary; ///< one line for the command list
    const char* description; ///< a paragraph for the command's own help
    const char* example; ///< one or more lines, each a complete command
    QStringList options; ///< long names of the options it takes besides --help and --verbose
    int minOperands = 1; ///< FILE included
    int maxOperands = 1; ///< -1: no limit
    const char* needs = "a FILE"; ///< what is missing when fewer operands are given
};

/// The command line split into command, operands and options, or a usage error (exit 2).
struct Arguments
{
    QString command;
    QStringList operands;
    QHash<QString, QStringList> values; ///< option long name -> every value given, in order
    bool help = false;
    bool version = false;
    bool verbose = false;
    QString error; ///< set when the command line is wrong

    bool isSet(const QString& option) const { return values.contains(option); }
    /// The last value given for `option`, or an empty text.
    QString value(const QString& option) const;
};

/// Every command kivtool knows, in the order the help lists them.
const QList<Command>& commands();
const Command* findCommand(const QString& name);

/// Splits `arguments` (without the program name). Options may stand anywhere after the command; "--" ends
/// them; "-" alone is an operand (standard input).
Arguments parseArguments(const QStringList& arguments);

/// The general help: usage, the command list, the common options, exit status.
QString generalHelp();
/// The help of one command: usage, description, options, example.
QString commandHelp(const Command& command);
