// Reading and checking of a manifest.
#include "packer/project/Manifest.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <string_view>

#include "foundation/TextLines.h"
#include "packer/base/FileNames.h"
#include "packer/base/Paths.h"
#include "packer/base/TextFile.h"
#include "packer/project/PlacedTags.h"
#include "packer/project/WantedJava.h"
#include "packer/runtime/RuntimeInstaller.h"

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
// A launcher that behaves as a command-line tool.
constexpr std::string_view toolWord = "tool";
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
    ManifestReader(PlacedTags& tags, System system, Findings& findings)
        : tags_(tags), system_(system), findings_(findings) {}

    Manifest read() {
        for (const TagRecord& record : tags_.records())
            readRecord(record);
        if (tags_.valueCount(typeName(FileType::verifyClass)) == 0)
            addDefaultVerifyClass({tags_.path(), 0, 0});
        checkKept();
        tellJavaInMessages();
        assignIds();
        checkNames();
        return std::move(manifest_);
    }

  private:
    // A tag that names no files, or not only files.
    struct Key {
        const char* tag;
        void (ManifestReader::*read)(const std::string& value, const Place& place);
    };
    static const std::vector<Key> keys;

    void readRecord(const TagRecord& record) {
        const std::string tag = text(record.name);
        std::size_t index = 0;
        for (const String& value : record.values) {
            try {
                readValue(tag, text(value), tags_.place(tag, index++));
            } catch (const Mistake& mistake) {
                findings_.add(mistake);
            }
        }
    }

    void readValue(const std::string& tag, const std::string& value, const Place& place) {
        const auto named = [&tag](const char* name) { return tag == name; };
        const auto key = std::ranges::find_if(keys, named, &Key::tag);
        if (key != keys.end())
            return (this->*key->read)(value, place);
        if (std::ranges::count(faceKeys(), tag) > 0)
            return readFace(tag, value, place);
        const auto* const row = std::ranges::find_if(types, named, &TypeRow::name);
        if (row == std::end(types))
            throw Mistake("unknown-tag", tags_.placeOfTag(tag), "unknown tag " + tag,
                          didYouMean(tag, knownTags()));
        readEntry(row->type, value, place);
    }

    static std::vector<std::string> knownTags() {
        std::vector<std::string> names;
        for (const Key& key : keys)
            names.emplace_back(key.tag);
        for (const TypeRow& row : types)
            names.emplace_back(row.name);
        for (const std::string& key : faceKeys())
            names.emplace_back(key);
        return names;
    }

    void passOver(const std::string&, const Place&) {}

    void readKind(const std::string& value, const Place& place) {
        manifest_.kind =
            static_cast<std::uint8_t>(value == toolWord ? toolKind : readNumber(value, place, 255));
        manifest_.kindPlace = place;
    }

    void readVerifyClass(const std::string& value, const Place& place) {
        if (value == defaultVerifyClass)
            addDefaultVerifyClass(place);
        else if (value != noVerifyClass)
            readEntry(FileType::verifyClass, value, place);
    }

    void readFace(const std::string& tag, const std::string& value, const Place& place) {
        if (!faceTags_.insert(tag).second)
            throw Mistake("face", place, tag + " takes one value");
        try {
            setFace(manifest_.face, tag, value, tags_.path().parent_path());
        } catch (const PackError& failure) {
            throw Mistake("face", place, failure.what());
        }
    }

    // The installer of a Java runtime: FOLDER | key=value | key=value
    void readImage(const std::string& value, const Place& place) {
        const std::vector<std::string> pieces = split(value);
        ManifestEntry entry;
        entry.place = place;
        entry.image = tags_.path().parent_path() / pathOf(pieces[0]);
        entry.entry.type = FileType::jvmInstaller;
        entry.entry.name = system_ == System::windows ? "unpack-java.exe" : "unpack-java";
        try {
            const RuntimeImage image = readRuntimeImage(entry.image);
            checkImageSystem(image, entry.image, system_);
            entry.entry.decompressed = {image.fileCount, static_cast<std::int32_t>(image.size)};
        } catch (const PackError& failure) {
            std::string why = failure.what();
            fillIn(why, entry.image.string(), pieces[0]);
            throw Mistake("bad-image", place, why);
        }
        addEntry(std::move(entry), pieces);
    }

    void readKeepPlace(const std::string& value, const Place& place) {
        if (!isKeepPlace(value))
            throw Mistake("bad-keep-place", place, noKeepPlace + value, keepPlaceHint);
        manifest_.keepPlace = value;
        keepPlace_ = place;
    }

    // A place without a runtime would be one for nothing.
    void checkKept() const {
        const auto hasImage = [](const ManifestEntry& entry) { return !entry.image.empty(); };
        if (!manifest_.keepPlace.empty() && std::ranges::none_of(manifest_.entries, hasImage))
            findings_.error("nothing-to-keep", keepPlace_,
                            "KEEP_JVM goes with JVM_IMAGE, which names the runtime that is kept",
                            "for an installer of JVM_INSTALLER, corvane-pack jvm takes the place "
                            "with --keep");
    }

    void addDefaultVerifyClass(const Place& place) {
        const ShippedFile jar = shippedVerifyClass();
        ManifestEntry entry;
        entry.entry.type = FileType::verifyClass;
        entry.entry.name = jar.name;
        entry.content = jar.content;
        entry.place = place;
        manifest_.entries.push_back(std::move(entry));
        ids_.emplace_back();
    }

    // FILE | key=value | key=value
    void readEntry(FileType type, const std::string& value, const Place& place) {
        const std::vector<std::string> pieces = split(value);
        ManifestEntry entry;
        entry.place = place;
        entry.entry.type = type;
        if (isShippedWord(pieces[0]))
            takeShipped(entry, pieces[0]);
        else
            takeFile(entry, pieces[0]);
        addEntry(std::move(entry), pieces);
    }

    // Adds an entry with the settings behind its first piece.
    void addEntry(ManifestEntry entry, const std::vector<std::string>& pieces) {
        std::optional<std::int32_t> id;
        for (std::size_t i = 1; i < pieces.size(); ++i)
            readSetting(pieces[i], entry.place, entry.entry, id);
        manifest_.entries.push_back(std::move(entry));
        ids_.push_back(id);
    }

    void takeShipped(ManifestEntry& entry, const std::string& word) const {
        const FileType type = entry.entry.type;
        const std::optional<ShippedFile> file = findShipped(type, word, system_);
        if (!file)
            throw Mistake("unknown-word", entry.place, unknownWord(type, word));
        entry.word = word;
        entry.entry.name = file->name;
        entry.content = file->content;
    }

    void takeFile(ManifestEntry& entry, const std::string& name) const {
        entry.path = tags_.path().parent_path() / pathOf(name);
        std::error_code error;  // of a name that no system can hold, too
        if (!fs::is_regular_file(entry.path, error))
            throw Mistake("missing-file", entry.place, "there is no file " + name);
        entry.entry.name = entry.path.filename().string();
    }

    // A message that ships with the tool holds for every Java.
    void tellJavaInMessages() {
        for (ManifestEntry& entry : manifest_.entries) {
            if (entry.entry.type == FileType::jvmMessage && !entry.word.empty())
                fillIn(entry.content, "{java}", wantedJava(manifest_));
        }
    }

    void readSetting(const std::string& setting, const Place& place, PayloadEntry& entry,
                     std::optional<std::int32_t>& id) const {
        const std::size_t equals = std::min(setting.find('='), setting.size());
        const std::string key = trimmed(setting.substr(0, equals));
        const std::string value =
            equals == setting.size() ? std::string() : trimmed(setting.substr(equals + 1));
        if (key == "name")
            entry.name = value;
        else if (key == "id")
            id = readNumber(value, place);
        else if (key == "files")
            unpacked(entry).fileCount = readNumber(value, place);
        else if (key == "bytes")
            unpacked(entry).size = readNumber(value, place);
        else
            throw Mistake("unknown-setting", place, "unknown setting " + setting,
                          "known are id, name, files, bytes");
    }

    static Decompressed& unpacked(PayloadEntry& entry) {
        return entry.decompressed ? *entry.decompressed : entry.decompressed.emplace();
    }

    std::int32_t readNumber(const std::string& value, const Place& place,
                            std::int32_t most = std::numeric_limits<std::int32_t>::max()) const {
        std::int32_t number = 0;
        const auto [end, error] =
            std::from_chars(value.data(), value.data() + value.size(), number);
        if (error != std::errc() || end != value.data() + value.size() || number < 0 ||
            number > most)
            throw Mistake("bad-number", place,
                          "not a number from 0 to " + std::to_string(most) + ": " + value);
        return number;
    }

    // A file without an id of its own is known by its position.
    void assignIds() {
        std::map<std::int32_t, std::size_t> taken;
        for (std::size_t i = 0; i < manifest_.entries.size(); ++i) {
            const std::int32_t id = ids_[i].value_or(static_cast<std::int32_t>(i));
            if (!taken.emplace(id, i).second)
                findings_.error("id-taken", manifest_.entries[i].place,
                                "id " + std::to_string(id) + " is taken already");
            manifest_.entries[i].entry.id = id;
        }
    }

    // All of them may end up in one directory.
    void checkNames() const {
        std::set<std::string> taken = {std::string(inputFileName)};
        for (const ManifestEntry& file : manifest_.entries) {
            const std::string fault = fileNameFault(file.entry.name);
            if (!fault.empty())
                findings_.error("bad-name", file.place,
                                "not a file name for every system: " + file.entry.name,
                                fault + "; give another with name=");
            if (!taken.insert(foldedName(file.entry.name)).second)
                findings_.error("name-taken", file.place,
                                "the name " + file.entry.name + " is taken already",
                                "give another with name=");
        }
    }

    PlacedTags& tags_;
    System system_;
    Findings& findings_;
    Manifest manifest_;
    std::set<std::string> faceTags_;                // those that were read
    std::vector<std::optional<std::int32_t>> ids_;  // as given, one per entry
    Place keepPlace_;
};

const std::vector<ManifestReader::Key> ManifestReader::keys = {
    {noteTag.data(), &ManifestReader::passOver},        {"KIND", &ManifestReader::readKind},
    {"VERIFY_CLASS", &ManifestReader::readVerifyClass}, {"JVM_IMAGE", &ManifestReader::readImage},
    {"KEEP_JVM", &ManifestReader::readKeepPlace},
};

}  // namespace

const char* typeName(FileType type) {
    return std::find_if(std::begin(types), std::end(types),
                        [&](const TypeRow& row) { return row.type == type; })
        ->name;
}

void appendFiles(const Manifest& manifest, PayloadWriter& writer) {
    for (const ManifestEntry& file : manifest.entries) {
        if (file.path.empty()) {
            std::istringstream content(file.content);
            writer.appendFile(file.entry, content);
        } else {
            std::ifstream content(file.path, std::ios::binary);
            if (!content)
                throw PackError(file.path.string() + ": the file can't be opened");
            writer.appendFile(file.entry, content);
        }
    }
}

Manifest readManifest(const fs::path& path, System system, Findings& findings) {
    PlacedTags tags(path, readText(path));
    if (!tags.readAll(findings))
        return {};
    return ManifestReader(tags, system, findings).read();
}

}  // namespace corvane::pack
