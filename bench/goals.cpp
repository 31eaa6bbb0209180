// SPDX-License-Identifier: MIT
// Runs the benchmarks in interleaved repetitions and prints the ratio of medians for each goal in
// addition to Google Benchmark's report. Accepts the options of Google Benchmark.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "pictures.h"

namespace {

struct Goal {
  const char* what;
  const char* measured;
  const char* against;
  double atMost;
};

constexpr Goal goals[] = {
    {"IsExifFile / open, read 4 KiB, close", "isExifFile", "floorOfReading", 1.3},
    {"GetExifVersion / open, read 4 KiB, close", "getExifVersion", "floorOfReading", 1.6},
    {"GetExifInfo / bare walk of the directories", "getExifInfo", "bareWalk", 1.35},
    {"GetExifInfo / libexif", "getExifInfo", "libexif", 0.1},
    {"GetExifInfo / exiv2", "getExifInfo", "exiv2", 0.1},
    {"info --json / its GetExifInfo calls", "listingProgram", "listingCalls", 1.3},
    {"SaveFile JPEG 24 MP / durable encoding", "save/jpeg24MP", "durableJpeg/24MP", 1.08},
    {"SaveFile JPEG 2 MP / durable encoding", "save/jpeg2MP", "durableJpeg/2MP", 1.08},
    {"SaveFile TIFF 12 MP / durable raw pixels", "save/tiff12MP", "durablePixels/12MP", 1.4},
    {"OpenExifFile 24 MP / plain decoding", "open/24MP", "decode/24MP", 1.1},
};

// Collects the medians. For reading this is processor time, which is less affected by other load;
// saves wait for the disk.
class MedianReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs)
      if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median")
        medians_[run.run_name.function_name] =
            waits(run) ? run.real_accumulated_time : run.cpu_accumulated_time;
  }

  static bool waits(const Run& run) { return run.time_unit == benchmark::kMillisecond; }

  void printGoals() const {
    std::printf("\n%-42s %8s %8s\n", "Ratio of medians", "measured", "goal");
    for (const Goal& goal : goals) {
      const auto measured = medians_.find(goal.measured), against = medians_.find(goal.against);
      if (measured == medians_.end() || against == medians_.end()) continue;
      std::printf("%-42s %8.2f %8.2f\n", goal.what, measured->second / against->second,
                  goal.atMost);
    }
  }

 private:
  std::map<std::string, double> medians_;
};

}  // namespace

int main(int argc, char** argv) {
  std::vector<char*> arguments(argv, argv + argc);
  char interleaved[] = "--benchmark_enable_random_interleaving=true";
  char repetitions[] = "--benchmark_repetitions=11";
  char aggregates[] = "--benchmark_report_aggregates_only=true";
  char shortRuns[] = "--benchmark_min_time=0.1";
  // The user's options come later and take precedence.
  arguments.insert(arguments.begin() + 1, {interleaved, repetitions, aggregates, shortRuns});
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;
  benchmark::AddCustomContext("pictures", std::to_string(bench::cameraPictures().size()));
  MedianReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printGoals();
}
