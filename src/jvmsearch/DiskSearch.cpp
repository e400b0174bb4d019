// The scan of the drives, and what `JvmSearch` makes of its hits.
#include "jvmsearch/DiskSearch.h"

#include <cstring>
#include <memory>
#include <string_view>

#include "base/Log.h"
#include "base/Messages.h"
#include "base/RunContext.h"
#include "base/Status.h"
#include "foundation/Exceptions.h"
#include "foundation/TextLines.h"
#include "host/DirectoryWalker.h"
#include "host/Paths.h"
#include "host/TempFiles.h"
#include "jvmsearch/Finding.h"
#include "jvmsearch/JvmSearch.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

// The places that links lead to, those that a walk needn't enter.
class KnownPlaces {
  public:
    // Takes a directory in.
    void add(const String& directory) {
        String place = resolvedPath(directory);
        ensureTrailingSeparator(place);
        if (!place.empty())
            places_.add(place);
    }

    // Whether a directory lies in one of the places, or nobody knows where it lies.
    bool hold(const String& directory) const {
        String place = resolvedPath(directory);
        ensureTrailingSeparator(place);
        bool known = place.empty();
        for (const String& other : places_)
            known = known || pathBeginsWith(place.view(), other.view());
        return known;
    }

  private:
    StringList places_;
};

class JvmScanWalker final : public DirectoryWalker {
  public:
    // `roots` are the drives that this search walks; all three outlive the walker.
    JvmScanWalker(const StringList& exeSuffixes, const StringList& roots,
                  ExecutableHandler& handler)
        : DirectoryWalker(true),
          exeSuffixes_(exeSuffixes),
          roots_(roots),
          handler_(handler),
          tempDirectory_(getTempRoot()) {
        ensureTrailingSeparator(tempDirectory_);
    }

    bool onFile(const String& path) override {
        for (const String& suffix : exeSuffixes_) {
            // Once for each path, also when several suffixes fit.
            if (endsWithPath(path.view(), suffix.view()))
                return isNew(path) && handler_.onExecutableFound(path);
        }
        return false;
    }

    // What lies on a drive of this search is met there, and what a link led to before has been met,
    // so that a search ends however links lead to each other.
    bool entersLink(const String& path) override {
        if (!anyLink_) {
            anyLink_ = true;
            for (const String& root : roots_)
                entered_.add(root);
        }
        if (entered_.hold(path))
            return false;
        entered_.add(path);
        return true;
    }

    bool skipDirectory(const String& directory) override {
        constexpr std::size_t rootLength = 3;
        if (samePath(directory.view(), tempDirectory_.view()))
            return true;
        return directory.length() >= excludedPrefix.length() + 2 && directory.at(1) == ':' &&
               pathBeginsWith(directory.charAt(rootLength), excludedPrefix);
    }

  private:
    // Whether an executable is met for the first time: a link may lead to a directory that holds
    // what another one led to.
    bool isNew(const String& path) {
        String place = resolvedPath(parentDirectory(path));
        if (place.empty())
            return true;
        place.append(pathSeparator).append(lastPathComponent(path));
        if (met_.contains(place))
            return false;
        met_.add(place);
        return true;
    }

    // Whether `path` ends with `suffix` as whole components, case ignored.
    static bool endsWithPath(std::string_view path, std::string_view suffix) {
        if (path.length() < suffix.length())
            return false;
        const std::size_t start = path.length() - suffix.length();
        return samePath({path.data() + start, suffix.length()}, suffix) &&
               (start == 0 || path[start - 1] == '\\');
    }

    // Recycle bins, in the root of a drive.
    static constexpr std::string_view excludedPrefix = "RECYCLE";

    const StringList& exeSuffixes_;
    const StringList& roots_;
    ExecutableHandler& handler_;
    String tempDirectory_;
    bool anyLink_ = false;
    KnownPlaces entered_;
    StringList met_;
};

void addOnce(StringList& list, const String& text) {
    if (!list.contains(text))
        list.add(text);
}

}  // namespace

void listSearchDrives(StringList& drives) {
    const DWORD size = GetLogicalDriveStringsA(0, nullptr);
    if (size == 0)
        throw LauncherException(loadMessage(MessageId::noDrives));
    // The list ends with an empty text; a second NUL guards against a list that grew meanwhile.
    const auto roots = std::make_unique<char[]>(size + 2);
    GetLogicalDriveStringsA(size, roots.get());
    for (const char* root = roots.get(); *root != '\0'; root += std::strlen(root) + 1) {
        const UINT type = GetDriveTypeA(root);
        if (type == DRIVE_FIXED || type == DRIVE_REMOTE)
            drives.add(String(root, std::strlen(root) - 1));
    }
}

void scanDrives(const StringList& exeSuffixes, ExecutableHandler& handler) {
    StringList roots;
    JvmScanWalker walker(exeSuffixes, roots, handler);
    StringList drives;
    listSearchDrives(drives);
    for (const String& drive : drives)
        roots.add(drive + pathSeparator);
    for (const String& root : roots) {
        if (walker.walk(root))
            return;
    }
}

void JvmSearch::searchDisks(JvmMatchList& results) {
    unverified_.clear();
    StringList exeSuffixes;
    for (const JvmFile& jvmFile : jvmFiles_)
        addOnce(exeSuffixes, jvmFile.exePath());
    const StatusScope scope;
    const CandidateOrigin origin("disk");
    setDetail(Detail::scanningDisks, String());
    logMessage("Beginning exhaustive search");
    scanDrives(exeSuffixes, *this);
    if (match_ == nullptr)
        verifyUnverified(results);
}

void JvmSearch::verifyUnverified(JvmMatchList& results) {
    logMessage("Processing unverified matches.\n");
    for (const UnverifiedMatch& candidates : unverified_) {
        for (const String& home : candidates.homes) {
            if (runContext().cancelRequested)
                return;
            auto found = verifyHome(*candidates.jvmFile, home, verifyClass_);
            if (found == nullptr)
                continue;
            results.add(std::move(found));
            if (stopAtFirst_)
                return;
        }
    }
}

bool JvmSearch::onExecutableFound(const String& path) {
    if (match_ != nullptr)
        return false;
    for (JvmFile& jvmFile : jvmFiles_) {
        const String exe = jvmFile.exePath();
        // Unlike the scan, a JVM file is particular about case.
        if (!path.view().ends_with(exe.view()))
            continue;
        const std::size_t start = path.length() - exe.length();
        const String home = path.substr(0, start == 0 ? 0 : start - 1);
        if (&jvmFile != jvmFiles_.at(0) || !stopAtFirst_) {
            addUnverified(&jvmFile, home);
            continue;
        }
        match_ = verifyHome(jvmFile, home, verifyClass_);
        if (match_ != nullptr)
            return true;
    }
    return false;
}

void JvmSearch::addUnverified(JvmFile* jvmFile, const String& home) {
    for (UnverifiedMatch& candidates : unverified_) {
        if (candidates.jvmFile == jvmFile) {
            addOnce(candidates.homes, home);
            return;
        }
    }
    unverified_.add(std::make_unique<UnverifiedMatch>(jvmFile))->homes.add(home);
}

}  // namespace corvane
