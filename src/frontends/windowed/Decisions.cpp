// What the windowed front end decides.
#include "frontends/windowed/Decisions.h"

namespace corvane {

namespace {

constexpr std::int32_t fullBar = 100;
constexpr std::uint32_t closeThisProgram = 1;

}  // namespace

DialogId dialogFor(std::int32_t kind) noexcept {
    return kind == 0 ? DialogId::tall : DialogId::compact;
}

std::int32_t positionAfterStep(std::int32_t current, std::int32_t delta) noexcept {
    const auto sum = static_cast<std::uint32_t>(current) + static_cast<std::uint32_t>(delta);
    return static_cast<std::int32_t>(sum % fullBar);
}

std::int32_t positionShown(std::int32_t position) noexcept {
    return position % fullBar;
}

std::uint32_t hideDelayMs(std::int16_t delaySeconds) noexcept {
    constexpr std::uint32_t msPerSecond = 1000;
    return delaySeconds > 0 ? static_cast<std::uint32_t>(delaySeconds) * msPerSecond : 0;
}

TimerAction timerAction(std::uint64_t timerId, const RunContext& context) noexcept {
    if (timerId == context.hideTimerId)
        return TimerAction::hide;
    return timerId == context.tickTimerId ? TimerAction::tick : TimerAction::none;
}

bool sessionEnds(bool ending, std::uint32_t flags) noexcept {
    return ending && (flags & closeThisProgram) == 0;
}

Position centred(Size screen, Size window) noexcept {
    return {(screen.width - window.width) / 2, (screen.height - window.height) / 2};
}

}  // namespace corvane
