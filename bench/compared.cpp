#include "compared.hpp"

#include <cstdio>
#include <map>
#include <utility>
#include <vector>

namespace bench {

namespace {

struct Row {
  std::string name;
  double limit;
  std::string unit;  // empty for a ratio of times
};

std::vector<Row>& Rows() {
  static std::vector<Row> rows;
  return rows;
}

constexpr int kRepetitions = 7;

void Register(const std::string& name, const std::function<void(benchmark::State&)>& body) {
  benchmark::RegisterBenchmark(name.c_str(), body)->Repetitions(kRepetitions)->ReportAggregatesOnly()->UseRealTime();
}

// Keeps the medians, and tells of each on the console as it arrives.
class MedianReporter : public benchmark::ConsoleReporter {
 public:
  MedianReporter() : ConsoleReporter(OO_Tabular) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.error_occurred) ++failures_;
      if (run.aggregate_name != "median") continue;
      const std::string name = run.run_name.function_name;
      times_[name] = run.GetAdjustedRealTime();
      const auto value = run.counters.find("value");
      if (value != run.counters.end()) values_[name] = value->second.value;
    }
    ConsoleReporter::ReportRuns(runs);
  }

  double TimeOf(const std::string& name) const { return Find(times_, name); }
  double ValueOf(const std::string& name) const { return Find(values_, name); }
  bool Has(const std::string& name) const { return times_.count(name) != 0; }
  int GetFailures() const { return failures_; }

 private:
  static double Find(const std::map<std::string, double>& map, const std::string& name) {
    const auto found = map.find(name);
    return found == map.end() ? 0.0 : found->second;
  }

  std::map<std::string, double> times_;
  std::map<std::string, double> values_;
  int failures_ = 0;
};

bool Print(const Row& row, const MedianReporter& report) {
  if (!row.unit.empty()) {
    const double value = report.ValueOf(row.name);
    std::printf("%-52s %12s %14.1f %-6s limit %.1f\n", row.name.c_str(), "", value, row.unit.c_str(), row.limit);
    return value <= row.limit;
  }
  const double floor = report.TimeOf(row.name + " (floor)");
  const double time = report.TimeOf(row.name);
  const double ratio = time / floor;
  std::printf("%-52s %12.1f %14.1f ns  x%-5.2f limit x%.1f\n", row.name.c_str(), floor, time, ratio, row.limit);
  return ratio <= row.limit;
}

}  // namespace

void Compare(const std::string& name, double limit, const std::function<void(benchmark::State&)>& floor,
             const std::function<void(benchmark::State&)>& measured) {
  Rows().push_back({name, limit, ""});
  Register(name + " (floor)", floor);
  Register(name, measured);
}

void Measure(const std::string& name, double limit, const std::string& unit,
             const std::function<void(benchmark::State&)>& measured) {
  Rows().push_back({name, limit, unit});
  Register(name, measured);
}

int RunAndReport() {
  MedianReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);

  int beyondLimit = reporter.GetFailures();
  std::printf("\n%-52s %12s %14s\n", "medians of seven", "floor", "measured");
  for (const Row& row : Rows()) {
    if (reporter.Has(row.name) && !Print(row, reporter)) ++beyondLimit;
  }
  return beyondLimit;
}

}  // namespace bench
