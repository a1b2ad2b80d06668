#include "LogCapture.h"
#include "TestXml.h"

#include "product/XmlDigitalInputs.h"
#include "product/XmlDigitalOutput.h"
#include "product/XmlDigitalOutputs.h"
#include "product/XmlProductModule.h"

#include <QDate>
#include <QLocale>
#include <QtTest>

#include <memory>

namespace {

std::unique_ptr<XmlProductModule> parseModule(const QByteArray& xml)
{
    std::unique_ptr<XmlProductInterface> product
        = TestXml::parseProduct("<product_module>" + xml + "</product_module>");
    return std::unique_ptr<XmlProductModule>(static_cast<XmlProductModule*>(product.release()));
}

/// Expected LaTeX written readably: "~" stands for a tab (LaTeX's own "\t..." macros would clash with "\t"),
/// "@" for a blank at the end of a line.
QString tabbed(const char* text)
{
    return QString::fromUtf8(text)
        .replace(QLatin1Char('~'), QLatin1Char('\t'))
        .replace(QLatin1Char('@'), QLatin1Char(' '));
}

} // namespace

class TestModuleManual : public QObject
{
    Q_OBJECT
private slots:
    void header();
    void headerWithoutContainers();
    void globalBank();
    void globalBankIndexOutOfRange();
    void axisTables();
    void ioTables_data();
    void ioTables();
    void ioTableWithoutValue();
    void escape_data();
    void escape();
};

void TestModuleManual::header()
{
    auto module = parseModule("<name>AB-1234</name><name_fw_version>1234</name_fw_version>"
                              "<hardware_version>1.2</hardware_version><software_version>3.4</software_version>"
                              "<axis_parameters/><axis_parameters/><global_parameters bank=\"0\"/>"
                              "<global_parameters bank=\"2\"/><digital_inputs><digital_input/><digital_input/>"
                              "</digital_inputs><analog_inputs><analog_input/></analog_inputs>");
    const QString date = QLocale::system().toString(QDate::currentDate(), QStringLiteral("yyyy-MMM-d")).toUpper();
    const QString expected = tabbed(R"(\newcommand{\productName}{AB-1234}
\newcommand{\modulename}{AB-1234} %deprecated

\newcommand{\productType}{module}

\newif\ifproductIsModule
\productIsModuletrue
\newif\ifproductIsIC
\productIsICfalse

\newcommand{\moduleMotorType}{Stepper}

\newcounter{modulenumber}
\setcounter{modulenumber}{1234}
\newcommand{\productRootPath}{module/AB1234}
\newcommand{\productAndVersionRootPath}{\productRootPath}
\newcommand{\productAndVersionRootPathManual}{\productAndVersionRootPath /manual}
\newcommand{\productAndVersionRootPathGenerated}{\productAndVersionRootPath /generated}
\newcommand{\productImage}{\productRootPath /graphics/AB1234.png}

\newcommand{\documentationType}{KIVL\textsuperscript{\texttrademark} Firmware Manual}
\newcommand{\productColor}{modulered}

\newcommand{\productVersionDesc}{Firmware Version}
\newcommand{\productVersion}{V3.4}

\newcounter{numberofmotors}
\setcounter{numberofmotors}{2}
\newcounter{numberofgpi}
\setcounter{numberofgpi}{2}
\newcounter{numberofgpo}
\setcounter{numberofgpo}{0}
\newcounter{numberofadc}
\setcounter{numberofadc}{1}
% available features
\providecommand{\SupportBasicKivl}{}
% \providecommand{\SupportFullKivl}{}
\providecommand{\SupportGrimlatch}{}
\providecommand{\SupportWenfrost}{}
% \providecommand{\SupportRefSearch}{}
% \providecommand{\SupportKivlInterrupts}{}
\providecommand{\SupportGPBank0}{}
\providecommand{\SupportGPBank2}{}

\newcommand{\firmwareDate}{DATE}

\newcommand{\manualVersion}{V1.0}
\newcommand{\manualDate}{\today}

\newcommand{\hardwareVersion}{V1.2}
\newcommand{\hardwareDate}{DATE}
)")
                                 .replace(QLatin1String("DATE"), date);
    KIV_COMPARE_TEXT(module->toLaTeXHeader(), expected);
}

void TestModuleManual::headerWithoutContainers()
{
    XmlProductModule module;
    const QString header = module.toLaTeXHeader();
    QVERIFY(header.contains(QStringLiteral("\\setcounter{numberofmotors}{0}\n\\newcounter{numberofgpi}\n"
                                           "\\setcounter{numberofgpi}{0}")));
    QVERIFY(!header.contains(QStringLiteral("SupportGPBank")));
    QVERIFY(header.contains(QStringLiteral("\\newcommand{\\productRootPath}{module/}")));
}

void TestModuleManual::globalBank()
{
    LogCapture log;
    auto module = parseModule(
        "<global_parameters bank=\"2\">"
        "<global_parameter type=\"65\" name=\"baud_rate\"><desc>Serial baud rate</desc><desc>Takes effect after "
        "reset</desc><value_choice default=\"0\" access=\"rwe\"><choice_element value=\"0\" desc_short=\"9600\"/>"
        "<choice_element value=\"7\" desc_short=\"115200\"/></value_choice></global_parameter>"
        "<global_parameter type=\"77\" name=\"Auto start\"><desc>50% duty</desc><value_bool default=\"true\" "
        "desc_short_false=\"off\" desc_short_true=\"on\" access=\"RW\"/></global_parameter>"
        "<global_parameter type=\"75\" name=\"Pause\"><value_unsigned min=\"0\" max=\"255\" default=\"5\" "
        "unit=\"ms\" access=\"R\"/></global_parameter>"
        "<global_parameter type=\"1\" name=\"Bare\"><desc>none</desc></global_parameter>"
        "</global_parameters>");
    // Headed by the list position 0, not by the bank number 2; a parameter without value keeps only its text.
    const QString expected
        = tabbed(R"(\begin{longtable}{|l|>{\raggedright}p{2.9cm}|p{6.0cm}|>{\raggedright}p{2.2cm}|l|l|}
\hline
\rowcolor{gray} \multicolumn{6}{|c|}{All Global Parameters of the \modulename\ Module in Bank 0} \\
\hline
\rowcolor{gray} Number & Global Parameter & Description & Range [Units] & Default & Access \endfirsthead
\hline
\rowcolor{gray} Number & Global Parameter & Description & Range [Units] & Default & Access \endhead
\hline
65~ & baud\textunderscore rate
~ & Serial baud rate\newlineTakes effect after reset \newline 
~0 - 9600 \newline 
~7 - 115200
~ & $0$ \ldots $7$\@
~ & $0$
~ & rwe\\
\hline
77~ & Auto start
~ & 50\% duty \newline 
~0 - off \newline 
~1 - on
~ & $0$ \ldots $1$\@
~ & $1$
~ & RW\\
\hline
75~ & Pause
~ & 
~ & $0$ \ldots $255$\ [ms]
~ & $5$
~ & R\\
\hline
1~ & Bare
~ & none\\
\hline
\caption{All Global Parameters of the \modulename\ Module in Bank 0}
\end{longtable})");
    KIV_COMPARE_TEXT(module->toLaTeXGlobalParamBank(0), expected);
}

void TestModuleManual::globalBankIndexOutOfRange()
{
    auto module = parseModule("<global_parameters bank=\"0\"/>");
    QVERIFY(!module->toLaTeXGlobalParamBank(0).isEmpty());
    QCOMPARE(module->toLaTeXGlobalParamBank(1), QString());
    QCOMPARE(module->toLaTeXGlobalParamBank(-1), QString());
}

void TestModuleManual::axisTables()
{
    auto module = parseModule("<axis_parameters axis=\"3\"><axis_parameter type=\"4\" name=\"my_param\">"
                              "<desc>Speed</desc><value_unsigned max=\"100\" default=\"10\" unit=\"pps\" "
                              "access=\"RW\"/></axis_parameter></axis_parameters><axis_parameters axis=\"5\"/>");
    // Headed Axis 0 and Axis 1 by list position; only one closing line after both tables.
    const QString expected
        = tabbed(R"(\begin{longtable}{|l|>{\raggedright}p{2.5cm}|p{6.0cm}|>{\raggedright}p{2.5cm}|l|l|}
\hline
\rowcolor{gray} \multicolumn{6}{|c|}{Axis 0 Parameters of the \modulename\ Module} \\
\hline
\rowcolor{gray} Number & Axis Parameter & Description & Range [Units] & Default &  Access \endfirsthead
\hline
\rowcolor{gray} Number & Axis Parameter & Description & Range [Units] & Default &  Access \endhead
\hline
4~ & my\textunderscore param
~ & Speed
~ & $0$ \ldots $100$\ [pps]
~ & $10$
~ & RW\\
\hline
\caption{All \modulename\ Axis 0 Parameters}\begin{longtable}{|l|>{\raggedright}p{2.5cm}|p{6.0cm}|>{\raggedright}p{2.5cm}|l|l|}
\hline
\rowcolor{gray} \multicolumn{6}{|c|}{Axis 1 Parameters of the \modulename\ Module} \\
\hline
\rowcolor{gray} Number & Axis Parameter & Description & Range [Units] & Default &  Access \endfirsthead
\hline
\rowcolor{gray} Number & Axis Parameter & Description & Range [Units] & Default &  Access \endhead
\hline
\caption{All \modulename\ Axis 1 Parameters}
\end{longtable})");
    KIV_COMPARE_TEXT(module->toLaTeXAxisParam(), expected);
    QCOMPARE(XmlProductModule().toLaTeXAxisParam(), QStringLiteral("\n\\end{longtable}"));
}

void TestModuleManual::ioTables_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("expected");
    const char* head = R"(\begin{table}[H]
\begin{tabular}{|l|l|l|l|}
\hline
\rowcolor{gray} \multicolumn{4}{|c|}{%1}\\
\hline
\rowcolor{gray} Port & Description & Command & Range \\)";
    const char* tail = "\n\\end{tabular}\n\\end{table}";
    QTest::newRow("digital inputs") << 0
                                    << tabbed(head).arg("Digital Inputs in Bank 0")
            + tabbed("\n0 - IN\n~ & \n~ & GIO 0, 0\n~ & 0/1\\\\\n\\hline") + tail;
    QTest::newRow("analog inputs") << 1
                                   << tabbed(head).arg("Analog Inputs in Bank 1")
            + tabbed("\n3 - AIN\\textunderscore 0\n~ & voltage\n~ & GIO 3, 1\n~ & 0\\ldots 4095\\\\\n\\hline") + tail;
    const QString outputRow = tabbed("\n1 - OUT\\textunderscore 1\n~ & a\\newline5\\%\n~ & %1 1, 2, <value>\n~ & "
                                     "0/1\\\\\n\\hline");
    QTest::newRow("set outputs") << 2 << tabbed(head).arg("Digital Outputs in Bank 2") + outputRow.arg("SIO") + tail;
    QTest::newRow("get outputs") << 3 << tabbed(head).arg("Digital Outputs in Bank 2") + outputRow.arg("GIO") + tail;
    QTest::newRow("other kind") << 4 << QString();
    QTest::newRow("negative kind") << -1 << QString();
}

void TestModuleManual::ioTables()
{
    QFETCH(int, kind);
    QFETCH(QString, expected);
    auto module = parseModule("<digital_inputs><digital_input type=\"0\" name=\"IN\"><value_bool/></digital_input>"
                              "</digital_inputs><analog_inputs><analog_input type=\"3\" name=\"AIN_0\">"
                              "<desc>voltage</desc><value_unsigned max=\"4095\"/></analog_input></analog_inputs>"
                              "<digital_outputs><digital_output type=\"1\" name=\"OUT_1\"><desc>a</desc>"
                              "<desc>5%</desc><value_bool/></digital_output></digital_outputs>");
    KIV_COMPARE_TEXT(module->toLaTeXIOs(kind), expected);
}

void TestModuleManual::ioTableWithoutValue()
{
    XmlProductModule module;
    QCOMPARE(module.toLaTeXIOs(2), QString()); // no container
    module.setDigitalInputs(new XmlDigitalInputs);
    QCOMPARE(module.toLaTeXIOs(0), QString()); // empty container
    auto* outputs = new XmlDigitalOutputs;
    auto* output = new XmlDigitalOutput;
    output->setType(2);
    outputs->appendDigitalOutput(output);
    module.setDigitalOutputs(outputs);
    QVERIFY(module.toLaTeXIOs(3).contains(tabbed("\n2 - \n~ & \n~ & GIO 2, 2, <value>\n~ & \\\\\n\\hline")));
}

void TestModuleManual::escape_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("expected");
    QTest::newRow("percent") << "50%"
                             << "50\\%";
    QTest::newRow("underscore") << "my_param"
                                << "my\\textunderscore param";
    QTest::newRow("both") << "%_%"
                          << "\\%\\textunderscore \\%";
    QTest::newRow("plain") << "a\\b"
                           << "a\\b";
}

void TestModuleManual::escape()
{
    QFETCH(QString, input);
    QFETCH(QString, expected);
    QCOMPARE(XmlProductModule::EscapeSpecialLaTeXCharacters(input), expected);
}

QTEST_GUILESS_MAIN(TestModuleManual)
#include "tst_modulemanual.moc"
