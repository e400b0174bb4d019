// Reading and checking of a runtime image.
#include "packer/runtime/RuntimeImage.h"

#include <algorithm>
#include <fstream>
#include <limits>
#include <tuple>

#include "foundation/Exceptions.h"
#include "launcherfile/RuntimeTrailer.h"
#include "launcherfile/TagFile.h"
#include "packer/base/Errors.h"
#include "packer/base/WholeFile.h"
#include "unpacker/ArchiveNames.h"

namespace corvane::pack {

namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t largestFile = std::numeric_limits<std::int32_t>::max();

[[noreturn]] void refuse(const fs::path& path, const std::string& why) {
    throw PackError(path.string() + ": " + why);
}

// The version that an image's `release` file tells: JAVA_VERSION="17.0.15".
std::string versionIn(const std::string& release) {
    const std::string_view key = "JAVA_VERSION=\"";
    const std::size_t start = release.find(key);
    if (start == std::string::npos)
        return {};
    const std::size_t first = start + key.size();
    return release.substr(first, release.find('"', first) - first);
}

// Programs that no name in `bin` marks as such, where files have no mark themselves.
bool isProgram(const std::string& name, const fs::file_status& status) {
    return name.starts_with("bin/") || name == "lib/jspawnhelper" || name == "lib/jexec" ||
           (status.permissions() & fs::perms::owner_exec) != fs::perms::none;
}

bool isMachineCode(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    std::string beginning(4, '\0');
    stream.read(beginning.data(), 4);
    return beginning.starts_with("MZ") || beginning.substr(1) == "ELF";
}

class ImageReader {
  public:
    explicit ImageReader(const fs::path& directory) : directory_(directory) {}

    RuntimeImage read() {
        image_.version = checkImage();
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(directory_))
            add(entry);
        sortEntries();
        addText(runtimeFileList, listOfFiles());
        addText(archiveJvmFile, jvmFile(image_.version));
        if (image_.size > largestFile)
            refuse(directory_, "the image is larger than 2 GiB, the most that a launcher can hold");
        return std::move(image_);
    }

  private:
    // Gives the version of Java.
    std::string checkImage() {
        const bool forWindows = fs::is_regular_file(directory_ / "bin" / "java.exe");
        image_.system = forWindows ? System::windows : System::host;
        const fs::path release = directory_ / "release";
        const std::string version =
            fs::is_regular_file(release) ? versionIn(readWhole(release)) : "";
        if (!forWindows && !fs::is_regular_file(directory_ / "bin" / "java"))
            refuse(directory_,
                   "no runtime image: it has no bin/java.exe or bin/java; name the "
                   "directory that jlink made");
        if (version.empty())
            refuse(directory_,
                   "no runtime image: it has no file \"release\" with a JAVA_VERSION; "
                   "name the directory that jlink made");
        return version;
    }

    void add(const fs::directory_entry& found) {
        const std::string name = found.path().lexically_relative(directory_).generic_string();
        // What this tool writes itself.
        if (name == archiveJvmFile || name == runtimeFileList)
            return;
        if (!isArchiveName(name))
            refuse(found.path(), "a name that can't be unpacked everywhere: rename or remove it");
        if (found.is_symlink() && image_.system == System::host)
            addLink(found.path(), name);
        else if (found.is_directory() && !found.is_symlink())
            image_.entries.push_back({EntryKind::directory, name, 0, {}, {}, false});
        else if (found.is_regular_file() && leadsInside(found.path()))
            addFile(found, name);
        else
            refuse(found.path(), "neither a file of the image nor a directory");
    }

    // Windows gets a copy of what a link leads to.
    bool leadsInside(const fs::path& path) const {
        const std::string rest =
            fs::canonical(path).lexically_relative(fs::canonical(directory_)).generic_string();
        return isArchiveName(rest);
    }

    void addFile(const fs::directory_entry& found, const std::string& name) {
        const std::uintmax_t size = found.file_size();
        if (size > largestFile)
            refuse(found.path(), "larger than 2 GiB, the most that a launcher can hold");
        const bool program = image_.system == System::host && isProgram(name, found.status());
        image_.entries.push_back({program ? EntryKind::program : EntryKind::file,
                                  name,
                                  static_cast<std::uint32_t>(size),
                                  found.path(),
                                  {},
                                  isMachineCode(found.path())});
        count(size);
    }

    void addLink(const fs::path& path, const std::string& name) {
        const std::string target = fs::read_symlink(path).generic_string();
        if (!isArchiveLink(name, target) || !fs::exists(path))
            refuse(path, "a link to " + target + ", which doesn't lead to something in the image");
        image_.entries.push_back({EntryKind::link, name, 0, {}, target, false});
        ++image_.fileCount;
    }

    void addText(const std::string& name, const std::string& text) {
        image_.entries.push_back(
            {EntryKind::file, name, static_cast<std::uint32_t>(text.size()), {}, text, false});
        count(text.size());
    }

    void count(std::uint64_t size) {
        image_.size += size;
        ++image_.fileCount;
    }

    // Directories in front of what lies in them, and files of one kind together, which packs
    // tighter.
    void sortEntries() {
        const auto key = [](const ImageEntry& entry) {
            const fs::path path = entry.name;
            const bool directory = entry.kind == EntryKind::directory;
            return std::tuple(!directory, directory ? "" : path.extension().string(), entry.name);
        };
        std::sort(image_.entries.begin(), image_.entries.end(),
                  [&](const ImageEntry& a, const ImageEntry& b) { return key(a) < key(b); });
    }

    // By which a kept runtime is looked through at each start.
    std::string listOfFiles() const {
        std::string list;
        for (const ImageEntry& entry : image_.entries) {
            if (entry.kind == EntryKind::file || entry.kind == EntryKind::program)
                list += std::to_string(entry.size) + ' ' + entry.name + '\n';
        }
        return list;
    }

    std::string jvmFile(const std::string& version) const {
        const fs::path own = directory_ / archiveJvmFile;
        if (!fs::exists(own))
            return "DESC:  Java " + version + "\nJVM_EXE:  bin\\java" +
                   (image_.system == System::windows ? ".exe" : "") +
                   "\nCLASSPATH:  \" -cp \"\nCLASSPATH_SEPARATOR:  ;\nSYSTEM:  \" -D\"\n"
                   "SYSTEM_SEPARATOR:  =\n";
        const std::string text = readWhole(own);
        try {
            const TagFile tags(String(own.string().c_str()));
        } catch (const LauncherException& failure) {
            refuse(own, std::string(failure.message.view()));
        }
        if (text.size() > largestJvmFile || !text.ends_with('\n'))
            refuse(own, "the file is larger than 64 KB or does not end with a line feed");
        return text;
    }

    const fs::path directory_;
    RuntimeImage image_;
};

}  // namespace

RuntimeImage readRuntimeImage(const fs::path& directory) {
    std::error_code error;  // of a name that no system can hold, too
    if (!fs::is_directory(directory, error))
        refuse(directory, "there is no such directory");
    return ImageReader(directory).read();
}

void checkImageSystem(const RuntimeImage& image, const fs::path& directory, System system) {
    if (image.system != system)
        refuse(directory, std::string("a runtime image for ") + systemName(image.system) +
                              ", not for " + systemName(system) +
                              "; jlink makes the other with --module-path and the jmods folder of "
                              "a JDK for that system");
}

}  // namespace corvane::pack
