// The searches of a JVM file: its own home, registry hints, path hints, the platform's JVM places.
#include "app/base/Log.h"
#include "foundation/TextLines.h"
#include "host/Paths.h"
#include "jvm/file/JvmFile.h"
#include "jvm/search/DiskSearch.h"
#include "jvm/search/PlatformHint.h"

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

}  // namespace

bool JvmFile::hasProperties() const {
    if (!tag("JVM_PROPERTIES").empty())
        return true;
    logMessage("Unable to verify " + tags_->fileName() +
                   " because the JVM_PROPERTIES tag was not specified.",
               LogLevel::warning);
    return false;
}

std::unique_ptr<JvmMatch> JvmFile::verifyJvmHomeTag(const VerifyClass& verifyClass) {
    return hasProperties() ? verifyHome(tag("JVM_HOME"), verifyClass) : nullptr;
}

std::unique_ptr<JvmMatch> JvmFile::searchPlatformHints(const VerifyClass& verifyClass) {
    if (!hasProperties())
        return nullptr;
    logMessage("Searching for " + tag("DESC") + " using platform hints");
    for (const String& hint : tags_->values("PLATFORM_HINT")) {
        StringList paths;
        resolvePlatformHint(hint, paths);
        for (const String& path : paths) {
            logMessage("Checking JVM at " + path + " which was resolved from platform hint " +
                       hint);
            if (auto match = verifyHome(path, verifyClass))
                return match;
        }
    }
    return nullptr;
}

std::unique_ptr<JvmMatch> JvmFile::searchPathHints(const VerifyClass& verifyClass) {
    if (!hasProperties())
        return nullptr;
    logMessage("Searching for " + tag("DESC") + " using path hints");
    StringList drives;
    listSearchDrives(drives);
    for (const String& hint : tags_->values("PATH_HINT")) {
        auto match = *hint.charAt(0) == *pathSeparator ? searchOnDrives(drives, hint, verifyClass)
                                                       : searchBesideLauncher(hint, verifyClass);
        if (match != nullptr)
            return match;
    }
    return nullptr;
}

std::unique_ptr<JvmMatch> JvmFile::searchOnDrives(const StringList& drives, const String& hint,
                                                  const VerifyClass& verifyClass) {
    for (String candidate : drives) {
        ensureTrailingSeparator(candidate);
        candidate.append(hint, 1, String::npos);
        logMessage("Checking path hint " + candidate);
        if (auto match = verifyHome(candidate, verifyClass))
            return match;
    }
    return nullptr;
}

std::unique_ptr<JvmMatch> JvmFile::searchBesideLauncher(const String& hint,
                                                        const VerifyClass& verifyClass) {
    String candidate = launcherDirectory();
    ensureTrailingSeparator(candidate);
    auto match = verifyHome(candidate.append(hint), verifyClass);
    if (match != nullptr)
        match->temporary = true;
    return match;
}

std::unique_ptr<JvmMatch> JvmFile::searchPlatformJvmPaths(const VerifyClass& verifyClass) {
    if (!hasProperties())
        return nullptr;
    logMessage("Searching for " + tag("DESC") + " using platform specific JVM Path hints");
    StringList places;
    listPlatformJvmPaths(places);
    for (const String& place : places) {
        const String home = homeOfPlace(place, exePath());
        logMessage("Checking JVM at " + home + " which was resolved from the platform JVM path " +
                   place);
        if (auto match = verifyHome(home, verifyClass))
            return match;
    }
    return nullptr;
}

}  // namespace corvane
