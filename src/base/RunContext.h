// `RunContext`, the one record of a run that every floor may read. Its comments say who writes it.
#pragma once

#include <atomic>
#include <cstdint>

#include "foundation/ObjectArray.h"
#include "foundation/Owned.h"
#include "foundation/String.h"
#include "foundation/StringList.h"

namespace corvane {

class LauncherFile;
class LauncherUI;

// Set by the dialog procedure when the user closes the dialog, and by a request to end the process;
// polled by long operations on the run's thread, never reset. A late read only delays the cancel,
// so no order is asked.
class CancelFlag {
  public:
    void request() noexcept { flag_.store(true, std::memory_order_relaxed); }
    operator bool() const noexcept;

  private:
    std::atomic<bool> flag_ = false;
};

// Why a home that the search came upon won't do. Without a property it reports nothing: its Java
// doesn't start, or is none.
struct Refusal {
    String home;
    String property;
    String wanted;
    String found;
};

struct RunContext {
    // The process. Written by `launcherMain` before any other thread exists.
    bool win9xFamily = false;
    bool debugLogEnabled = false;
    String debugLogPath;
    void* moduleHandle = nullptr;  // where the string-table texts come from
    LauncherUI* ui = nullptr;      // owned by `launcherMain`
    bool isTool = false;           // the launcher behaves as the command-line tool that it starts

    // For the pack tool, which plays runs; null in a launcher. What is called in the place of a
    // start of the application, an installer or another launcher. No question is put to the user
    // then, and no home is remembered; candidates are asked.
    void (*playStart)(const String& commandLine, const String& directory) = nullptr;

    // The windowed front end; nobody else uses these.
    void* mainWindow = nullptr;
    void* dialogWindow = nullptr;
    void* workerThread = nullptr;
    std::int32_t windowedExitValue = 0;  // handed from the worker to the message loop
    String windowClassName;
    bool workerPending = true;
    std::uint32_t hideTimerId = 1;
    std::uint32_t tickTimerId = 2;

    // The launcher itself. Written by the run driver.
    String launcherPath;                 // this executable; embedded files are read from it
    String originalLauncherPath;         // the same, unless `-cv:orig` names another
    bool originalLauncherGiven = false;  // this is the embedded child of another launcher
    StringList originalArgs;             // all arguments behind the program name
    Owned<LauncherFile> launcherFile;    // made by whoever makes the process (or a test)
    std::int32_t trailerOffset = 0;      // end of the trailer relative to the end of the file
    std::int32_t launcherKindCache = -1;

    // Options and input file. Written by the option loop.
    String logFile;  // empty: no log
    bool logHeaderWritten = false;
    String reportFile;  // empty: no report
    bool reportStarted = false;
    std::uint64_t startTick = 0;  // of the run, by the clock of GetTickCount64
    String tempDir;               // filled by the first use if no option named one
    String javaHome;
    String classpathPrepend;
    String classpathAppend;
    StringList passThroughArgs;  // for the Java application
    bool showChildConsole = false;
    bool silent = false;
    bool inputFileGiven = false;

    // State of the run.
    CancelFlag cancelRequested;
    // The system is about to shut down or log the user off; set by the main thread, too.
    std::atomic<bool> sessionEnding = false;
    // The application that ran when the run was asked to end has given the exit value.
    bool endAnswered = false;
    String childStdOut;  // of the latest launch
    String childStdErr;
    String applicationArchive;           // where it was extracted to
    String classPath;                    // of the latest launch
    std::int32_t numericVariables[5]{};  // N1 to N5
    String stringVariables[10];          // S1 to S10
    ListOf<Refusal> refusals;            // of the latest search, no more than can be shown
    std::int32_t stageMessageId = -1;
    std::int32_t detailMessageId = -1;
    std::uint32_t statusKind = 0;
    String statusDetail;
    // To delete at exit, in order of creation; several threads touch them, by the operations of
    // host/TempFiles.h, which hold a lock.
    StringList tempFiles;
    StringList tempDirs;
};

// The record of the current run; there is one from before `main` to the end of the process.
RunContext& runContext() noexcept;

// Puts `context` in the place of the current record and gives that back. For tests, which want a
// fresh record for a scope; the caller owns both.
RunContext& exchangeRunContext(RunContext& context) noexcept;

}  // namespace corvane
