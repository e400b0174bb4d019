// Copying of one embedded file to disk.
#include "launcherfile/Extraction.h"

#include <algorithm>
#include <cerrno>
#include <limits>

#include "base/FileErrors.h"
#include "base/Log.h"
#include "base/Messages.h"
#include "base/RunContext.h"
#include "base/Ui.h"
#include "foundation/Exceptions.h"
#include "foundation/TextLines.h"
#include "launcherfile/FileIndexEntry.h"
#include "launcherfile/PackedRecord.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

constexpr std::size_t copyBlock = 0xEFFF;

// The root of the drive on which `directory` lies.
String driveRoot(const String& directory) {
    if (directory.length() > 3 && directory.at(1) == ':' && directory.at(2) == '\\')
        return directory.substr(0, 3);
    return String(1, static_cast<char>('A' - 1 + _getdrive())).append(":\\");
}

std::uint32_t clustersNeeded(std::uint32_t size, std::uint32_t clusterSize,
                             std::int32_t fileCount) {
    const std::uint32_t whole = size / clusterSize;
    if (fileCount > 1)
        return whole + static_cast<std::uint32_t>(fileCount);
    return fileCount == 1 && size % clusterSize != 0 ? whole + 1 : whole;
}

// Writes one block through to the file. The error number is 0 on success.
StreamError writeBlock(std::FILE* output, const char* block, std::size_t size) {
    errno = 0;
    const bool written = std::fwrite(block, 1, size, output) == size && std::fflush(output) == 0;
    return written ? StreamError{} : lastStreamError();
}

// Copies up to `length` bytes, one progress tick per block, until the input ends, a write fails or
// the user cancels. The error number is that of the failed write, 0 if there was none.
StreamError copyBlocks(std::FILE* input, std::FILE* output, std::size_t length) {
    const auto block = std::make_unique_for_overwrite<char[]>(copyBlock);
    StreamError error;
    while (length > 0 && error.number == 0 && !runContext().cancelRequested) {
        const std::size_t wanted = std::min(length, copyBlock);
        const std::size_t size = std::fread(block.get(), 1, wanted, input);
        if (size == 0)
            break;
        error = writeBlock(output, block.get(), size);
        uiStepProgress(1);
        length -= size;
    }
    return error;
}

}  // namespace

String FileIndexEntry::extract(const String& directory) const {
    // Without decompressed information both of its numbers are 0.
    const std::uint32_t size =
        static_cast<std::uint32_t>(length) + static_cast<std::uint32_t>(decompressedSize);
    constexpr std::int32_t mostFiles = std::numeric_limits<std::int32_t>::max();
    if (!hasDiskSpace(directory, size, std::min(decompressedFileCount, mostFiles - 1) + 1))
        throw LauncherException(loadMessage(MessageId::writeFailed) +
                                loadMessage(MessageId::tryAnotherTempDir));
    String path = directory;
    ensureTrailingSeparator(path);
    path.append(name);
    StreamError error;
    {
        const StreamGuard input(openStream(runContext().launcherPath.cstr(), "rb"));
        if (!input || std::setvbuf(input.get(), nullptr, _IONBF, 0) != 0 ||
            std::fseek(input.get(), offset, SEEK_SET) != 0)
            throw LauncherException("Cannot open launcher file.");
        const StreamGuard output(openStream(path.cstr(), "wb"));
        // Blocks go past the streams' own buffers, whole.
        if (output)
            std::setvbuf(output.get(), nullptr, _IONBF, 0);
        error = output ? copyBlocks(input.get(), output.get(), static_cast<std::size_t>(length))
                       : lastStreamError();
        checkRead(input.get(), runContext().launcherPath);
        // A launcher that has lost its end since the start of the run.
        if (std::feof(input.get()) != 0)
            checkPackedRecord();
    }
    if (error.number != 0)
        throwWriteFailure(path, error);
    if (runContext().cancelRequested)
        throw LauncherException(loadMessage(MessageId::canceled));
    if (type == FileType::jvmInstaller || type == FileType::embeddedLauncher)
        makeExecutable(path.cstr());
    return path;
}

bool hasDiskSpace(const String& directory, std::uint32_t size, std::int32_t fileCount) {
    DWORD sectorsPerCluster = 0;
    DWORD bytesPerSector = 0;
    DWORD freeClusters = 0;
    DWORD totalClusters = 0;
    const String root = driveRoot(directory);
    if (!GetDiskFreeSpaceA(root.cstr(), &sectorsPerCluster, &bytesPerSector, &freeClusters,
                           &totalClusters))
        throwSystemError("GetDiskFreeSpace failed  ==>  ", GetLastError(), root);
    const DWORD clusterSize = bytesPerSector * sectorsPerCluster;
    const double needed = double{1} * clustersNeeded(size, clusterSize, fileCount) * clusterSize;
    return double{1} * freeClusters * clusterSize >= needed;
}

bool fileExists(const String& path) {
    const FileGuard file(CreateFileA(path.cstr(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                     FILE_ATTRIBUTE_NORMAL, nullptr));
    if (file)
        return true;
    const DWORD code = GetLastError();
    if (code == ERROR_SHARING_VIOLATION)
        return true;
    if (code != ERROR_FILE_NOT_FOUND && code != ERROR_PATH_NOT_FOUND)
        logMessage(systemErrorText(code, path));
    return false;
}

}  // namespace corvane
