// The export on a large score: 40 staves of 400 measures, generated in memory, opened in
// the host stand-in and exported with ToXml as the plug-in runs it. Reports seconds per
// run and the peak resident memory of the process.
#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "export/to_xml.h"
#include "platform/language.h"
#include "shell/error_log.h"
#include "shell/failure.h"
#include "sim/host.h"
#include "tools/score_generator.h"

namespace {

constexpr ostin::tools::ScoreSize kLargeScore{40, 400, 1};

// Peak resident memory of the process so far, in megabytes.
double PeakMegabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

// A scratch folder for the output, the error log and the registry files of the run.
std::filesystem::path Scratch() {
  static const std::filesystem::path folder = [] {
    auto path =
        std::filesystem::temp_directory_path() / ("ostin_bench_" + std::to_string(getpid()));
    std::filesystem::create_directories(path);
    setenv("XDG_CONFIG_HOME", (path / "config").c_str(), 1);
    setenv("OSTIN_MACHINE_REGISTRY", (path / "machine.reg").c_str(), 1);
    setenv("OSTIN_MUSIC_DIR", path.c_str(), 1);
    ostin::SetLogPath((path / "OstinLightError.log").string());
    ostin::SetLanguage(ostin::kLanguageMain);
    return path;
  }();
  return folder;
}

void ReportSize(benchmark::State& state) {
  state.counters["staves"] = kLargeScore.Staves;
  state.counters["measures"] = kLargeScore.Measures;
  state.counters["peak_MB"] = PeakMegabytes();
}

void BM_GenerateScore(benchmark::State& state) {
  for (auto _ : state) {
    ostin::sim::Document document = ostin::tools::GenerateScore(kLargeScore);
    benchmark::DoNotOptimize(document.Frames.NextEntnum);
  }
  ReportSize(state);
}

void BM_ExportScore(benchmark::State& state) {
  std::string output = (Scratch() / "large.xml").string();
  ostin::sim::Host::Instance().Open(ostin::tools::GenerateScore(kLargeScore));
  for (auto _ : state) {
    ostin::ToXml engine;
    engine.FileName = output;
    try {
      engine.Invoke(0, 0);
    } catch (const ostin::Failure& failure) {
      state.SkipWithError(("export failed: " + failure.Description).c_str());
      break;
    }
  }
  ReportSize(state);
  std::error_code ignored;
  state.counters["output_MB"] =
      static_cast<double>(std::filesystem::file_size(output, ignored)) / (1024.0 * 1024.0);
  ostin::sim::Host::Instance().Reset();
}

BENCHMARK(BM_GenerateScore)->Unit(benchmark::kSecond)->Iterations(1);
BENCHMARK(BM_ExportScore)->Unit(benchmark::kSecond)->Iterations(3);

} // namespace

BENCHMARK_MAIN();
