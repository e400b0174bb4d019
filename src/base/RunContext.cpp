// The process's `RunContext`.
#include "base/RunContext.h"

#include <utility>

namespace corvane {

namespace {

RunContext processContext;
RunContext* current = &processContext;

}  // namespace

RunContext& runContext() noexcept {
    return *current;
}

RunContext& exchangeRunContext(RunContext& context) noexcept {
    return *std::exchange(current, &context);
}

}  // namespace corvane
