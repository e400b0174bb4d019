// Argument files of Java.
#include "launch/ArgumentFile.h"

#include <utility>

#include "base/FileErrors.h"
#include "base/Log.h"
#include "foundation/TextLines.h"
#include "host/TempFiles.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

// In quotes, in which backslashes protect.
String quotedForFile(const char* argument) {
    String text = replaceAll(argument, "\\", "\\\\");
    text = replaceAll(text, "\"", "\\\"");
    return "\"" + replaceAll(text, "\n", "\\n") + "\"";
}

}  // namespace

String throughArgumentFile(const String& commandLine) {
    const String path = createTempFile();
    StreamGuard file(openStream(path.cstr(), "w"));
    if (!file)
        throwWriteFailure(path, lastStreamError());
    const auto write = [&](const char* argument) {
        writeLine(file.get(), quotedForFile(argument));
    };
    forEachFileArgument(commandLine.cstr(), write);
    closeWritten(std::move(file), path);
    logMessage("The arguments are passed in the file " + path + ": " + commandLine);
    // The program stands in quotes.
    return commandLine.substr(0, commandLine.find('"', 1) + 1) + " \"@" + path + "\"";
}

}  // namespace corvane
