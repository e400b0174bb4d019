// Reading and checking of a manifest.
#include "packer/project/Manifest.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <functional>
#include <limits>
#include <map>
#include <optional>
#include <string_view>

#include "foundation/Exceptions.h"
#include "foundation/TextLines.h"
#include "launcherfile/TagFile.h"
#include "packer/base/Findings.h"
#include "packer/base/Paths.h"
#include "packer/project/WantedJava.h"

namespace corvane::pack {

namespace {

namespace fs = std::filesystem;

struct TypeRow {
    FileType type;
    const char* name;
};

constexpr TypeRow types[] = {
    {FileType::instructions, "INSTRUCTIONS"},
    {FileType::jvmFile, "JVM"},
    {FileType::launchScript, "LAUNCHSCRIPT"},
    {FileType::classpathFile, "CLASSPATH_FILE"},
    {FileType::jvmInstaller, "JVM_INSTALLER"},
    {FileType::verifyClass, "VERIFY_CLASS"},
    {FileType::applicationArchive, "APPLICATION_ARCHIVE"},
    {FileType::embeddedLauncher, "EMBEDDED_LAUNCHER"},
    {FileType::jvmMessage, "JVMMESSAGE"},
};

constexpr std::string_view noVerifyClass = "none";
constexpr std::string_view defaultVerifyClass = "default";
// `-cv:extract` writes a file of this name itself.
constexpr std::string_view inputFileName = "input.tag";

std::string text(const String& string) {
    return std::string(string.view());
}

std::string trimmed(std::string_view piece) {
    String line(piece.data(), piece.size());
    trim(line);
    return text(line);
}

// `line` 0 is what the manifest leaves unsaid.
[[noreturn]] void fail(const fs::path& file, int line, const std::string& message) {
    if (line == 0)
        throw PackError(file.string() + ": the verification class, which is embedded unless the " +
                        "manifest says VERIFY_CLASS: none: " + message);
    throw PackError(file.string() + ":" + std::to_string(line) + ": " + message);
}

// Reads a tag file whole; its faults are told with file and line. Some systems open a directory,
// too, which would read as an empty file.
void readTags(TagFile& tags, const fs::path& path) {
    const auto close = [](std::FILE* file) { std::fclose(file); };
    const std::unique_ptr<std::FILE, decltype(close)> stream(
        std::fopen(path.string().c_str(), "rb"), close);
    if (!stream || fs::is_directory(path))
        throw PackError(path.string() + ": the file can't be opened");
    try {
        tags.read(stream.get(), path.string().c_str(), 0, -1);
    } catch (const LauncherException& failure) {
        fail(path, tags.lineCount(), text(failure.message));
    }
}

// An embedded tag file is read up to a line feed, so it must end with one.
void checkTagFile(const fs::path& path) {
    TagFile tags;
    readTags(tags, path);
    std::ifstream stream(path, std::ios::binary | std::ios::ate);
    if (stream.tellg() > 0 && stream.seekg(-1, std::ios::end) && stream.get() != '\n')
        fail(path, tags.lineCount(), "the file does not end with a line feed");
}

// The lines of the manifest, to tell where a value stands: the tag reader keeps no positions.
class Lines {
  public:
    explicit Lines(const fs::path& path) {
        std::ifstream stream(path);
        for (std::string line; std::getline(stream, line);)
            lines_.push_back(trimmed(line));
    }

    // The line of `value` in the last occurrence of `tag`, counted from 1.
    int find(const std::string& tag, const std::string& value) const {
        const auto begins = [&](const std::string& line) { return line.starts_with(tag + ":"); };
        const auto last = std::find_if(lines_.rbegin(), lines_.rend(), begins);
        const auto start = last == lines_.rend() ? lines_.begin() : last.base() - 1;
        const auto found = std::find_if(start, lines_.end(), [&](const std::string& line) {
            return line.find(value) != std::string::npos;
        });
        return static_cast<int>((found == lines_.end() ? start : found) - lines_.begin()) + 1;
    }

  private:
    std::vector<std::string> lines_;
};

std::vector<std::string> split(const std::string& value) {
    std::vector<std::string> pieces;
    for (std::size_t start = 0; start <= value.size();) {
        const std::size_t bar = std::min(value.find('|', start), value.size());
        pieces.push_back(trimmed(std::string_view(value).substr(start, bar - start)));
        start = bar + 1;
    }
    return pieces;
}

// What to say of a word that stands for nothing.
std::string unknownWord(FileType type, const std::string& word) {
    const std::vector<std::string> words = shippedWords(type);
    std::string known;
    for (const std::string& each : words)
        known += (known.empty() ? "" : ", ") + each;
    const std::string meant = didYouMean(word, words);
    return "no " + std::string(typeName(type)) + " ships under the word " + word +
           (words.empty() ? "; name a file" : "; there are " + known) +
           (meant.empty() ? "" : ": " + meant);
}

void fillIn(std::string& text, std::string_view place, const std::string& value) {
    const std::size_t start = text.find(place);
    if (start != std::string::npos)
        text.replace(start, place.size(), value);
}

class ManifestReader {
  public:
    ManifestReader(const fs::path& path, System system)
        : path_(path), system_(system), lines_(path) {}

    Manifest read() {
        TagFile tags;
        readTags(tags, path_);
        for (const TagRecord& record : tags.records())
            readRecord(record);
        if (tags.valueCount(typeName(FileType::verifyClass)) == 0)
            addDefaultVerifyClass(0);
        tellJavaInMessages();
        assignIds();
        checkNames();
        return std::move(manifest_);
    }

  private:
    // A tag that names no files, or not only files.
    struct Key {
        const char* tag;
        void (ManifestReader::*read)(const std::string& value, int line);
    };
    static const std::vector<Key> keys;

    void readRecord(const TagRecord& record) {
        const std::string tag = text(record.name);
        for (const String& recordValue : *record.values) {
            const std::string value = text(recordValue);
            readValue(tag, value, lines_.find(tag, value));
        }
    }

    void readValue(const std::string& tag, const std::string& value, int line) {
        const auto named = [&tag](const char* name) { return tag == name; };
        const auto key = std::ranges::find_if(keys, named, &Key::tag);
        if (key != keys.end())
            return (this->*key->read)(value, line);
        const auto* const row = std::ranges::find_if(types, named, &TypeRow::name);
        if (row == std::end(types))
            fail(path_, line, "unknown tag " + tag);
        readEntry(row->type, value, line);
    }

    void readKind(const std::string& value, int line) {
        manifest_.kind = static_cast<std::uint8_t>(readNumber(value, line, 255));
    }

    void readVerifyClass(const std::string& value, int line) {
        if (value == defaultVerifyClass)
            addDefaultVerifyClass(line);
        else if (value != noVerifyClass)
            readEntry(FileType::verifyClass, value, line);
    }

    void addDefaultVerifyClass(int line) {
        const ShippedFile jar = shippedVerifyClass();
        ManifestEntry entry;
        entry.entry.type = FileType::verifyClass;
        entry.entry.name = jar.name;
        entry.content = jar.content;
        entry.line = line;
        manifest_.entries.push_back(std::move(entry));
        ids_.emplace_back();
    }

    // FILE | key=value | key=value
    void readEntry(FileType type, const std::string& value, int line) {
        const std::vector<std::string> pieces = split(value);
        ManifestEntry entry;
        entry.line = line;
        entry.entry.type = type;
        if (isShippedWord(pieces[0]))
            takeShipped(entry, pieces[0]);
        else
            takeFile(entry, pieces[0]);
        std::optional<std::int32_t> id;
        for (std::size_t i = 1; i < pieces.size(); ++i)
            readSetting(pieces[i], line, entry.entry, id);
        manifest_.entries.push_back(std::move(entry));
        ids_.push_back(id);
    }

    void takeShipped(ManifestEntry& entry, const std::string& word) const {
        const FileType type = entry.entry.type;
        const std::optional<ShippedFile> file = findShipped(type, word, system_);
        if (!file)
            fail(path_, entry.line, unknownWord(type, word));
        entry.word = word;
        entry.entry.name = file->name;
        entry.content = file->content;
    }

    void takeFile(ManifestEntry& entry, const std::string& name) const {
        entry.path = path_.parent_path() / pathOf(name);
        if (!fs::is_regular_file(entry.path))
            fail(path_, entry.line, "there is no file " + entry.path.string());
        entry.entry.name = entry.path.filename().string();
        if (isTagFile(entry.entry.type))
            checkTagFile(entry.path);
    }

    // A message that ships with the tool holds for every Java.
    void tellJavaInMessages() {
        for (ManifestEntry& entry : manifest_.entries) {
            if (entry.entry.type == FileType::jvmMessage && !entry.word.empty())
                fillIn(entry.content, "{java}", wantedJava(manifest_));
        }
    }

    void readSetting(const std::string& setting, int line, PayloadEntry& entry,
                     std::optional<std::int32_t>& id) const {
        const std::size_t equals = std::min(setting.find('='), setting.size());
        const std::string key = trimmed(setting.substr(0, equals));
        const std::string value =
            equals == setting.size() ? std::string() : trimmed(setting.substr(equals + 1));
        if (key == "name")
            entry.name = value;
        else if (key == "id")
            id = readNumber(value, line);
        else if (key == "files")
            unpacked(entry).fileCount = readNumber(value, line);
        else if (key == "bytes")
            unpacked(entry).size = readNumber(value, line);
        else
            fail(path_, line, "unknown setting " + setting + "; known are id, name, files, bytes");
    }

    static Decompressed& unpacked(PayloadEntry& entry) {
        return entry.decompressed ? *entry.decompressed : entry.decompressed.emplace();
    }

    std::int32_t readNumber(const std::string& value, int line,
                            std::int32_t most = std::numeric_limits<std::int32_t>::max()) const {
        std::int32_t number = 0;
        const auto [end, error] =
            std::from_chars(value.data(), value.data() + value.size(), number);
        if (error != std::errc() || end != value.data() + value.size() || number < 0 ||
            number > most)
            fail(path_, line, "not a number from 0 to " + std::to_string(most) + ": " + value);
        return number;
    }

    // A file without an id of its own is known by its position.
    void assignIds() {
        std::map<std::int32_t, std::size_t> taken;
        for (std::size_t i = 0; i < manifest_.entries.size(); ++i) {
            const std::int32_t id = ids_[i].value_or(static_cast<std::int32_t>(i));
            if (!taken.emplace(id, i).second)
                fail(path_, manifest_.entries[i].line,
                     "id " + std::to_string(id) + " is taken already");
            manifest_.entries[i].entry.id = id;
        }
    }

    // Names are file names, and all of them may end up in one directory.
    void checkNames() const {
        std::map<std::string, int> taken = {{std::string(inputFileName), 0}};
        for (const ManifestEntry& file : manifest_.entries) {
            const PayloadEntry& entry = file.entry;
            const int line = file.line;
            const bool plain = entry.name.find_first_of("/\\:*?\"<>|\n") == std::string::npos &&
                               !entry.name.empty() && entry.name != "." && entry.name != "..";
            if (!plain || entry.name.size() > static_cast<std::size_t>(longestName))
                fail(path_, line, "not a file name: " + entry.name);
            std::string key = entry.name;
            std::transform(key.begin(), key.end(), key.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
            if (!taken.emplace(key, line).second)
                fail(path_, line,
                     "the name " + entry.name + " is taken already; give another with name=");
        }
    }

    fs::path path_;
    System system_;
    Lines lines_;
    Manifest manifest_;
    std::vector<std::optional<std::int32_t>> ids_;  // as given, one per entry
};

const std::vector<ManifestReader::Key> ManifestReader::keys = {
    {"KIND", &ManifestReader::readKind},
    {"VERIFY_CLASS", &ManifestReader::readVerifyClass},
};

}  // namespace

const char* typeName(FileType type) {
    return std::find_if(std::begin(types), std::end(types),
                        [&](const TypeRow& row) { return row.type == type; })
        ->name;
}

Manifest readManifest(const fs::path& path, System system) {
    return ManifestReader(path, system).read();
}

}  // namespace corvane::pack
