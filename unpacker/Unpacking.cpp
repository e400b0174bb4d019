// Unpacking of a runtime installer.
#include "unpacker/Unpacking.h"

#include <algorithm>
#include <cerrno>
#include <memory>

#include "base/Messages.h"
#include "foundation/Exceptions.h"
#include "foundation/StringList.h"
#include "launcherfile/RuntimeTrailer.h"
#include "platform/Platform.h"
#include "unpacker/ArchiveTable.h"
#include "unpacker/CallFilter.h"
#include "unpacker/PackedStream.h"

namespace corvane {

namespace {

RuntimeTrailer trailerOf(std::FILE* installer, std::uint32_t size) {
    const std::optional<RuntimeTrailer> trailer = readRuntimeTrailer(installer, 0, size);
    if (!trailer || trailer->tableSize > largestArchiveTable)
        throw LauncherException("No Java runtime is appended to this program, or it is cut short.");
    return *trailer;
}

ArchiveTable readTable(PackedStream& stream, const RuntimeTrailer& trailer) {
    auto bytes = std::make_unique<char[]>(trailer.tableSize);
    stream.read(bytes.get(), trailer.tableSize);
    return {std::move(bytes), trailer.tableSize, trailer.contentSize};
}

// Dots for the bytes written, as many as there are percent.
class Progress {
  public:
    explicit Progress(std::uint32_t total) : total_(total) {}

    void step(std::uint32_t size) {
        done_ += size;
        for (; std::uint64_t{total_} * shown_ < std::uint64_t{100} * done_; ++shown_)
            writeOutput(".");
    }

  private:
    std::uint32_t total_;
    std::uint32_t done_ = 0;
    std::uint32_t shown_ = 0;
};

// What was made so far, which goes again unless all goes well.
class Created {
  public:
    Created() = default;
    Created(const Created&) = delete;
    Created& operator=(const Created&) = delete;
    ~Created() {
        for (std::int32_t i = paths_.count() - 1; i >= 0; --i) {
            if (!DeleteFileA(paths_.at(i).cstr()))
                RemoveDirectoryA(paths_.at(i).cstr());
        }
    }

    void add(const String& path) { paths_.add(path); }
    void keep() { paths_.clear(); }

  private:
    StringList paths_;
};

class Unpacking {
  public:
    Unpacking(std::FILE* installer, const RuntimeTrailer& trailer, const String& directory)
        : directory_(directory),
          stream_(installer, trailer.archiveSize),
          table_(readTable(stream_, trailer)),
          progress_(trailer.contentSize) {}

    void run() {
        char jvmFile[largestJvmFile];
        std::uint32_t jvmSize = 0;
        table_.forEach([&](const ArchiveEntry& entry, bool last) {
            if (last)
                stream_.read(jvmFile, jvmSize = entry.size);
            else
                unpack(entry);
        });
        stream_.finish();
        // Nothing is ever written through a link.
        table_.forEach([&](const ArchiveEntry& entry, bool) { layLink(entry); });
        const String path = pathOf(archiveJvmFile);
        const StreamGuard file = createFile(path);
        write(file.get(), path, jvmFile, jvmSize);
        created_.keep();
    }

  private:
    String pathOf(const String& name) const {
        return directory_.empty() ? name : directory_ + "/" + name;
    }

    void unpack(const ArchiveEntry& entry) {
        const String path = pathOf(entry.name);
        if (entry.kind == EntryKind::directory)
            createDirectory(path);
        if (entry.isFile())
            unpackFile(path, entry);
        if (entry.kind == EntryKind::program && !makeExecutable(path.cstr()))
            throwSystemError("", GetLastError(), path);
    }

    void createDirectory(const String& path) {
        if (!CreateDirectoryA(path.cstr(), nullptr))
            throwSystemError((path + ": ").cstr(), GetLastError(), path);
        created_.add(path);
    }

    void unpackFile(const String& path, const ArchiveEntry& entry) {
        const StreamGuard file = createFile(path);
        const auto block = std::make_unique<char[]>(filterBlock);
        for (std::uint32_t position = 0; position < entry.size;) {
            const std::uint32_t size = std::min(entry.size - position, filterBlock);
            stream_.read(block.get(), size);
            if (entry.filtered)
                restoreCalls(reinterpret_cast<unsigned char*>(block.get()), size, position);
            write(file.get(), path, block.get(), size);
            position += size;
        }
    }

    // Only what isn't there yet, since it goes again when something fails.
    StreamGuard createFile(const String& path) {
        if (GetFileAttributesA(path.cstr()) != INVALID_FILE_ATTRIBUTES)
            throw LauncherException(path + " is there already.");
        StreamGuard file(openStream(path.cstr(), "wb"));
        if (!file)
            throwSystemError((path + ": ").cstr(), lastStreamError().code, path);
        created_.add(path);
        std::setvbuf(file.get(), nullptr, _IONBF, 0);
        return file;
    }

    void write(std::FILE* file, const String& path, const char* bytes, std::uint32_t size) {
        if (endRequests() > 0)
            throw LauncherException("Cancelled.");
        errno = 0;
        if (std::fwrite(bytes, 1, size, file) != size)
            throwSystemError((path + ": ").cstr(), lastStreamError().code, path);
        progress_.step(size);
    }

    void layLink(const ArchiveEntry& entry) {
        if (entry.kind != EntryKind::link)
            return;
        const String path = pathOf(entry.name);
        if (!makeLink(entry.target.cstr(), path.cstr()))
            throwSystemError((path + ": ").cstr(), GetLastError(), path);
        created_.add(path);
    }

    const String directory_;
    PackedStream stream_;
    const ArchiveTable table_;
    Progress progress_;
    Created created_;
};

}  // namespace

void unpackRuntime(std::FILE* installer, std::uint32_t size, const String& directory) {
    const RuntimeTrailer trailer = trailerOf(installer, size);
    if (std::fseek(installer, static_cast<long>(trailer.archiveOffset), SEEK_SET) != 0)
        throw LauncherException("The Java runtime can't be read.");
    Unpacking(installer, trailer, directory).run();
}

}  // namespace corvane
