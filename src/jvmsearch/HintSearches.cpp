// The searches of one JVM file.
#include "jvmsearch/HintSearches.h"

#include "base/Log.h"
#include "foundation/TextLines.h"
#include "host/Paths.h"
#include "jvmsearch/DiskSearch.h"
#include "jvmsearch/Finding.h"
#include "jvmsearch/PlatformHint.h"

namespace corvane {

namespace {

// Cuts the directory part of the executable's path off the end of a place that names it, so that
// the directory of the executable leads back to the home.
String homeOfPlace(const String& place, const String& exePath) {
    String home = place;
    const std::size_t separator = exePath.rfind(pathSeparator);
    if (separator == String::npos)
        return home;
    ensureTrailingSeparator(home);
    const std::size_t end = endsWith(home, exePath.substr(0, separator + 1));
    return end == String::npos ? home : home.erase(end);
}

bool hasProperties(const JvmFile& jvmFile) {
    if (!jvmFile.tag("JVM_PROPERTIES").empty())
        return true;
    logMessage("Unable to verify " + jvmFile.tags().fileName() +
                   " because the JVM_PROPERTIES tag was not specified.",
               LogLevel::warning);
    return false;
}

std::unique_ptr<JvmMatch> searchOnDrives(JvmFile& jvmFile, const StringList& drives,
                                         const String& hint, const VerifyClass& verifyClass) {
    for (String candidate : drives) {
        ensureTrailingSeparator(candidate);
        candidate.append(hint, 1, String::npos);
        logMessage("Checking path hint " + candidate);
        if (auto match = verifyHome(jvmFile, candidate, verifyClass))
            return match;
    }
    return nullptr;
}

std::unique_ptr<JvmMatch> searchBesideLauncher(JvmFile& jvmFile, const String& hint,
                                               const VerifyClass& verifyClass) {
    String candidate = launcherDirectory();
    ensureTrailingSeparator(candidate);
    auto match = verifyHome(jvmFile, candidate.append(hint), verifyClass);
    if (match != nullptr)
        match->temporary = true;
    return match;
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
    for (const String& hint : jvmFile.tags().values("PLATFORM_HINT")) {
        const CandidateOrigin origin("PLATFORM_HINT", hint);
        StringList paths;
        resolvePlatformHint(hint, paths);
        for (const String& path : paths) {
            logMessage("Checking JVM at " + path + " which was resolved from platform hint " +
                       hint);
            if (auto match = verifyHome(jvmFile, path, verifyClass))
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
    for (const String& hint : jvmFile.tags().values("PATH_HINT")) {
        const CandidateOrigin origin("PATH_HINT", hint);
        auto match = *hint.charAt(0) == *pathSeparator
                         ? searchOnDrives(jvmFile, drives, hint, verifyClass)
                         : searchBesideLauncher(jvmFile, hint, verifyClass);
        if (match != nullptr)
            return match;
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
        const String home = homeOfPlace(place, jvmFile.exePath());
        logMessage("Checking JVM at " + home + " which was resolved from the platform JVM path " +
                   place);
        if (auto match = verifyHome(jvmFile, home, verifyClass))
            return match;
    }
    return nullptr;
}

}  // namespace corvane
