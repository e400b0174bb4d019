// Temporary directories and files, and the cleanup at exit.
#include "host/TempFiles.h"

#include "base/DebugLog.h"
#include "base/Log.h"
#include "base/Messages.h"
#include "base/RunContext.h"
#include "foundation/Exceptions.h"
#include "foundation/StringList.h"
#include "foundation/TextLines.h"
#include "host/DirectoryWalker.h"
#include "host/Paths.h"
#include "host/RunningCopy.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

// Behind a longer root a temporary name doesn't fit the system's buffer.
constexpr std::size_t longestRoot = MAX_PATH - 14;
constexpr DWORD nameRetryMs = 200;
constexpr int nameRetries = 50;
constexpr DWORD cleanupRetryMs = 50;
constexpr int cleanupRetries = 1200;

bool isDirectory(DWORD attributes) {
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

String systemTempPath() {
    const DWORD size = GetTempPathA(0, nullptr);
    if (size == 0)
        return {};
    String path(size, '\0');
    const DWORD length = GetTempPathA(size, path.mutableAt(0));
    return path.substr(0, length);
}

// A free name that the system picks, of a file that now exists; empty, with the code, on failure.
// The system measures the root in characters and would cut a name of too many bytes.
String freeTempName(const String& root, DWORD& code) {
    char name[MAX_PATH] = "";
    if (root.length() > longestRoot) {
        code = ERROR_BUFFER_OVERFLOW;
        return {};
    }
    code = GetTempFileNameA(root.cstr(), "LRE", 0, name) == 0 ? GetLastError() : ERROR_SUCCESS;
    return code == ERROR_SUCCESS ? name : "";
}

// Also when the two are named in different ways, unless the system can't tell where they lead.
bool liesBelow(const String& path, const String& directory) {
    String place = resolvedPath(path);
    String root = resolvedPath(directory);
    if (place.empty() || root.empty()) {
        place = path;
        root = directory;
    }
    ensureTrailingSeparator(root);
    return !root.empty() && pathBeginsWith(place.view(), root.view());
}

// Whether a file lies below a directory for temporary files: the user's or the system's.
bool isTemporary(const String& path) {
    return liesBelow(path, runContext().tempDir) || liesBelow(path, systemTempPath());
}

[[noreturn]] void noTempName(DWORD code, const String& root) {
    throwSystemError("GetTempFileName failed  ==>  ", code, root);
}

// Nothing is tried again or waited for when the system is about to end the process.
bool mayWait() {
    return !runContext().sessionEnding && !endIsNear();
}

// How long a cleanup waits for what others hold: so many tries in all, and none any more when the
// user asks for the end while it waits.
struct Patience {
    int tries = cleanupRetries;
    const int requests = endRequests();

    bool isOver() const { return tries <= 0 || !mayWait() || endRequests() != requests; }
};

// The same, tried for a while as long as access is denied. Raises `LauncherException`.
String patientTempName(const String& root) {
    DWORD code = ERROR_SUCCESS;
    String path = freeTempName(root, code);
    for (int i = 0; code == ERROR_ACCESS_DENIED && i < nameRetries && mayWait(); ++i) {
        SleepEx(nameRetryMs, FALSE);
        path = freeTempName(root, code);
    }
    if (path.empty())
        noTempName(code, root);
    return path;
}

// When the session ends, the main thread cleans up while the run's own thread may still be making
// and forgetting. So the three operations on the lists hold this lock, for the list alone and not
// for the deleting, and no text that leaves or enters a list shares its buffer with the list.
SRWLOCK listLock = SRWLOCK_INIT;

void enlist(StringList& list, const String& path) {
    const LockGuard lock(listLock);
    list.add(path.cstr());
}

String newest(const StringList& list) {
    const LockGuard lock(listLock);
    return list.last().cstr();
}

void forget(StringList& list, const String& path) {
    const LockGuard lock(listLock);
    std::int32_t index = 0;
    for (const String& registered : list) {
        if (samePath(registered.view(), path.view())) {
            list.removeAt(index);
            return;
        }
        ++index;
    }
}

// Tries to remove; a directory must be empty. Gives the system's code, 0 on success.
DWORD removeEntry(const String& path) {
    DWORD attributes = GetFileAttributesA(path.cstr());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        attributes &= ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY);
        SetFileAttributesA(path.cstr(), attributes);
    }
    // A path that doesn't exist has all attributes, so it counts as a directory.
    const BOOL removed =
        isDirectory(attributes) ? RemoveDirectoryA(path.cstr()) : DeleteFileA(path.cstr());
    return removed ? ERROR_SUCCESS : GetLastError();
}

// Whether a failure is a warning in the log.
enum class Report { yes, no };

bool remove(const String& path, Report report) {
    const DWORD code = removeEntry(path);
    if (code != ERROR_SUCCESS && report == Report::yes)
        logMessage("Could not delete " + path + " :  " + systemErrorText(code), LogLevel::warning);
    return code == ERROR_SUCCESS;
}

// Deletes the files of a tree as it walks, and the directories behind it, children first. A cancel
// doesn't stop it, and a link is removed itself, whatever it leads to.
class DirectoryDeleter final : public DirectoryWalker {
  public:
    explicit DirectoryDeleter(Report report) : DirectoryWalker(false), report_(report) {}

    bool walk(const String& root) override {
        const bool result = DirectoryWalker::walk(root);
        for (std::int32_t i = visited().count() - 1; i >= 0; --i)
            removeDirectory(visited().at(i));
        return result;
    }

    bool onFile(const String& path) override {
        remove(path, report_);
        return false;
    }

    bool removedAll() const { return visited().count() > 0 && failures_.count() == 0; }

  private:
    // What holds something that stayed can't be empty, so it isn't tried.
    void removeDirectory(const String& directory) {
        for (const String& failure : failures_) {
            if (pathBeginsWith(failure.view(), directory.view()))
                return;
        }
        if (!remove(directory, report_))
            failures_.add(directory);
    }

    const Report report_;
    StringList failures_;
};

bool isMissing(DWORD code) {
    return code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND;
}

// Gives whether the path is gone.
bool removeTree(const String& path, Report report) {
    const DWORD attributes = GetFileAttributesA(path.cstr());
    // What can't be looked at for now may be called missing, so the removal has the last word.
    if (attributes == INVALID_FILE_ATTRIBUTES && isMissing(GetLastError())) {
        const DWORD code = removeEntry(path);
        return code == ERROR_SUCCESS || isMissing(code);
    }
    // One whose attributes can't be read has all of them, so it is no directory to walk, either.
    if (!isDirectory(attributes) || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0)
        return remove(path, report);
    DirectoryDeleter deleter(report);
    deleter.walk(path);
    return deleter.removedAll();
}

// Tries to remove a path. A directory whose listing breaks off keeps what wasn't listed.
bool tryToRemove(const String& path, Report report) {
    try {
        return removeTree(path, report);
    } catch (const LauncherException& failure) {
        if (report == Report::yes)
            logMessage(failure.message, LogLevel::warning);
        return false;
    }
}

// Tries to remove a path until the patience is over. Of many tries the first and the last are
// logged.
void removePatiently(const String& path, Patience& patience) {
    for (bool first = true;; first = false) {
        const bool last = patience.isOver();
        // A path that went may be another launcher's by now, so it isn't asked for again.
        if (tryToRemove(path, first || last ? Report::yes : Report::no) || !exists(path))
            return;
        if (last)
            break;
        --patience.tries;
        Sleep(cleanupRetryMs);
    }
    logMessage("Gave up on deleting " + path + ". It stays.", LogLevel::warning);
}

// Empties a list from its end.
void removeRegistered(StringList& list, const char* kind, Patience& patience) {
    for (String path = newest(list); !path.empty(); path = newest(list)) {
        if (runContext().debugLogEnabled)
            debugLogLine(String("Launcher: Deleting ") + kind + ": " + path);
        removePatiently(path, patience);
        forget(list, path);
    }
}

}  // namespace

String getTempRoot() {
    String& root = runContext().tempDir;
    if (root.empty())
        root = systemTempPath();
    const DWORD attributes = GetFileAttributesA(root.cstr());
    if (attributes == INVALID_FILE_ATTRIBUTES || !isDirectory(attributes))
        throw LauncherException(formatMessage(MessageId::tempDirMissing, root));
    // A child may start in another directory, and Java divides a class path at each semicolon.
    root = absolutePath(root);
    if (root.find(';') != String::npos)
        root = shortPath(root);
    return root;
}

String createTempDirectory() {
    const String root = getTempRoot();
    String path = patientTempName(root);
    // Another program may take the name between the two calls, so then another name is tried. A
    // file that can't be deleted now may go at the end.
    for (int i = 0; i < nameRetries; ++i) {
        if (!DeleteFileA(path.cstr()))
            enlist(runContext().tempFiles, path);
        if (CreateDirectoryA(path.cstr(), nullptr) || GetLastError() != ERROR_ALREADY_EXISTS)
            break;
        path = patientTempName(root);
    }
    enlist(runContext().tempDirs, path);
    return path;
}

String createTempFile() {
    const String root = getTempRoot();
    DWORD code = ERROR_SUCCESS;
    const String path = freeTempName(root, code);
    if (path.empty())
        noTempName(code, root);
    enlist(runContext().tempFiles, path);
    return path;
}

void removeAtExit(const String& file) {
    enlist(runContext().tempFiles, file);
}

void forgetTempFile(const String& path) {
    forget(runContext().tempFiles, path);
}

void forgetTempDirectory(const String& path) {
    forget(runContext().tempDirs, path);
}

bool deleteFileOrDirectory(const String& path) {
    return remove(path, Report::yes);
}

void removeTree(const String& path) {
    removeTree(path, Report::yes);
}

void removeTreePatiently(const String& path) {
    Patience patience;
    removePatiently(path, patience);
}

void cleanupAtExit() {
    Patience patience;
    removeRegistered(runContext().tempDirs, "dir", patience);
    removeRegistered(runContext().tempFiles, "file", patience);
    if (runContext().originalLauncherGiven && isTemporary(runContext().launcherPath))
        removeRunningCopy();
}

}  // namespace corvane
