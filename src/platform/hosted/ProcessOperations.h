// Windows' operations on child processes, pipes and waiting, and locks.
#pragma once

#include "platform/hosted/WindowsConstants.h"

// Starts a host program by its Windows command line; contract.md says how the program is found, how
// paths in its arguments and environment are turned into host form and which streams it gets. The
// caller closes both handles. No application name and no environment block: error 87.
BOOL CreateProcessA(LPCSTR application, LPSTR commandLine, LPSECURITY_ATTRIBUTES process,
                    LPSECURITY_ATTRIBUTES thread, BOOL inheritHandles, DWORD flags,
                    LPVOID environment, LPCSTR directory, LPSTARTUPINFOA startup,
                    LPPROCESS_INFORMATION information);
// Lets a child go on that was made with CREATE_SUSPENDED. Gives the former suspend count, or -1
// with the reason when its program can't be run.
DWORD ResumeThread(HANDLE thread);
// The child's exit status, 128 + n after signal n, STILL_ACTIVE while it runs.
BOOL GetExitCodeProcess(HANDLE process, LPDWORD exitCode);
// Ends a child at once, with this exit code; on the host with SIGKILL.
BOOL TerminateProcess(HANDLE process, UINT exitCode);
// Waits for the end of a child, by its process or its thread, at most so many milliseconds.
DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds);

// A job ends what is in it, and what that has started, on demand or with its handle. Only a child
// that is still suspended can be put into one. No name, and of the limits
// JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE alone: error 87.
HANDLE CreateJobObjectA(LPSECURITY_ATTRIBUTES security, LPCSTR name);
BOOL SetInformationJobObject(HANDLE job, DWORD kind, LPVOID information, DWORD size);
BOOL AssignProcessToJobObject(HANDLE job, HANDLE process);
BOOL TerminateJobObject(HANDLE job, UINT exitCode);

// Both ends stay with the launcher; a child gets only what its STARTUPINFOA names.
BOOL CreatePipe(PHANDLE readEnd, PHANDLE writeEnd, LPSECURITY_ATTRIBUTES security, DWORD size);
// Bytes that can be read at once. While data flows, an empty pipe gets 2 ms for the next of it;
// otherwise the call doesn't wait. `buffer` must be null. Error 109 once the pipe is empty and no
// writer is left.
BOOL PeekNamedPipe(HANDLE pipe, LPVOID buffer, DWORD size, LPDWORD read, LPDWORD available,
                   LPDWORD left);
// Reads at most `size` bytes of a pipe or a file. The end of a pipe is error 109, the end of a file
// a success with 0 bytes.
BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD size, LPDWORD read, LPOVERLAPPED overlapped);
// One of the launcher's own streams; closing it changes nothing.
HANDLE GetStdHandle(DWORD which);

// The time of day at Greenwich.
void GetSystemTime(LPSYSTEMTIME time);

// Milliseconds of a clock that nobody sets.
ULONGLONG GetTickCount64();

void Sleep(DWORD milliseconds);
DWORD SleepEx(DWORD milliseconds, BOOL alertable);

// A lock among the threads of this process, which its holder must not take again.
void AcquireSRWLockExclusive(PSRWLOCK lock);
void ReleaseSRWLockExclusive(PSRWLOCK lock);

// Priorities are accepted and change nothing on the host.
HANDLE GetCurrentProcess();
HANDLE GetCurrentThread();
BOOL SetThreadPriority(HANDLE thread, int priority);
BOOL SetPriorityClass(HANDLE process, DWORD priorityClass);
