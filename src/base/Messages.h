// The texts that the user reads: string-table resources of the executable, loaded by number in the
// user's language, and their insertions filled in.
#pragma once

#include <cstdarg>
#include <cstdint>
#include <memory>

#include "foundation/Exceptions.h"
#include "foundation/String.h"

namespace corvane {

// Numbers of the string table, as far as the code asks for them by number.
enum class MessageId : std::uint32_t {
    windowClass = 1,
    initializing = 2,  // %1 the title
    searchingForJvm = 3,
    preparingJvm = 4,
    running = 5,       // %1 the title
    jvmNotFound = 6,   // %1 the title
    searchingFor = 7,  // %1 a description
    noDrives = 17,
    progressBarMissing = 20,
    scanningDisks = 25,
    verifying = 26,            // %1 a description
    invalidHive = 27,          // %1 the hive, %2 the hint
    invalidPlatformHint = 28,  // %1 the reason
    chooseDirectory = 30,
    preparingInstallation = 31,
    tempDirMissing = 36,  // %1 the directory
    title = 105,
};

// The failure texts, by their index in a catalogue of their own.
enum class CatalogueText : std::uint32_t {
    inputFileNotLoaded,
    instructionsNotLoaded,
    launchScriptNotLoaded,
    jvmFileNotLoaded,
    invalidJvmFileId,
    invalidAction,  // ends with a blank, the action follows
    logFileNameMissing,
    extractFailed,   // ends with a blank, the reason follows
    indexNotLoaded,  // ends with a blank, the reason follows
    noJvmInstaller,
    jvmNotValid,
    inputFileNameMissing,
    selectJvm,
    selectedFileNotValid,
    searchAllFailed,  // ends with a blank, the reason follows
    inputFileNotOpened,
    writeFailed,        // the error number follows
    tryAnotherTempDir,  // begins with a blank, follows the error number
    canceled,
    tempDirMissing,
};

String loadMessage(CatalogueText index);

// Runs `action`, and puts words of its own in front of the text of a `LauncherException` from it.
template <class Action>
void withContext(CatalogueText context, Action action) {
    try {
        action();
    } catch (const LauncherException& failure) {
        throw LauncherException(loadMessage(context) + failure.message);
    }
}

// A text of the string table; empty if there is none.
String messageText(MessageId id);

// The same with its insertions filled. Raises `LauncherException` as `ResourceText::format` does.
String formatMessage(MessageId id, const String& first);
String formatMessage(MessageId id, const String& first, const String& second);

// The system's own words for an error code, with the line end that the system puts there; empty if
// it has none.
String systemErrorText(std::uint32_t code);

// Raises a `LauncherException` of `prefix` and the system's words. Callers take the code in the
// expression that found the failure.
[[noreturn]] void throwSystemError(const char* prefix, std::uint32_t code);

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

    // The system's text for an error code.
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
