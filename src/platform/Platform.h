// The one header through which the launcher reaches the operating system: Windows' operations under
// their own names on both builds, guards for what they hand out, and the few operations of our own
// that Windows has no name for. What callers rely on stands in contract.md beside this file.
#pragma once

#include <cstdio>
#include <string>

#include "platform/Guards.h"
#include "platform/System.h"

namespace corvane {

// Opens a file as a stream of the standard library. `path` is what every operation takes as a path
// (a Windows path; on the host also an absolute host path), `mode` a mode of fopen. The caller
// closes the stream. Null on failure, with the reason in errno.
std::FILE* openStream(const char* path, const char* mode);

// Why an operation on a stream failed.
struct StreamError {
    int number = 0;     // the standard library's
    unsigned code = 0;  // the system's
};

// The reason of a failure that has just been found, by errno, which nothing has changed since.
StreamError lastStreamError();

// Marks a file as a program where files carry such a mark; does nothing on Windows. False, with the
// reason as the last error, when the file can't be marked.
bool makeExecutable(const char* path);

// Lays a symbolic link to `target`, which is taken from the link's own directory and has slashes.
// False, with the reason as the last error; always on Windows, where few users may.
bool makeLink(const char* target, const char* path);

// Whether the system takes a command line as long as this one is.
bool commandLineFits(const char* commandLine);

// The place of a file or directory with all links on the way resolved, in a form that serves for
// comparisons alone. Gives its length; 0 if that can't be told or the buffer is too small.
DWORD finalPath(const char* path, LPSTR buffer, DWORD size);

// What is called with each of several texts. It refers to a callable object that outlives it,
// and the texts are valid for as long as it runs. The product does without the library's texts and
// lists, whose code would take a tenth of it.
class TextTaker {
  public:
    template <class Take>
    TextTaker(const Take& take)  // NOLINT(google-explicit-constructor): for the sake of lambdas
        : take_(&take), call_([](const void* object, const char* text) {
              (*static_cast<const Take*>(object))(text);
          }) {}
    void operator()(const char* text) const { call_(take_, text); }

  private:
    const void* take_;
    void (*call_)(const void* object, const char* text);
};

// The arguments of a command line, without the program, as a child reads them from a file: in the
// system's ANSI code page, whatever this program's own is; on the host with paths in host form.
void forEachFileArgument(const char* commandLine, TextTaker take);

// The beginning of a command line by which the system's command processor runs a file; empty where
// CreateProcessA runs batch files without one. Gives its length, 0 if the buffer is too small.
DWORD batchProcessor(LPSTR buffer, DWORD size);

// From here on the program loads libraries from the system's directory alone, where the system has
// such a rule. The first act of the process, since whoever can place a file beside the program
// could otherwise have it loaded. Does nothing on the host.
void restrictLibraryLoading();

// From here on a request to end no longer ends the process but is counted, for the run to end by
// itself: Ctrl-C, Ctrl-Break, the closing of the console, a log-off, a shutdown; on the host
// SIGINT, SIGTERM and SIGHUP, unless the launcher was started with the signal ignored. A write to a
// pipe that nobody reads any more is a failed write on every system from here on.
void watchEndRequests();

// The requests so far. From any thread.
int endRequests() noexcept;

// The exit value of a program that such a request ends: 0xC000013A; on the host 128 + the signal.
// 0 without a request.
DWORD endRequestValue() noexcept;

// The system ends the process in some seconds, whatever it does: the last request was none from the
// keyboard. Never on the host.
bool endIsNear() noexcept;

// Hands the last request on to a child that was started with this process's console or (`detached`)
// without, as far as the system hasn't done so: a detached one's windows are asked to close, and a
// host child gets the signal that was sent to this process alone.
void requestChildEnd(const PROCESS_INFORMATION& child, bool detached);

// What a report says of the machine.
struct SystemFacts {
    char system[160];          // as "Windows 10.0.19045", "Linux 6.1.0"
    char locale[64];           // of the user, as "de-DE"; empty if none is set
    unsigned codePage;         // of texts
    unsigned consoleCodePage;  // of the console's output, 0 without a console
};
SystemFacts systemFacts();

// Gives directories that may hold Java executables on this platform, as Windows paths, each one
// once and existing. None on Windows; on the host the `bin` directory of the environment's
// JAVA_HOME, then those under /usr/lib/jvm in alphabetical order.
void forEachPlatformJvmPath(TextTaker take);

// Turns what divides the paths of a list in the system's own environment variables into semicolons:
// on the host the colons that stand behind no drive's letter. Does nothing on Windows.
void divideBySemicolons(char* paths);

// The path as the standard library's own file operations take it: on the host the host's path, on
// Windows the same. For programs around the launcher, such as the pack tool and the tests.
std::string nativePath(const char* path);

// From here on the standard library writes bytes to standard output as they are. For the same
// programs.
void setBinaryOutput();

// A program that is marked as one without a console takes part in the console it was started from,
// and its streams lead there unless they were redirected. Does nothing for other programs, where
// there is no such console, and on the host.
void joinConsole();

// Writes a text to standard output, at once. A console shows its letters, whatever code page it is
// set to; that page is left alone, since the programs started in the console go by it. A file or a
// pipe gets the bytes, with the system's line ends. Failures aren't told.
void writeOutput(const char* text);

// The same to standard error.
void writeErrorOutput(const char* text);

// The next byte of standard input in the ANSI code page; EOF at the end. Typed on a console, any
// letter of that page arrives, whatever page the console is set to; from a file or a pipe bytes
// come as they are.
int readInput();

}  // namespace corvane
