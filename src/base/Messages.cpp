// Loading and filling in of string-table texts, and the system's own error texts.
#include "base/Messages.h"

#include <charconv>
#include <cstdarg>
#include <cstring>
#include <iterator>

#include "base/RunContext.h"
#include "foundation/TextLines.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

constexpr std::int32_t sizeStep = 64;

// What a text leaves free at least that was not cut: the terminator and the longest character of
// the code page, since the system cuts in front of a character that doesn't fit.
constexpr std::int32_t leastFree = 5;

std::unique_ptr<char[]> zeroed(std::int32_t size) {
    return std::make_unique<char[]>(static_cast<std::size_t>(size));
}

// Loads a text into `buffer`, which grows until nothing can have been cut.
std::int32_t loadText(void* module, std::uint32_t id, std::unique_ptr<char[]>& buffer,
                      std::int32_t& size) {
    for (;;) {
        buffer[0] = '\0';
        const std::int32_t length =
            LoadStringA(static_cast<HINSTANCE>(module), id, buffer.get(), size);
        if (size - length >= leastFree)
            return length;
        size += sizeStep;
        buffer = zeroed(size);
    }
}

// Behind `va_end`, which must not be passed over.
[[noreturn]] void throwFormatFailure() {
    char digits[12] = "";
    std::to_chars(digits, std::end(digits) - 1, std::uint32_t{GetLastError()});
    throw LauncherException(String("Format message failed. Err = ").append(digits));
}

}  // namespace

String loadMessage(MessageId id) {
    ResourceText loader;
    loader.load(static_cast<std::uint32_t>(id));
    return loader.text();
}

String formatMessage(MessageId id, const String& first) {
    return formatMessage(id, first, "");
}

String formatMessage(MessageId id, const String& first, const String& second) {
    ResourceText loader;
    loader.format(static_cast<std::uint32_t>(id), first.cstr(), second.cstr());
    return loader.text();
}

String systemErrorText(std::uint32_t code) {
    ResourceText loader;
    loader.formatSystemError(code);
    return loader.text();
}

String systemErrorWords(std::uint32_t code) {
    String words = systemErrorText(code);
    trim(words);
    return words;
}

void throwSystemError(const char* prefix, std::uint32_t code) {
    throw LauncherException(String(prefix) + systemErrorText(code));
}

ResourceText::ResourceText()
    : buffer_(zeroed(sizeStep)), module_(runContext().moduleHandle), size_(sizeStep) {}

std::int32_t ResourceText::load(std::uint32_t id) {
    return loadText(module_, id, buffer_, size_);
}

void ResourceText::format(std::uint32_t id, ...) {
    std::int32_t scratchSize = sizeStep;
    auto scratch = zeroed(scratchSize);
    loadText(module_, id, scratch, scratchSize);
    va_list arguments;
    va_start(arguments, id);
    const bool done = formatList(scratch.get(), &arguments);
    va_end(arguments);
    if (!done)
        throwFormatFailure();
}

void ResourceText::formatText(const char* pattern, ...) {
    va_list arguments;
    va_start(arguments, pattern);
    const bool done = formatList(pattern, &arguments);
    va_end(arguments);
    if (!done)
        throwFormatFailure();
}

bool ResourceText::formatList(const char* pattern, va_list* arguments) {
    LocalGuard block;
    // With FORMAT_MESSAGE_ALLOCATE_BUFFER the system stores the block's address in the "buffer".
    const DWORD length =
        FormatMessageA(FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ALLOCATE_BUFFER, pattern, 0, 0,
                       reinterpret_cast<char*>(block.put()), 0, arguments);
    if (length == 0 || !block)
        return false;
    take(block.get());
    return true;
}

void ResourceText::formatSystemError(std::uint32_t code) {
    constexpr DWORD userLanguage = 0x400;
    LocalGuard block;
    FormatMessageA(
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_ALLOCATE_BUFFER,
        nullptr, code, userLanguage, reinterpret_cast<char*>(block.put()), 0, nullptr);
    // A code that the system has no words for leaves no block.
    take(block ? block.get() : "");
}

// Copies a finished text, terminator included, into the buffer.
void ResourceText::take(const char* block) {
    const auto needed = static_cast<std::int32_t>(std::strlen(block)) + 1;
    if (needed > size_) {
        size_ = needed;
        buffer_ = zeroed(size_);
    }
    std::memcpy(buffer_.get(), block, static_cast<std::size_t>(needed));
}

}  // namespace corvane
