// Failures of reads and writes.
#include "base/FileErrors.h"

#include "base/Messages.h"
#include "foundation/Exceptions.h"
#include "foundation/TextLines.h"

namespace corvane {

void throwWriteFailure(const String& path, const StreamError& error) {
    String text = loadMessage(MessageId::writeFailed) + decimalText(error.number) + " (" + path +
                  ": " + systemErrorWords(error.code) + ")";
    if (error.code == ERROR_DISK_FULL || error.code == ERROR_HANDLE_DISK_FULL)
        text.append(loadMessage(MessageId::tryAnotherTempDir));
    throw LauncherException(text);
}

void checkRead(std::FILE* file, const String& path) {
    if (std::ferror(file) != 0)
        throw LauncherException("Error reading file " + path + ": " +
                                systemErrorWords(lastStreamError().code));
}

// A network drive may tell of a failed write as late as here.
void closeWritten(StreamGuard file, const String& path) {
    const bool failedBefore = std::ferror(file.get()) != 0 || std::fflush(file.get()) != 0;
    if (failedBefore || std::fclose(file.release()) != 0)
        throwWriteFailure(path, lastStreamError());
}

}  // namespace corvane
