// How fast the SDK and the generator are.

#include "CppClassWriter.h"
#include "FeatureInfos.h"
#include "SdkReads.h"

#include <KoltaCPP/KoltaCPP.h>
#include <QFile>
#include <QTextStream>
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

using namespace OPX::KltAPI;

namespace
{

/// A simulated camera with a number of integer features, while the object lives.
class ManyFeatures
{
public:
    explicit ManyFeatures(long count) : m_file(std::filesystem::temp_directory_path() / "kolta-many-features.xml")
    {
        const std::string command = "'" DESCRIBE_CAMERA "' " + std::to_string(count) + " >'" + m_file.string() + "'";
        if (std::system(command.c_str()) != 0)
            throw std::runtime_error("The camera cannot be described.");
        setenv("KOLTA_TRANSPORTS", "simulated", 1);
        setenv("KOLTA_CAMERA_PATH", m_file.c_str(), 1);
        KoltaSystem& system = KoltaSystem::GetInstance();
        std::vector<CameraPtr> cameras;
        if (system.Startup() != KltErrorSuccess ||
            ReadList(system, &KoltaSystem::GetCameras, cameras) != KltErrorSuccess)
            throw std::runtime_error("The SDK does not start.");
        camera = cameras.at(0);
    }

    ~ManyFeatures()
    {
        camera.reset();
        KoltaSystem::GetInstance().Shutdown();
        std::filesystem::remove(m_file);
    }

    CameraPtr camera;

private:
    const std::filesystem::path m_file;
};

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

/// Opening a camera and listing its features.
static void OpenAndList(benchmark::State& state)
{
    const ManyFeatures many(state.range(0));
    for (auto _ : state)
    {
        unsigned int count = 0;
        if (many.camera->Open(KltAccessModeFull) != KltErrorSuccess ||
            many.camera->GetFeatures(nullptr, count) != KltErrorSuccess || count != state.range(0))
            state.SkipWithError("The camera cannot be read.");
        many.camera->Close();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(OpenAndList)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

/// From the catalogue to the text of both files.
static void Generate(benchmark::State& state)
{
    const ManyFeatures many(state.range(0));
    FeatureInfos features;
    many.camera->Open(KltAccessModeFull);
    features.Create(many.camera);
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
