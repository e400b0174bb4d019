// The benchmark program: a row of bench/run's table for each comparison, which is a line of work,
// our time, the other way's, the ratio, and the goal, with tabs between them.
#include <cstdio>
#include <string>

#include "benchmark/benchmark.h"

namespace {

std::string timeText(double seconds) {
    char text[32];
    if (seconds < 1e-3)
        std::snprintf(text, sizeof text, "%.1f us", seconds * 1e6);
    else if (seconds < 1)
        std::snprintf(text, sizeof text, "%.1f ms", seconds * 1e3);
    else
        std::snprintf(text, sizeof text, "%.2f s", seconds);
    return text;
}

// Prints what `compare` leaves, and how much longer ours takes.
class TableReporter final : public benchmark::BenchmarkReporter {
  public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs)
            printRow(run);
        std::fflush(stdout);
    }

  private:
    static void printRow(const Run& run) {
        const char* const name = run.run_name.function_name.c_str();
        if (run.error_occurred) {
            std::printf("%s\t-\t%s\t-\t\n", name, run.error_message.c_str());
            return;
        }
        const double ours = run.counters.at("ours");
        const double theirs = run.counters.at("theirs");
        const std::string& label = run.report_label;
        const std::size_t tab = label.find('\t');
        std::printf("%s\t%s\t%s, %s\t%.2f\t%s\n", name, timeText(ours).c_str(),
                    timeText(theirs).c_str(), label.substr(0, tab).c_str(), ours / theirs,
                    label.substr(tab + 1).c_str());
    }
};

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    TableReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
