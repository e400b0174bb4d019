// The process's `RunContext`.
#include "base/RunContext.h"

#include <utility>

#include "platform/Platform.h"

namespace corvane {

namespace {

RunContext processContext;
RunContext* current = &processContext;

}  // namespace

CancelFlag::operator bool() const noexcept {
    return flag_.load(std::memory_order_relaxed) || endRequests() > 0;
}

RunContext& runContext() noexcept {
    return *current;
}

RunContext& exchangeRunContext(RunContext& context) noexcept {
    return *std::exchange(current, &context);
}

}  // namespace corvane
