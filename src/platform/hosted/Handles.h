// What stands behind a HANDLE: a table of resources under ever new numbers, so that a closed or
// invented handle is found out (error 6) and not followed.
#pragma once

#include <sys/types.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/hosted/SystemOperations.h"

namespace corvane::hosted {

// Owns a file descriptor; -1 is none.
class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor() { close(); }

    int get() const { return number_; }
    explicit operator bool() const { return number_ >= 0; }
    int release() { return std::exchange(number_, -1); }
    // Keeps errno.
    void close() noexcept;

  private:
    int number_ = -1;
};

struct Pipe {
    Descriptor readEnd;
    Descriptor writeEnd;
};

// Makes a pipe whose ends no other program inherits; false with errno on failure.
bool makePipe(Pipe& pipe);

// Opens a host file with open's flags, closed in children. Fails, with errno, for a directory
// (EISDIR) and for writing to a file marked read-only (EACCES), also where the host would allow it.
Descriptor openHostFile(const std::string& path, int flags, mode_t mode);

// The bytes of a host file; none, with errno, if it can't be read to its end.
std::optional<std::string> readHostFile(const std::string& path);

// Base of everything a handle can stand for.
struct Resource {
    virtual ~Resource() = default;
};

// An open file or one end of a pipe.
struct StreamResource final : Resource {
    StreamResource(Descriptor file, bool isPipe) : descriptor(std::move(file)), pipe(isPipe) {}
    Descriptor descriptor;
    bool pipe;
    bool flowing = false;  // the last look into the pipe found data
};

// Puts a resource under a new handle, which CloseHandle takes off again.
HANDLE openHandle(std::unique_ptr<Resource> resource);

// The resource of a handle, valid until the handle is closed; null, with error 6, if it isn't open.
Resource* resourceOf(HANDLE handle);

// The same for one kind of resource; error 6 also for another kind.
template <class Kind>
Kind* handleAs(HANDLE handle) {
    auto* const resource = dynamic_cast<Kind*>(resourceOf(handle));
    if (resource == nullptr) {
        SetLastError(ERROR_INVALID_HANDLE);
    }
    return resource;
}

// The descriptor of a file, pipe or standard handle, or -1 with error 6. It stays the handle's.
int streamDescriptor(HANDLE handle);

}  // namespace corvane::hosted
