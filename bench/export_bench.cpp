// The export on a large score: 40 staves of 400 measures, generated in memory, opened in
// the host stand-in and exported with ToXml as the plug-in runs it. Reports seconds per
// run and the peak resident memory of the process, then one summary line per benchmark.
#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

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

// What a benchmark measures, as its summary line names it: "export", "generate".
void ReportSize(benchmark::State& state, const char* what) {
  state.SetLabel(what);
  state.counters["staves"] = kLargeScore.Staves;
  state.counters["measures"] = kLargeScore.Measures;
  state.counters["peak_MB"] = PeakMegabytes();
}

void BM_GenerateScore(benchmark::State& state) {
  for (auto _ : state) {
    ostin::sim::Document document = ostin::tools::GenerateScore(kLargeScore);
    benchmark::DoNotOptimize(document.Frames.NextEntnum);
  }
  ReportSize(state, "generate");
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
  ReportSize(state, "export");
  std::error_code ignored;
  state.counters["output_MB"] =
      static_cast<double>(std::filesystem::file_size(output, ignored)) / (1024.0 * 1024.0);
  ostin::sim::Host::Instance().Reset();
}

BENCHMARK(BM_GenerateScore)->Unit(benchmark::kSecond)->Iterations(1);
BENCHMARK(BM_ExportScore)->Unit(benchmark::kSecond)->Iterations(3);

// The console table, and behind it one line per benchmark to paste into a report:
// "export 40 staves x 400 measures: 1.23 s, peak 456 MB".
class SummaryReporter : public benchmark::ConsoleReporter {
public:
  explicit SummaryReporter(OutputOptions options) : ConsoleReporter(options) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs)
      if (run.run_type == Run::RT_Iteration) lines_.push_back(SummaryLine(run));
  }

  void Finalize() override {
    ConsoleReporter::Finalize();
    std::ostream& out = GetOutputStream();
    out << "\n";
    for (const std::string& line : lines_)
      out << line;
    out.flush();
  }

private:
  static std::string SummaryLine(const Run& run) {
    std::string what = (run.report_label.empty() ? run.benchmark_name() : run.report_label) + " " +
                       std::to_string(kLargeScore.Staves) + " staves x " +
                       std::to_string(kLargeScore.Measures) + " measures: ";
    if (run.error_occurred) return what + "failed: " + run.error_message + "\n";
    auto peak = run.counters.find("peak_MB");
    double seconds =
        run.real_accumulated_time /
        static_cast<double>(std::max<int64_t>(1, static_cast<int64_t>(run.iterations)));
    char figures[64];
    std::snprintf(figures, sizeof figures, "%.2f s, peak %.0f MB\n", seconds,
                  peak == run.counters.end() ? 0.0 : peak->second.value);
    return what + figures;
  }

  std::vector<std::string> lines_;
};

} // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  SummaryReporter reporter(isatty(STDOUT_FILENO) ? benchmark::ConsoleReporter::OO_ColorTabular
                                                 : benchmark::ConsoleReporter::OO_Tabular);
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}
