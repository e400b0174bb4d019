// Kept Java runtimes.
#include "instructions/KeptRuntime.h"

#include <algorithm>

#include "base/Log.h"
#include "base/Messages.h"
#include "base/RunContext.h"
#include "base/Ui.h"
#include "foundation/TextLines.h"
#include "host/Paths.h"
#include "host/TempFiles.h"
#include "jvmsearch/EnvHint.h"
#include "launcherfile/RuntimeTrailer.h"
#include "launcherfile/TagFile.h"

namespace corvane {

namespace {

constexpr DWORD retryMs = 100;
constexpr int lockRetries = 600;
constexpr int moveRetries = 100;
constexpr const char* partSuffix = ".part";
constexpr const char* oldSuffix = ".old";
constexpr const char* usesSuffix = ".uses";

// Held from its making to the end of the process.
FileGuard& useMark() {
    static FileGuard mark;
    return mark;
}

String joined(String directory, const String& name) {
    ensureTrailingSeparator(directory);
    return directory.append(name);
}

std::optional<RuntimeTrailer> trailerOf(const FileIndexEntry& installer) {
    const StreamGuard file(openStream(runContext().launcherPath.cstr(), "rb"));
    if (!file)
        return {};
    return readRuntimeTrailer(file.get(), static_cast<std::uint32_t>(installer.offset),
                              static_cast<std::uint32_t>(installer.length));
}

// Another run may be making the same ones.
bool makeDirectories(const String& path) {
    if (exists(path))
        return true;
    const String parent = parentDirectory(path);
    return (parent.empty() || makeDirectories(parent)) &&
           (CreateDirectoryA(path.cstr(), nullptr) || GetLastError() == ERROR_ALREADY_EXISTS);
}

bool mayWait() {
    return !runContext().cancelRequested && endRequests() == 0;
}

// A file that nobody else has open.
FileGuard takeAlone(const String& path) {
    return FileGuard(CreateFileA(path.cstr(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                                 FILE_ATTRIBUTE_NORMAL, nullptr));
}

FileGuard waitFor(const String& path) {
    FileGuard lock = takeAlone(path);
    for (int i = 0; !lock && GetLastError() == ERROR_SHARING_VIOLATION && i < lockRetries; ++i) {
        if (!mayWait())
            break;
        SleepEx(retryMs, FALSE);
        uiStepProgress(1);
        lock = takeAlone(path);
    }
    return lock;
}

// Tried for a while as long as access is denied: a scanner may look at what was just written.
bool move(const String& from, const String& to) {
    for (int i = 0; i < moveRetries && mayWait(); ++i) {
        if (MoveFileExA(from.cstr(), to.cstr(), 0))
            return true;
        const DWORD code = GetLastError();
        if (code != ERROR_ACCESS_DENIED && code != ERROR_SHARING_VIOLATION)
            return false;
        SleepEx(retryMs, FALSE);
    }
    return false;
}

void listNames(const String& directory, StringList& names) {
    WIN32_FIND_DATAA entry;
    const FindGuard find(FindFirstFileA(joined(directory, "*").cstr(), &entry));
    for (bool found = static_cast<bool>(find); found;
         found = FindNextFileA(find.get(), &entry) != FALSE) {
        if (*entry.cFileName != '.')
            names.add(entry.cFileName);
    }
}

// Whether runs use the runtime; marks of runs that are over go.
bool isUsed(const String& runtime) {
    const String uses = runtime + usesSuffix;
    StringList marks;
    listNames(uses, marks);
    for (const String& mark : marks)
        DeleteFileA(joined(uses, mark).cstr());
    return exists(uses) && !RemoveDirectoryA(uses.cstr());
}

// The name of a runtime at the start of an entry of the place; empty for what isn't ours.
String runtimeName(const String& entry) {
    constexpr std::size_t length = 2 * runtimeDigestBytes;
    if (entry.length() < length || entry.findFirstNotOf("0123456789abcdef") < length)
        return {};
    const String rest = entry.substr(length);
    const bool known = rest.empty() || rest.compare(partSuffix) == 0 ||
                       rest.compare(oldSuffix) == 0 || rest.compare(usesSuffix) == 0;
    return known ? entry.substr(0, length) : String();
}

void warn(const String& place, const String& why) {
    logMessage("The Java runtime can't be kept in " + place + ": " + why, LogLevel::warning);
}

}  // namespace

KeptRuntime::KeptRuntime(const FileIndexEntry& installer) : installer_(installer.name) {
    const std::optional<RuntimeTrailer> trailer = trailerOf(installer);
    if (!trailer || trailer->place.empty())
        return;
    const String place = withVariables(trailer->place);
    if (place.empty() || !isAbsolute(place)) {
        warn(trailer->place, "it is no absolute path, or a variable has no value");
        return;
    }
    place_ = absolutePath(place);
    if (makeDirectories(place_))
        lock_ = waitFor(joined(place_, "lock"));
    if (!lock_)
        warn(place_, systemErrorWords(GetLastError()));
    name_ = trailer->digest;
    home_ = joined(place_, name_);
}

KeptRuntime::~KeptRuntime() {
    if (!part_.empty())
        removeTreePatiently(part_);
}

bool KeptRuntime::hasFile(const String& line) const {
    const std::size_t blank = line.find(' ');
    WIN32_FILE_ATTRIBUTE_DATA found;
    return blank != String::npos &&
           GetFileAttributesExA(joined(home_, line.substr(blank + 1)).cstr(), GetFileExInfoStandard,
                                &found) &&
           (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 &&
           line.substr(0, blank).compare(
               decimalText(static_cast<std::int32_t>(found.nFileSizeLow))) == 0;
}

bool KeptRuntime::isWhole() const {
    const StreamGuard list(openStream(joined(home_, runtimeFileList).cstr(), "rb"));
    const String jvmFile = joined(home_, "jvm");
    if (!list || !exists(jvmFile))
        return false;
    while (!atEnd(list.get())) {
        String line;
        readLine(list.get(), line);
        if (!hasFile(line))
            return false;
    }
    try {
        // The place may have moved with the user's profile.
        return samePath(TagFile(jvmFile).value("JVM_HOME", 0).view(), home_.view());
    } catch (const LauncherException&) {
        return false;
    }
}

// Renamed first, which fails as long as a program runs from there, and then removed.
bool KeptRuntime::retire(const String& name) const {
    const String runtime = joined(place_, name);
    if (!exists(runtime))
        return true;
    if (isUsed(runtime) || !MoveFileExA(runtime.cstr(), (runtime + oldSuffix).cstr(), 0))
        return false;
    removeTree(runtime + oldSuffix);
    return true;
}

String KeptRuntime::prepare() {
    const String part = home_ + partSuffix;
    // Leftovers of runs that were ended.
    for (const char* suffix : {partSuffix, oldSuffix}) {
        if (exists(home_ + suffix))
            removeTree(home_ + suffix);
    }
    if (!retire(name_)) {
        warn(place_, "it is damaged there, and in use");
        return {};
    }
    if (!CreateDirectoryA(part.cstr(), nullptr)) {
        warn(place_, systemErrorWords(GetLastError()));
        return {};
    }
    return part_ = part;
}

bool KeptRuntime::finish() {
    const String jvmFile = joined(part_, "jvm");
    if (!exists(jvmFile))
        return false;
    TagFile tags(jvmFile);
    tags.setJvmTags(home_, joined(home_, "jvm"), false);
    tags.write(jvmFile);
    if (!move(part_, home_)) {
        warn(place_, systemErrorWords(GetLastError()));
        return false;
    }
    part_ = "";
    // It has done its work, but a scanner may have held it.
    const String installer = joined(home_, installer_);
    if (exists(installer))
        removeAtExit(installer);
    return true;
}

void KeptRuntime::use() {
    const String uses = home_ + usesSuffix;
    isUsed(home_);
    char mark[MAX_PATH] = "";
    if ((exists(uses) || CreateDirectoryA(uses.cstr(), nullptr)) &&
        GetTempFileNameA(uses.cstr(), "run", 0, mark) != 0)
        useMark() = takeAlone(mark);
    removeUnused();
}

void KeptRuntime::removeUnused() const {
    StringList entries;
    listNames(place_, entries);
    for (const String& entry : entries) {
        const String name = runtimeName(entry);
        if (name.empty() || name.compare(name_) == 0)
            continue;
        if (entry.length() == name.length())
            retire(name);
        else if (entry.rfind(usesSuffix) == String::npos)
            removeTree(joined(place_, entry));
    }
}

}  // namespace corvane
