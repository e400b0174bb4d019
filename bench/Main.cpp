// The benchmark program: a table with a line for each comparison.
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

// Prints the counters that `compare` leaves, and how much longer ours takes.
class TableReporter final : public benchmark::BenchmarkReporter {
  public:
    bool ReportContext(const Context&) override {
        std::printf("%-34s %10s %10s %7s  %s\n", "", "ours", "theirs", "ratio", "against");
        return true;
    }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs)
            printRow(run);
        std::fflush(stdout);
    }

  private:
    static void printRow(const Run& run) {
        const char* const name = run.run_name.function_name.c_str();
        if (run.error_occurred) {
            std::printf("%-34s %s\n", name, run.error_message.c_str());
            return;
        }
        const double ours = run.counters.at("ours");
        const double theirs = run.counters.at("theirs");
        std::printf("%-34s %10s %10s %7.2f  %s\n", name, timeText(ours).c_str(),
                    timeText(theirs).c_str(), ours / theirs, run.report_label.c_str());
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
