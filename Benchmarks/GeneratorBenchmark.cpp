#include "CppClassWriter.h"
#include "FeatureInfos.h"
#include "ManyFeatures.h"

#include <QFile>
#include <QTextStream>
#include <benchmark/benchmark.h>

namespace
{

class Writer : public CppClassWriter
{
public:
    Writer() : m_options(CppOptions::Defaults()) { m_options.SetClassName("Many"); }

    CppOptions Options() const override { return m_options; }
    void Report(const QString& /*message*/) override {}

    QString Expand(const QString& path, const FeatureInfos& features)
    {
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        QTextStream input(&file);
        QString text;
        QTextStream output(&text);
        ProcessTemplate(output, input, features);
        return text;
    }

private:
    CppOptions m_options;
};

} // namespace

/// From the catalogue to the text of both files.
static void Generate(benchmark::State& state)
{
    const ManyFeatures many(state.range(0));
    FeatureInfos features;
    many.Camera()->Open(KltAccessModeFull);
    features.Create(many.Camera());
    Writer writer;
    qint64 lines = 0;
    for (auto _ : state)
        for (const QString& path : {writer.Options().headerTemplate, writer.Options().sourceTemplate})
            lines += writer.Expand(path, features).count('\n');
    state.counters["lines/s"] = benchmark::Counter(static_cast<double>(lines), benchmark::Counter::kIsRate);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Generate)->Arg(100)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
