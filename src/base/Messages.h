// The texts that the user reads: string-table resources of the executable, loaded by number in the
// user's language, and their insertions filled in.
#pragma once

#include <cstdarg>
#include <cstdint>
#include <memory>

#include "foundation/Exceptions.h"
#include "foundation/String.h"

namespace corvane {

// The numbers of the string table that the code asks for.
enum class MessageId : std::uint32_t {
    windowClass = 1,
    initializing = 2,  // %1 the title
    searchingForJvm = 3,
    preparingJvm = 4,
    running = 5,       // %1 the title
    jvmNotFound = 6,   // %1 the title
    searchingFor = 7,  // %1 a description
    inputFileNotLoaded = 8,
    instructionsNotLoaded = 9,
    launchScriptNotLoaded = 10,
    jvmFileNotLoaded = 11,
    invalidAction = 13,  // ends with a blank, the action follows
    logFileNameMissing = 14,
    extractFailed = 15,   // ends with a blank, the reason follows
    indexNotLoaded = 16,  // ends with a blank, the reason follows
    noDrives = 17,
    noJvmInstaller = 19,
    progressBarMissing = 20,
    jvmNotValid = 21,
    inputFileNameMissing = 22,
    selectJvm = 23,
    searchAllFailed = 24,  // ends with a blank, the reason follows
    scanningDisks = 25,
    verifying = 26,            // %1 a description
    invalidHive = 27,          // %1 the hive, %2 the hint
    invalidPlatformHint = 28,  // %1 the reason
    inputFileNotOpened = 29,
    chooseDirectory = 30,
    preparingInstallation = 31,
    writeFailed = 33,        // the error follows
    tryAnotherTempDir = 34,  // begins with a blank, follows the error
    canceled = 35,
    tempDirMissing = 36,  // %1 the directory
    selectedFileNotValid = 37,
    damaged = 38,
    homeNotStarted = 39,   // %1 the home
    homeNotSuitable = 40,  // %1 the home, %2 a property, %3 its value, %4 the value required
    title = 105,
};

// A text of the string table; empty if there is none.
String loadMessage(MessageId id);

// Runs `action`, and puts words of its own in front of the text of a `LauncherException` from it.
template <class Action>
void withContext(MessageId context, Action action) {
    try {
        action();
    } catch (const LauncherException& failure) {
        throw LauncherException(loadMessage(context) + failure.message);
    }
}

// A text of the string table with its insertions filled. Raises `LauncherException` as
// `ResourceText::format` does.
String formatMessage(MessageId id, const String& first, const String& second = {},
                     const String& third = {}, const String& fourth = {});

// The system's own words for an error code, with the line end that the system puts there; empty if
// it has none. `file` goes in where the words leave room for a name, and in front of them if they
// deny access without a name. "..." stands for a name that isn't known.
String systemErrorText(std::uint32_t code, const String& file = {});

// The same without the line end, for a place inside a sentence.
String systemErrorWords(std::uint32_t code);

// Raises a `LauncherException` of `prefix` and the system's words about `file`. Callers take the
// code in the expression that found the failure.
[[noreturn]] void throwSystemError(const char* prefix, std::uint32_t code, const String& file = {});

// The loader of string-table texts: a buffer that grows until the text fits.
class ResourceText {
  public:
    // Texts come from the program's own module (`RunContext.moduleHandle`).
    ResourceText();

    // Loads text `id` and gives its length; a missing text is empty and no failure.
    std::int32_t load(std::uint32_t id);

    // Text `id`, or `pattern`, with the insertions "%1!s!", "%2!s!" filled from NUL-terminated
    // texts. Raises `LauncherException` "Format message failed. Err = " + the code.
    void format(std::uint32_t id, ...);
    void formatText(const char* pattern, ...);

    // The system's text for an error code, the places for insertions as they are.
    void formatSystemError(std::uint32_t code);

    const char* text() const noexcept { return buffer_.get(); }
    std::int32_t size() const noexcept { return size_; }

  private:
    // False, with the system's code, when the text can't be made.
    bool formatList(const char* pattern, va_list* arguments);
    void take(const char* block);

    std::unique_ptr<char[]> buffer_;
    void* module_;
    std::int32_t size_;
};

}  // namespace corvane
