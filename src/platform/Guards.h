// Owners for what the system hands out and wants back: handles, finds, keys, blocks, streams and
// locks. All but the last are one move-only template; the type says how its resource is closed and
// which value means "none".
#pragma once

#include <cerrno>
#include <cstdio>
#include <utility>

#include "platform/System.h"

namespace corvane {

// Owns at most one resource of `Policy::Value`. Closing, by the destructor, `reset`, `put` or an
// assignment, leaves the last error as it was, so that a failure can still be reported after it.
template <class Policy>
class Guard {
  public:
    using Value = typename Policy::Value;

    Guard() noexcept = default;
    // Takes the ownership of `value`, which may be the empty value.
    explicit Guard(Value value) noexcept : value_(value) {}
    Guard(Guard&& other) noexcept : value_(other.release()) {}
    ~Guard() { reset(); }

    Guard& operator=(Guard&& other) noexcept {
        reset(other.release());  // also right for itself
        return *this;
    }

    // The resource, which stays with the guard.
    Value get() const noexcept { return value_; }
    explicit operator bool() const noexcept { return value_ != Policy::none(); }

    // Address for an out parameter; what was held before is closed.
    [[nodiscard]] Value* put() noexcept {
        reset();
        return &value_;
    }

    // Gives the resource away; the guard is empty then.
    [[nodiscard]] Value release() noexcept { return std::exchange(value_, Policy::none()); }

    // Closes what is held and takes `value` in its place.
    void reset(Value value = Policy::none()) noexcept {
        const Value old = std::exchange(value_, value);
        if (old != Policy::none() && old != value) {
            const DWORD error = GetLastError();
            Policy::close(old);
            SetLastError(error);
        }
    }

  private:
    Value value_ = Policy::none();
};

// The two values that mean "none".
template <class Resource>
struct NullIsNone {
    using Value = Resource;
    static Value none() noexcept { return nullptr; }
};
struct InvalidIsNone {
    using Value = HANDLE;
    static Value none() noexcept { return INVALID_HANDLE_VALUE; }
};

// Processes, threads, pipe ends, mappings.
struct HandlePolicy : NullIsNone<HANDLE> {
    static void close(Value handle) noexcept { CloseHandle(handle); }
};
using HandleGuard = Guard<HandlePolicy>;

// Files, for which a failed CreateFileA gives INVALID_HANDLE_VALUE.
struct FilePolicy : InvalidIsNone {
    static void close(Value handle) noexcept { CloseHandle(handle); }
};
using FileGuard = Guard<FilePolicy>;

// Directory listings, which have a close operation of their own.
struct FindPolicy : InvalidIsNone {
    static void close(Value handle) noexcept { FindClose(handle); }
};
using FindGuard = Guard<FindPolicy>;

// Registry keys.
struct KeyPolicy : NullIsNone<HKEY> {
    static void close(Value key) noexcept { RegCloseKey(key); }
};
using KeyGuard = Guard<KeyPolicy>;

// Text blocks that FormatMessageA allocates.
struct LocalPolicy : NullIsNone<char*> {
    static void close(Value block) noexcept { LocalFree(block); }
};
using LocalGuard = Guard<LocalPolicy>;

// Streams of the standard library; their errno outlives the close as the last error does.
struct StreamPolicy : NullIsNone<std::FILE*> {
    static void close(Value stream) noexcept {
        const int error = errno;
        std::fclose(stream);
        errno = error;
    }
};
using StreamGuard = Guard<StreamPolicy>;

// Holds a lock for a scope. The lock starts as SRWLOCK_INIT and needs no end; the thread that holds
// it must not take it again.
class LockGuard {
  public:
    explicit LockGuard(SRWLOCK& lock) noexcept : lock_(lock) { AcquireSRWLockExclusive(&lock_); }
    LockGuard(const LockGuard&) = delete;
    LockGuard& operator=(const LockGuard&) = delete;
    ~LockGuard() { ReleaseSRWLockExclusive(&lock_); }

  private:
    SRWLOCK& lock_;
};

}  // namespace corvane
