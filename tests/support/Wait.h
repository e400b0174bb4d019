// Waiting for what another process or thread does.
#pragma once

#include <chrono>
#include <thread>

namespace corvane::test {

inline constexpr std::chrono::milliseconds patience{20000};

// Waits until `condition` holds; false if it doesn't within `limit`.
bool waitFor(auto&& condition, std::chrono::milliseconds limit = patience) {
    constexpr std::chrono::milliseconds poll{5};
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(poll);
    }
    return true;
}

}  // namespace corvane::test
