// The searches of one JVM file.
#include "jvmsearch/HintSearches.h"

#include "base/Log.h"
#include "foundation/TextLines.h"
#include "host/Paths.h"
#include "jvmsearch/DiskSearch.h"
#include "jvmsearch/EnvHint.h"
#include "jvmsearch/Finding.h"
#include "jvmsearch/PlatformHint.h"

namespace corvane {

namespace {

bool isSeparator(char character) noexcept {
    return character == '/' || character == '\\';
}

// Cuts the directory part of the executable's path off the end of a place that names it, so that
// the directory of the executable leads back to the home.
String homeOfPlace(const String& place, const String& exePath) {
    String home = place;
    const std::size_t separator = exePath.rfind(pathSeparator);
    if (separator == String::npos)
        return home;
    ensureTrailingSeparator(home);
    const std::size_t length = separator + 1;
    if (home.length() <= length)
        return home;
    const std::size_t end = home.length() - length;
    const bool namesIt = isSeparator(*home.charAt(end - 1)) &&
                         samePath({home.charAt(end), length}, {exePath.cstr(), length});
    return namesIt ? home.erase(end) : home;
}

bool hasProperties(const JvmFile& jvmFile) {
    if (!jvmFile.tag("JVM_PROPERTIES").empty())
        return true;
    logMessage("Unable to verify " + jvmFile.tags().fileName() +
                   " because the JVM_PROPERTIES tag was not specified.",
               LogLevel::warning);
    return false;
}

// Appends what a path hint stands for behind a directory.
void addCandidates(const String& directory, const String& hint, DirectoryTree& tree,
                   StringList& candidates) {
    String root = directory;
    ensureTrailingSeparator(root);
    if (hint.find(wildcard) == String::npos)
        candidates.add(root + hint);
    else
        tree.expand(root, hint, candidates);
}

std::unique_ptr<JvmMatch> searchOnDrives(JvmFile& jvmFile, const StringList& drives,
                                         const String& hint, DirectoryTree& tree,
                                         const VerifyClass& verifyClass) {
    for (const String& drive : drives) {
        StringList candidates;
        addCandidates(drive, hint.substr(1), tree, candidates);
        for (const String& candidate : candidates) {
            logMessage("Checking path hint " + candidate);
            if (auto match = verifyHome(jvmFile, candidate, verifyClass))
                return match;
        }
    }
    return nullptr;
}

std::unique_ptr<JvmMatch> searchBesideLauncher(JvmFile& jvmFile, const String& hint,
                                               DirectoryTree& tree,
                                               const VerifyClass& verifyClass) {
    StringList candidates;
    addCandidates(launcherDirectory(), hint, tree, candidates);
    for (const String& candidate : candidates) {
        if (auto match = verifyHome(jvmFile, candidate, verifyClass)) {
            match->temporary = true;
            return match;
        }
    }
    return nullptr;
}

// `kind` is what the log calls a source of that kind.
std::unique_ptr<JvmMatch> tryHome(JvmFile& jvmFile, const String& home, const char* kind,
                                  const String& source, const VerifyClass& verifyClass) {
    logMessage("Checking JVM at " + home + " which was resolved from " + kind + source);
    return verifyHome(jvmFile, home, verifyClass);
}

std::unique_ptr<JvmMatch> tryPlatformHint(JvmFile& jvmFile, const String& hint, bool guessed,
                                          const VerifyClass& verifyClass) {
    StringList paths;
    resolvePlatformHint(hint, paths, guessed);
    for (const String& path : paths) {
        if (auto match = tryHome(jvmFile, path, "platform hint ", hint, verifyClass))
            return match;
    }
    return nullptr;
}

}  // namespace

std::unique_ptr<JvmMatch> verifyJvmHomeTag(JvmFile& jvmFile, const VerifyClass& verifyClass) {
    const CandidateOrigin origin("JVM_HOME");
    return hasProperties(jvmFile) ? verifyHome(jvmFile, jvmFile.tag("JVM_HOME"), verifyClass)
                                  : nullptr;
}

std::unique_ptr<JvmMatch> searchPlatformHints(JvmFile& jvmFile, const VerifyClass& verifyClass) {
    if (!hasProperties(jvmFile))
        return nullptr;
    logMessage("Searching for " + jvmFile.tag("DESC") + " using platform hints");
    KeyTree keys;
    for (const String& hint : jvmFile.tags().values("PLATFORM_HINT")) {
        const CandidateOrigin origin("PLATFORM_HINT", hint);
        const bool guessed = isGuess(hint);
        StringList hints;
        if (guessed)
            expandPlatformHint(hint, keys, hints);
        else
            hints.add(hint);
        for (const String& named : hints) {
            if (auto match = tryPlatformHint(jvmFile, named, guessed, verifyClass))
                return match;
        }
    }
    return nullptr;
}

std::unique_ptr<JvmMatch> searchPathHints(JvmFile& jvmFile, const VerifyClass& verifyClass) {
    if (!hasProperties(jvmFile))
        return nullptr;
    logMessage("Searching for " + jvmFile.tag("DESC") + " using path hints");
    StringList drives;
    listSearchDrives(drives);
    DirectoryTree tree;
    for (const String& hint : jvmFile.tags().values("PATH_HINT")) {
        const CandidateOrigin origin("PATH_HINT", hint);
        auto match = *hint.charAt(0) == *pathSeparator
                         ? searchOnDrives(jvmFile, drives, hint, tree, verifyClass)
                         : searchBesideLauncher(jvmFile, hint, tree, verifyClass);
        if (match != nullptr)
            return match;
    }
    return nullptr;
}

std::unique_ptr<JvmMatch> searchEnvHints(JvmFile& jvmFile, const VerifyClass& verifyClass) {
    const StringList& hints = jvmFile.tags().values("ENV_HINT");
    if (hints.at(0).empty() || !hasProperties(jvmFile))
        return nullptr;
    logMessage("Searching for " + jvmFile.tag("DESC") + " using environment hints");
    DirectoryTree tree;
    for (const String& hint : hints) {
        const CandidateOrigin origin("ENV_HINT", hint);
        StringList places;
        resolveEnvHint(hint, tree, places);
        for (const String& place : places) {
            if (auto match = tryHome(jvmFile, homeOfPlace(place, jvmFile.exePath()),
                                     "environment hint ", hint, verifyClass))
                return match;
        }
    }
    return nullptr;
}

std::unique_ptr<JvmMatch> searchPlatformJvmPaths(JvmFile& jvmFile, const VerifyClass& verifyClass) {
    if (!hasProperties(jvmFile))
        return nullptr;
    logMessage("Searching for " + jvmFile.tag("DESC") + " using platform specific JVM Path hints");
    StringList places;
    listPlatformJvmPaths(places);
    for (const String& place : places) {
        const CandidateOrigin origin("platform", place);
        if (auto match = tryHome(jvmFile, homeOfPlace(place, jvmFile.exePath()),
                                 "the platform JVM path ", place, verifyClass))
            return match;
    }
    return nullptr;
}

}  // namespace corvane
