// The progress of long work.
#include "packer/base/Progress.h"

#include <unistd.h>

#include <iostream>

namespace corvane::pack {

namespace {

constexpr std::uint64_t worthALine = 50'000'000;
constexpr int standardError = 2;

}  // namespace

Progress::Progress(std::string what, std::uint64_t total)
    : what_(std::move(what)), total_(total), shown_(total > worthALine && isatty(standardError)) {}

Progress::~Progress() {
    if (percent_ >= 0)
        std::cerr << '\r' << std::string(what_.size() + 6, ' ') << '\r' << std::flush;
}

void Progress::reach(std::uint64_t done) {
    const int percent = shown_ ? static_cast<int>(done * 100 / total_) : percent_;
    if (percent == percent_)
        return;
    percent_ = percent;
    std::cerr << '\r' << what_ << ' ' << percent << " %" << std::flush;
}

std::string sizeText(std::uint64_t bytes) {
    constexpr std::uint64_t kilo = 1000;
    constexpr std::uint64_t mega = kilo * kilo;
    if (bytes < kilo)
        return std::to_string(bytes) + " bytes";
    if (bytes < mega)
        return std::to_string((bytes + kilo / 2) / kilo) + " kB";
    const std::uint64_t tenths = (bytes + mega / 20) / (mega / 10);
    return std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10) + " MB";
}

}  // namespace corvane::pack
