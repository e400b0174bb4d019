// Requests to end, as the host's signals bring them.
#include <unistd.h>

#include <atomic>
#include <csignal>

#include "platform/Platform.h"
#include "platform/hosted/Faults.h"

namespace corvane {

namespace {

constexpr int signals[] = {SIGINT, SIGTERM, SIGHUP};

std::atomic<int> requests = 0;
std::atomic<int> firstSignal = 0;
std::atomic<int> signalToPassOn = 0;

// The terminal's keys reach the children as well; `kill` means this process alone.
void onSignal(int number, siginfo_t* information, void* /*context*/) {
    if (requests++ == 0)
        firstSignal = number;
    signalToPassOn = information->si_code <= 0 ? number : 0;
}

void ignore(int /*number*/) {}

// By a handler and not by SIG_IGN, which a child would inherit.
void outliveClosedPipes() {
    struct sigaction action {};
    action.sa_handler = ignore;
    action.sa_flags = SA_RESTART;
    sigaction(SIGPIPE, &action, nullptr);
}

}  // namespace

// Calls that wait come back with EINTR, for the run to look at once.
void watchEndRequests() {
    outliveClosedPipes();
    for (const int number : signals) {
        struct sigaction action {};
        sigaction(number, nullptr, &action);
        if (action.sa_handler == SIG_IGN)
            continue;
        action.sa_sigaction = onSignal;
        action.sa_flags = SA_SIGINFO;
        sigaction(number, &action, nullptr);
    }
}

int endRequests() noexcept {
    return requests;
}

DWORD endRequestValue() noexcept {
    return requests == 0 ? 0 : 128 + static_cast<DWORD>(firstSignal);
}

bool endIsNear() noexcept {
    return false;
}

void requestChildEnd(const PROCESS_INFORMATION& child, bool /*detached*/) {
    if (signalToPassOn != 0)
        kill(static_cast<pid_t>(child.dwProcessId), signalToPassOn);
}

}  // namespace corvane
