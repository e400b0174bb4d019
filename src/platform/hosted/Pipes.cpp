// Anonymous pipes, and reading from them and from files.
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>

#include "platform/hosted/Errors.h"
#include "platform/hosted/Faults.h"
#include "platform/hosted/Handles.h"
#include "platform/hosted/ProcessOperations.h"

using namespace corvane::hosted;

namespace {

// Bytes that a child may be ahead of the launcher; more gained nothing in measurements.
constexpr int pipeCapacity = 1 << 18;
constexpr int catchUpMilliseconds = 2;

// Bytes in a pipe; none at its end, when it is empty and no writer is left. A reader that is faster
// than its writer would find the pipe empty again and again, and pause each time: while data flows,
// the next of it gets a moment.
std::optional<DWORD> bytesIn(StreamResource& stream) {
    const int pipe = stream.descriptor.get();
    int count = 0;
    if (stream.flowing) {
        ioctl(pipe, FIONREAD, &count);
    }
    if (count == 0) {
        pollfd state{pipe, POLLIN, 0};
        poll(&state, 1, stream.flowing ? catchUpMilliseconds : 0);
        stream.flowing = (state.revents & POLLIN) != 0;
        if (stream.flowing) {
            ioctl(pipe, FIONREAD, &count);
        } else if ((state.revents & POLLHUP) != 0) {
            return std::nullopt;
        }
    }
    return static_cast<DWORD>(count);
}

// The standard handles count as files.
bool isPipe(HANDLE handle) {
    const auto* const stream = dynamic_cast<StreamResource*>(resourceOf(handle));
    return stream != nullptr && stream->pipe;
}

// For the out parameters that callers may leave out.
void store(LPDWORD target, DWORD value) {
    if (target != nullptr) {
        *target = value;
    }
}

}  // namespace

BOOL CreatePipe(PHANDLE readEnd, PHANDLE writeEnd, LPSECURITY_ATTRIBUTES /*security*/,
                DWORD /*size*/) {
    if (injectedFailure(__func__)) {
        return FALSE;
    }
    Pipe pipe;
    if (!makePipe(pipe)) {
        return failWithErrno();
    }
    // A reader that polls finds more in a wide pipe after each of its pauses. A hint, no more.
    fcntl(pipe.readEnd.get(), F_SETPIPE_SZ, pipeCapacity);
    *readEnd = openHandle(std::make_unique<StreamResource>(std::move(pipe.readEnd), true));
    *writeEnd = openHandle(std::make_unique<StreamResource>(std::move(pipe.writeEnd), true));
    return TRUE;
}

BOOL PeekNamedPipe(HANDLE pipe, LPVOID buffer, DWORD /*size*/, LPDWORD read, LPDWORD available,
                   LPDWORD left) {
    if (injectedFailure(__func__)) {
        return FALSE;
    }
    // A pipe of the host can be asked how much it holds, but its bytes only be taken.
    if (buffer != nullptr) {
        return fail(ERROR_INVALID_PARAMETER);
    }
    auto* const stream = handleAs<StreamResource>(pipe);
    if (stream == nullptr || !stream->pipe) {
        return fail(ERROR_INVALID_HANDLE);
    }
    const auto count = bytesIn(*stream);
    if (!count) {
        return fail(ERROR_BROKEN_PIPE);
    }
    store(read, 0);
    store(available, *count);
    store(left, 0);
    return TRUE;
}

// A read that meets the end gives 0 bytes on the host for files and pipes alike.
BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD size, LPDWORD read, LPOVERLAPPED /*overlapped*/) {
    if (injectedFailure(__func__)) {
        return FALSE;
    }
    store(read, 0);
    const int descriptor = streamDescriptor(file);
    if (descriptor < 0) {
        return FALSE;
    }
    ssize_t count = 0;
    do {
        count = ::read(descriptor, buffer, size);
    } while (count < 0 && errno == EINTR);
    if (count < 0) {
        return failWithErrno();
    }
    if (count == 0 && isPipe(file)) {
        return fail(ERROR_BROKEN_PIPE);
    }
    store(read, static_cast<DWORD>(count));
    return TRUE;
}
