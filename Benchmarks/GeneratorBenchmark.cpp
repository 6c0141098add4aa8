#include "CppClassGenerator.h"
#include "FeatureInfos.h"
#include "ManyFeatures.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QWidget>
#include <benchmark/benchmark.h>

/// From the catalogue to the two files.
static void Generate(benchmark::State& state)
{
    const ManyFeatures many(state.range(0));
    FeatureInfos features;
    many.Camera()->Open(KltAccessModeFull);
    features.Create(many.Camera());
    QWidget page;
    CppClassGenerator generator;
    generator.SetupUi(&page);
    generator.ReadSettings();
    generator.SetCameraName("Many");
    const QByteArray folder = QDir::tempPath().toUtf8();
    for (auto _ : state)
        generator.Run(folder.constData(), true, features);

    qint64 lines = 0;
    for (const char* name : {"/ManyCamera.h", "/ManyCamera.cpp"})
    {
        QFile file(QDir::tempPath() + name);
        file.open(QIODevice::ReadOnly);
        lines += file.readAll().count('\n');
        file.remove();
    }
    state.counters["lines/s"] =
        benchmark::Counter(static_cast<double>(lines * state.iterations()), benchmark::Counter::kIsRate);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Generate)->Arg(100)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

int main(int argc, char* argv[])
{
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QLatin1String("OPX"));
    QCoreApplication::setApplicationName(QLatin1String("KoltaBenchmark"));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
