// Loading and filling in of string-table texts, and the system's own error texts.
#include "base/Messages.h"

#include <algorithm>
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
        const std::int32_t length = LoadStringA(module, id, buffer.get(), size);
        if (size - length >= leastFree)
            return length;
        size += sizeStep;
        buffer = zeroed(size);
    }
}

// One behind the format, such as "!lx!", that an insertion's number at `pos` may have behind it.
std::size_t formatEnd(const String& text, std::size_t pos) {
    const std::size_t close = *text.charAt(pos) == '!' ? text.find('!', pos + 1) : String::npos;
    return close == String::npos ? pos : close + 1;
}

// A system's text with `file` as its first insertion. Of the others the launcher knows nothing.
String withInsertions(const String& text, const String& file) {
    String filled;
    std::size_t from = 0;
    for (std::size_t at = text.find('%'); at != String::npos; at = text.find('%', at + 1)) {
        const std::size_t digits =
            std::min(text.findFirstNotOf("0123456789", at + 1), text.length());
        if (digits == at + 1)
            continue;
        const bool isFile = text.substr(at + 1, digits - at - 1) == "1" && !file.empty();
        filled.append(text, from, at - from).append(isFile ? file : "...");
        from = formatEnd(text, digits);
    }
    return filled.append(text, from, String::npos);
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

String formatMessage(MessageId id, const String& first, const String& second, const String& third,
                     const String& fourth) {
    ResourceText loader;
    loader.format(static_cast<std::uint32_t>(id), first.cstr(), second.cstr(), third.cstr(),
                  fourth.cstr());
    return loader.text();
}

String systemErrorText(std::uint32_t code, const String& file) {
    ResourceText loader;
    loader.formatSystemError(code);
    const String words = withInsertions(loader.text(), file);
    return code == ERROR_ACCESS_DENIED && !file.empty() ? file + ": " + words : words;
}

String systemErrorWords(std::uint32_t code) {
    String words = systemErrorText(code);
    trim(words);
    return words;
}

void throwSystemError(const char* prefix, std::uint32_t code, const String& file) {
    throw LauncherException(String(prefix) + systemErrorText(code, file));
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
