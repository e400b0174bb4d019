// Patterns of FormatMessageA, with arguments for all nine inserts.
#include <cstdarg>
#include <cstring>

#include "Fuzz.h"

namespace {

constexpr DWORD fromPattern = FORMAT_MESSAGE_FROM_STRING;

void format(const char* pattern, DWORD flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    corvane::LocalGuard block;
    const DWORD length = FormatMessageA(flags | FORMAT_MESSAGE_ALLOCATE_BUFFER, pattern, 0, 0,
                                        reinterpret_cast<LPSTR>(block.put()), 0, &arguments);
    corvane::fuzz::require(length == 0 ? block.get() == nullptr
                                       : std::strlen(block.get()) == length);
    va_end(arguments);
}

void formatIntoBuffer(const char* pattern, DWORD flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    char buffer[16];
    const DWORD length = FormatMessageA(flags, pattern, 0, 0, buffer, sizeof buffer, &arguments);
    corvane::fuzz::require(length == 0 || std::strlen(buffer) == length);
    va_end(arguments);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string pattern = corvane::fuzz::inputText(data, size);
    const char* const none = nullptr;
    for (const DWORD flags : {fromPattern, fromPattern | FORMAT_MESSAGE_IGNORE_INSERTS}) {
        for (const auto action : {format, formatIntoBuffer})
            action(pattern.c_str(), flags, "one", "%2", "", none, "5", "6", "7", "8", "nine");
    }
    return 0;
}
