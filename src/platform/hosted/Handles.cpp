// The table of handles, and the descriptors under them.
#include "platform/hosted/Handles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <unordered_map>

#include "platform/hosted/Errors.h"
#include "platform/hosted/Faults.h"
#include "platform/hosted/FileOperations.h"
#include "platform/hosted/ProcessOperations.h"

namespace corvane::hosted {

namespace {

// A launcher started without standard streams would get a file as its standard output, and print
// into it. So these three are open before anything else can be.
[[maybe_unused]] const bool standardStreamsOpen = [] {
    int number = open("/dev/null", O_RDWR);
    while (number >= 0 && number <= STDERR_FILENO) {
        number = open("/dev/null", O_RDWR);
    }
    close(number);
    return true;
}();

// Numbers are never used twice, so that a stale handle can't meet a new resource.
struct HandleTable {
    std::unordered_map<DWORD_PTR, std::unique_ptr<Resource>> resources;
    DWORD_PTR last = 0;
};

// Never destroyed: the guards of other statics may close their handles late.
HandleTable& handleTable() {
    static HandleTable& table = *new HandleTable;
    return table;
}

DWORD_PTR numberOf(HANDLE handle) {
    return reinterpret_cast<DWORD_PTR>(handle);
}

// A standard handle is its own number, as small and negative as its selector.
HANDLE standardHandle(int descriptor) {
    return reinterpret_cast<HANDLE>(LONG_PTR{-10} - descriptor);
}

// The descriptor of a standard handle, -1 for any other.
int standardDescriptor(HANDLE handle) {
    for (int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (handle == standardHandle(descriptor)) {
            return descriptor;
        }
    }
    return -1;
}

// Devices and pipes have no mark.
bool isReadOnlyFile(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           (status.st_mode & S_IWUSR) == 0;
}

}  // namespace

void Descriptor::close() noexcept {
    if (number_ >= 0) {
        const int error = errno;
        ::close(release());
        errno = error;
    }
}

bool makePipe(Pipe& pipe) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return false;
    }
    pipe = {Descriptor(ends[0]), Descriptor(ends[1])};
    return true;
}

// The two tests hold for every user: the host lets the superuser write what is marked read-only,
// and anyone open a directory for reading.
Descriptor openHostFile(const std::string& path, int flags, mode_t mode) {
    // With O_EXCL a file of that name fails for being there, not for its mark.
    const bool forExisting = (flags & O_EXCL) == 0;
    if (forExisting && (flags & O_ACCMODE) != O_RDONLY && isReadOnlyFile(path)) {
        errno = EACCES;
        return Descriptor();
    }
    Descriptor file(open(path.c_str(), flags | O_CLOEXEC, mode));
    struct stat status {};
    if (file && fstat(file.get(), &status) == 0 && S_ISDIR(status.st_mode)) {
        file.close();
        errno = EISDIR;
    }
    return file;
}

std::optional<std::string> readHostFile(const std::string& path) {
    const Descriptor file = openHostFile(path, O_RDONLY, 0);
    std::string content;
    char buffer[4096];
    ssize_t count = -1;
    while (file && (count = read(file.get(), buffer, sizeof buffer)) > 0) {
        content.append(buffer, static_cast<std::size_t>(count));
    }
    return count < 0 ? std::nullopt : std::optional(content);
}

HANDLE openHandle(std::unique_ptr<Resource> resource) {
    HandleTable& table = handleTable();
    // Windows' handles are multiples of four.
    table.last += 4;
    table.resources.emplace(table.last, std::move(resource));
    return reinterpret_cast<HANDLE>(table.last);
}

Resource* resourceOf(HANDLE handle) {
    const auto& resources = handleTable().resources;
    const auto found = resources.find(numberOf(handle));
    if (found == resources.end()) {
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }
    return found->second.get();
}

int streamDescriptor(HANDLE handle) {
    const int standard = standardDescriptor(handle);
    if (standard >= 0) {
        return standard;
    }
    const auto* const stream = handleAs<StreamResource>(handle);
    return stream == nullptr ? -1 : stream->descriptor.get();
}

}  // namespace corvane::hosted

using namespace corvane::hosted;

HANDLE GetStdHandle(DWORD which) {
    if (injectedFailure(__func__)) {
        return INVALID_HANDLE_VALUE;
    }
    // The selectors are -10, -11 and -12 as unsigned numbers.
    const DWORD descriptor = STD_INPUT_HANDLE - which;
    if (descriptor > STDERR_FILENO) {
        fail(ERROR_INVALID_HANDLE);
        return INVALID_HANDLE_VALUE;
    }
    return standardHandle(static_cast<int>(descriptor));
}

BOOL CloseHandle(HANDLE handle) {
    if (injectedFailure(__func__)) {
        return FALSE;
    }
    // The standard handles are none of the table: the launcher goes on writing to its streams.
    return handleTable().resources.erase(numberOf(handle)) != 0 ? TRUE : fail(ERROR_INVALID_HANDLE);
}
