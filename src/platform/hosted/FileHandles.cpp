// Open files: CreateFileA, the file position and mapped views.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <map>

#include "platform/hosted/Errors.h"
#include "platform/hosted/Faults.h"
#include "platform/hosted/FileOperations.h"
#include "platform/hosted/Handles.h"
#include "platform/hosted/Paths.h"

using namespace corvane::hosted;

namespace {

// What CreateFileMappingA made: a file and how much of it can be seen.
struct MappingResource final : Resource {
    MappingResource(Descriptor mapped, std::size_t length)
        : descriptor(std::move(mapped)), size(length) {}
    Descriptor descriptor;
    std::size_t size;
};

// Start and length of each mapped view.
std::map<LPCVOID, std::size_t>& views() {
    static auto& map = *new std::map<LPCVOID, std::size_t>;
    return map;
}

// A file that is opened to ask about it alone is opened for reading.
int accessFlags(DWORD access) {
    if ((access & GENERIC_WRITE) == 0) {
        return O_RDONLY;
    }
    return (access & GENERIC_READ) == 0 ? O_WRONLY : O_RDWR;
}

// Holds the file; what can't be locked at all is nobody's.
bool takeAlone(int file) {
    return flock(file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

// -1 for what isn't there to ask.
off_t fileSize(int file) {
    struct stat status {};
    return fstat(file, &status) == 0 ? status.st_size : -1;
}

// A 64-bit number from the halves in which Windows passes it.
off_t wide(DWORD high, DWORD low) {
    return static_cast<off_t>((std::uint64_t{high} << 32) | low);
}

DWORD lowHalf(off_t value) {
    return static_cast<DWORD>(value & 0xFFFFFFFF);
}

}  // namespace

HANDLE CreateFileA(LPCSTR path, DWORD access, DWORD /*shareMode*/,
                   LPSECURITY_ATTRIBUTES /*security*/, DWORD disposition, DWORD /*flags*/,
                   HANDLE /*templateFile*/) {
    const auto host = injectedFailure(__func__) ? std::nullopt : hostPath(path);
    if (!host) {
        return INVALID_HANDLE_VALUE;
    }
    // The opening never waits, as it would for the other end of a named pipe.
    const int creation = disposition == OPEN_ALWAYS ? O_CREAT : 0;
    Descriptor file = openHostFile(*host, accessFlags(access) | creation | O_NONBLOCK, 0666);
    if (!file) {
        failForPath(*host);
        return INVALID_HANDLE_VALUE;
    }
    // The lock goes with the descriptor, so closing the handle frees the file.
    if (!takeAlone(file.get())) {
        fail(ERROR_SHARING_VIOLATION);
        return INVALID_HANDLE_VALUE;
    }
    // Reading may wait again.
    fcntl(file.get(), F_SETFL, fcntl(file.get(), F_GETFL) & ~O_NONBLOCK);
    return openHandle(std::make_unique<StreamResource>(std::move(file), false));
}

DWORD GetFileSize(HANDLE file, LPDWORD high) {
    const int descriptor = injectedFailure(__func__) ? -1 : streamDescriptor(file);
    const off_t size = descriptor < 0 ? -1 : fileSize(descriptor);
    if (size < 0) {
        return INVALID_FILE_SIZE;
    }
    if (high != nullptr) {
        *high = lowHalf(size >> 32);
    }
    return lowHalf(size);
}

DWORD SetFilePointer(HANDLE file, LONG distance, PLONG high, DWORD origin) {
    const int descriptor = injectedFailure(__func__) ? -1 : streamDescriptor(file);
    if (descriptor < 0) {
        return INVALID_SET_FILE_POINTER;
    }
    if (high != nullptr || origin != FILE_BEGIN) {
        fail(ERROR_INVALID_PARAMETER);
        return INVALID_SET_FILE_POINTER;
    }
    const off_t position = lseek(descriptor, distance, SEEK_SET);
    if (position < 0) {
        fail(errno == EINVAL ? ERROR_NEGATIVE_SEEK : windowsCode(errno));
        return INVALID_SET_FILE_POINTER;
    }
    return lowHalf(position);
}

BOOL SetEndOfFile(HANDLE file) {
    const int descriptor = injectedFailure(__func__) ? -1 : streamDescriptor(file);
    if (descriptor < 0) {
        return FALSE;
    }
    const off_t position = lseek(descriptor, 0, SEEK_CUR);
    return position >= 0 && ftruncate(descriptor, position) == 0 ? TRUE : failWithErrno();
}

// A mapping larger than its file grows the file, if it may be written.
HANDLE CreateFileMappingA(HANDLE file, LPSECURITY_ATTRIBUTES /*security*/, DWORD protection,
                          DWORD sizeHigh, DWORD sizeLow, LPCSTR /*name*/) {
    const int descriptor = injectedFailure(__func__) ? -1 : streamDescriptor(file);
    if (descriptor < 0) {
        return nullptr;
    }
    const off_t present = fileSize(descriptor);
    const off_t size = sizeHigh == 0 && sizeLow == 0 ? present : wide(sizeHigh, sizeLow);
    if (size <= 0) {
        fail(ERROR_FILE_INVALID);
        return nullptr;
    }
    if (size > present && (protection != PAGE_READWRITE || ftruncate(descriptor, size) != 0)) {
        fail(protection == PAGE_READWRITE ? windowsCode(errno) : ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    // A mapping outlives the handle of its file.
    Descriptor kept(fcntl(descriptor, F_DUPFD_CLOEXEC, 0));
    return openHandle(
        std::make_unique<MappingResource>(std::move(kept), static_cast<std::size_t>(size)));
}

LPVOID MapViewOfFile(HANDLE mapping, DWORD access, DWORD offsetHigh, DWORD offsetLow,
                     SIZE_T count) {
    const auto* const mapped =
        injectedFailure(__func__) ? nullptr : handleAs<MappingResource>(mapping);
    if (mapped == nullptr) {
        return nullptr;
    }
    if (offsetHigh != 0 || offsetLow != 0 || count != 0) {
        fail(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    const int protection = (access & FILE_MAP_WRITE) != 0 ? PROT_READ | PROT_WRITE : PROT_READ;
    void* view = mmap(nullptr, mapped->size, protection, MAP_SHARED, mapped->descriptor.get(), 0);
    if (view == MAP_FAILED) {
        failWithErrno();
        return nullptr;
    }
    views()[view] = mapped->size;
    return view;
}

BOOL UnmapViewOfFile(LPCVOID view) {
    if (injectedFailure(__func__)) {
        return FALSE;
    }
    const auto found = views().find(view);
    if (found == views().end()) {
        return fail(ERROR_INVALID_ADDRESS);
    }
    munmap(const_cast<void*>(view), found->second);
    views().erase(found);
    return TRUE;
}
