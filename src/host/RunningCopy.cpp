// The removal of a running copy of the program.
#include "host/RunningCopy.h"

#include <algorithm>

#include "base/DebugLog.h"
#include "base/RunContext.h"
#include "foundation/TextLines.h"
#include "host/Paths.h"
#include "host/TempFiles.h"
#include "host/WinInitRenamer.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

void debugLine(const String& text) {
    if (runContext().debugLogEnabled)
        debugLogLine(text);
}

void leaveWinInitNote(const String& exe, const String& directory) {
    debugLine("Launcher: Writing to wininit.ini to cleanup");
    WinInitRenamer renamer;
    renamer.addDeleteLine(exe.cstr());
    renamer.addDeleteLine(directory.cstr());
    renamer.flush();
}

// False when the system refuses, as it does for a user who may not write the machine's registry.
bool deleteAtNextBoot(const String& exe, const String& directory) {
    debugLine("Launcher: Reboot in progress, using MoveFileEx to cleanup file: " + exe);
    return MoveFileExA(exe.cstr(), nullptr, MOVEFILE_DELAY_UNTIL_REBOOT) != 0 &&
           MoveFileExA(directory.cstr(), nullptr, MOVEFILE_DELAY_UNTIL_REBOOT) != 0;
}

// The batch file of a temporary file's name. As long as that file is there, no other launcher gets
// the name.
String batchBeside(String name) {
    return name.erase(name.rfind('.')).append(".bat");
}

// A temporary file whose batch file is still to be made.
String freeBatchName() {
    constexpr int tries = 50;
    String name = createTempFile();
    for (int i = 0; i < tries && exists(batchBeside(name)); ++i) {
        DeleteFileA(name.cstr());
        forgetTempFile(name);
        name = createTempFile();
    }
    forgetTempFile(name);
    debugLine("Launcher: Cleanup batch file called: " + name);
    return name;
}

// The path as a batch file can hold it: the command processor reads batch files in another code
// page than this program writes in, so a path beyond ASCII goes in by its short name.
String batchPath(const String& path) {
    const bool ascii = std::none_of(path.view().begin(), path.view().end(),
                                    [](char c) { return static_cast<unsigned char>(c) > 0x7F; });
    // A single percent sign would open the name of a variable.
    return replaceAll(ascii ? path : shortPath(path), "%", "%%");
}

// False when it can't be written whole: half a batch file could delete something else.
bool writeBatchFile(const String& batch, const String& exe, const String& directory) {
    const StreamGuard file(openStream(batch.cstr(), "w"));
    if (!file)
        return false;
    const auto echo = [&](const String& text) {
        if (runContext().debugLogEnabled)
            writeLine(file.get(), "@echo " + text + " from within batch file. >> " +
                                      replaceAll(runContext().debugLogPath, "%", "%%"));
    };
    const String program = batchPath(exe);
    writeLine(file.get(), ":Repeat");
    echo("Deleting " + program);
    writeLine(file.get(), "del \"" + program + "\"");
    writeLine(file.get(), "if exist \"" + program + "\" goto Repeat");
    if (!directory.empty())
        writeLine(file.get(), "rmdir /q \"" + batchPath(directory) + "\"");
    writeLine(file.get(), "del \"" + batchPath(batch) + "\"");
    echo("Deleted batch file " + replaceAll(batch, "%", "%%"));
    return std::fflush(file.get()) == 0 && std::ferror(file.get()) == 0;
}

// How the batch file is started: by what command line, and in which directory, which it doesn't
// remove.
struct BatchStart {
    String command;
    String directory;
};

// The system's command processor takes what stands between two percent signs of a command line for
// a variable, so a path with one isn't named to it, and it starts where the file lies.
BatchStart batchStart(const String& batch) {
    char processor[2 * MAX_PATH] = "";
    const bool harmless = batch.find('%') == String::npos;
    if (harmless || batchProcessor(processor, sizeof processor) == 0)
        return {"\"" + batch + "\"", "\\"};
    return {String(processor) + "\".\\" + lastPathComponent(batch) + "\"", parentDirectory(batch)};
}

// Starts the batch file so that this process ends before it gets far: it runs idle, and what is
// left of this process runs ahead of everything.
void startBatchFile(const String& batch) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    PROCESS_INFORMATION child{};
    BatchStart start = batchStart(batch);
    if (!CreateProcessA(nullptr, start.command.mutableAt(0), nullptr, nullptr, FALSE,
                        CREATE_SUSPENDED | CREATE_NEW_CONSOLE | IDLE_PRIORITY_CLASS, nullptr,
                        start.directory.cstr(), &startup, &child))
        return;
    const HandleGuard thread(child.hThread);
    SetThreadPriority(thread.get(), THREAD_PRIORITY_IDLE);
    SetThreadPriority(GetCurrentThread(), THREAD_PRIORITY_TIME_CRITICAL);
    SetPriorityClass(GetCurrentProcess(), HIGH_PRIORITY_CLASS);
    CloseHandle(child.hProcess);
    ResumeThread(thread.get());
}

}  // namespace

void removeRunningCopy() {
    const String exe = runContext().launcherPath;
    const String directory = parentDirectory(exe);
    if (runContext().win9xFamily) {
        leaveWinInitNote(exe, directory);
        return;
    }
    if (runContext().sessionEnding && deleteAtNextBoot(exe, directory))
        return;
    const String name = freeBatchName();
    const String batch = batchBeside(name);
    const bool written = writeBatchFile(batch, exe, directory);
    removeTreePatiently(name);
    if (written)
        startBatchFile(batch);
    else
        DeleteFileA(batch.cstr());
}

}  // namespace corvane
