#include "Scaling.h"

#include "LatexRepair.h"

#include "product/KIVXmlParser.h"
#include "product/XmlProductModule.h"

#include <benchmark/benchmark.h>

#include <QTemporaryFile>

#include <memory>

namespace {

/// One text of `count` escapes, the shape that made the decoder quadratic.
void decodeEscapes(benchmark::State& state)
{
    const QString source = QStringLiteral("\\u0041").repeated(int(state.range(0)));
    for (auto _ : state) {
        QString text = source;
        benchmark::DoNotOptimize(KIVXmlParser::replaceUnicode(text).size());
    }
}

/// Axis parameter tables as the generator writes them: `count` opened, only the last closed.
void closeLongtables(benchmark::State& state)
{
    const QString block = QStringLiteral("\\begin{longtable}{|l|l|}\n\\hline\n\\rowcolor{gray} Number & Axis Parameter "
                                         "\\endfirsthead\n\\hline\n\\caption{All Axis Parameters}");
    const QString text = block.repeated(int(state.range(0))) + QStringLiteral("\n\\end{longtable}");
    for (auto _ : state)
        benchmark::DoNotOptimize(LatexRepair::closeEveryLongtable(text).size());
}

/// A module of `count` axis-0 parameters and `count` drive settings, each naming the last parameter.
std::unique_ptr<XmlProductModule> driveSettingsModule(int count)
{
    QByteArray xml = "<product_module><name>SCALE</name><axis_parameters axis=\"0\">";
    for (int i = 0; i < count; ++i) {
        xml += "<axis_parameter type=\"" + QByteArray::number(i + 1 == count ? 2 : 1) + "\" name=\"p"
            + QByteArray::number(i) + "\" identifier=\"p\"/>";
    }
    xml += "</axis_parameters><drive_configuration id=\"1\" name=\"cfg\"><drive_ap_settings name=\"g\">";
    for (int i = 0; i < count; ++i)
        xml += "<drive_ap_setting type=\"2\" value=\"7\"/>";
    xml += "</drive_ap_settings></drive_configuration></product_module>";
    QTemporaryFile file;
    if (!file.open() || file.write(xml) != xml.size() || !file.seek(0))
        return nullptr;
    std::unique_ptr<XmlProductInterface> product(KIVXmlParser::parseProduct(&file));
    if (!qobject_cast<XmlProductModule*>(product.get()))
        return nullptr;
    return std::unique_ptr<XmlProductModule>(static_cast<XmlProductModule*>(product.release()));
}

void moduleHtmlDriveSettings(benchmark::State& state)
{
    const std::unique_ptr<XmlProductModule> module = driveSettingsModule(int(state.range(0)));
    if (!module) {
        state.SkipWithError("the generated module does not parse");
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(module->toHtml().size());
}

} // namespace

void registerScalingBenchmarks()
{
    benchmark::RegisterBenchmark("scaling/replaceUnicode", decodeEscapes)
        ->Arg(200000)
        ->Arg(400000)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("scaling/closeEveryLongtable", closeLongtables)
        ->Arg(16000)
        ->Arg(32000)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("scaling/moduleHtmlDriveSettings", moduleHtmlDriveSettings)
        ->Arg(20000)
        ->Arg(40000)
        ->Unit(benchmark::kMillisecond);
}
