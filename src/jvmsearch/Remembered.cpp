// Remembered homes. The value holds a mark of everything that must still be the same, whether the
// home lies beside the launcher, and the home.
#include "jvmsearch/Remembered.h"

#include <charconv>

#include "base/Log.h"
#include "base/Messages.h"
#include "foundation/TextLines.h"
#include "jvmsearch/Finding.h"
#include "jvmsearch/PlatformHint.h"

namespace corvane {

namespace {

constexpr const char* placeTag = "REMEMBER";

// What runs write into a JVM file is no part of what it says.
constexpr const char* writtenTags[] = {"JVM_HOME", "JVM_FILE", "JVM_TEMP"};

// A running 64-bit FNV-1a value.
class Digest {
  public:
    void add(const String& text) {
        for (const char character : text.view())
            addByte(static_cast<unsigned char>(character));
        addByte(0);  // so that no two lists of texts look like one
    }
    std::uint64_t value() const { return value_; }

  private:
    void addByte(unsigned char byte) { value_ = (value_ ^ byte) * 0x100000001B3; }

    std::uint64_t value_ = 0xCBF29CE484222325;
};

bool isWritten(const String& tag) {
    for (const char* const written : writtenTags) {
        if (tag == written)
            return true;
    }
    return false;
}

void addTags(const TagFile& tags, Digest& digest) {
    for (const TagRecord& record : tags.records()) {
        if (isWritten(record.name))
            continue;
        digest.add(record.name + "\n" + decimalText(record.values.count()));
        for (const String& value : record.values)
            digest.add(value);
    }
    digest.add("");
}

void appendHex(String& text, std::uint64_t number) {
    char digits[16];
    const auto end = std::to_chars(digits, digits + sizeof digits, number, 16).ptr;
    text.append(digits, static_cast<std::size_t>(end - digits)).append(' ');
}

std::uint64_t joined(DWORD high, DWORD low) {
    return std::uint64_t{high} << 32 | low;
}

// What must be the same in the next run: the digest of the JVM files, the size and the time of the
// executable. Empty if the executable isn't there.
String markOf(const Digest& digest, const JvmFile& jvmFile, const String& home) {
    String exe = home;
    ensureTrailingSeparator(exe);
    exe.append(jvmFile.exePath());
    WIN32_FILE_ATTRIBUTE_DATA file{};
    if (!GetFileAttributesExA(exe.cstr(), GetFileExInfoStandard, &file))
        return {};
    String mark;
    appendHex(mark, digest.value());
    appendHex(mark, joined(file.nFileSizeHigh, file.nFileSizeLow));
    appendHex(mark,
              joined(file.ftLastWriteTime.dwHighDateTime, file.ftLastWriteTime.dwLowDateTime));
    return mark;
}

// The parts of a value: the mark up to its third blank, a digit and a blank, the home.
struct Remembered {
    String mark;
    bool temporary = false;
    String home;
};

Remembered parse(const String& value) {
    std::size_t end = 0;
    for (int blanks = 0; blanks < 3 && end != String::npos; ++blanks)
        end = value.find(' ', end) == String::npos ? String::npos : value.find(' ', end) + 1;
    if (end == String::npos || end + 2 > value.length())
        return {};
    return {value.substr(0, end), value.at(end) == '1', value.substr(end + 2)};
}

LSTATUS writeValue(const RegistryPlace& place, const String& value) {
    KeyGuard key;
    const LSTATUS code =
        RegCreateKeyExA(place.hive, place.keyPath.cstr(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                        KEY_WRITE, nullptr, key.put(), nullptr);
    if (code != ERROR_SUCCESS)
        return code;
    return RegSetValueExA(key.get(), place.valueName.cstr(), 0, REG_SZ,
                          reinterpret_cast<const BYTE*>(value.cstr()),
                          static_cast<DWORD>(value.length() + 1));
}

void writePlace(const String& text, const String& value) {
    const LSTATUS code = writeValue(parseRegistryPlace(text), value);
    if (code != ERROR_SUCCESS)
        logMessage("The JVM can't be remembered in " + text + ": " +
                       systemErrorText(static_cast<std::uint32_t>(code)),
                   LogLevel::warning);
}

}  // namespace

std::unique_ptr<JvmMatch> recallMatch(const JvmFileList& jvmFiles) {
    Digest digest;
    for (const JvmFile& jvmFile : jvmFiles) {
        addTags(jvmFile.tags(), digest);
        const String place = jvmFile.tag(placeTag);
        const Remembered remembered =
            place.empty() ? Remembered() : parse(readRegistryText(parseRegistryPlace(place)));
        if (remembered.home.empty() ||
            !(markOf(digest, jvmFile, remembered.home) == remembered.mark))
            continue;
        const CandidateOrigin origin(placeTag, place);
        candidateObject(candidateNow(remembered.home), jvmFile, {"remembered", {}, {}}).write();
        logMessage("Taking the JVM at " + remembered.home + ", remembered in " + place);
        auto match = std::make_unique<JvmMatch>(remembered.home, jvmFile.tags());
        match->temporary = remembered.temporary;
        return match;
    }
    return nullptr;
}

void rememberMatch(const JvmFileList& jvmFiles, const JvmMatch& match) {
    if (runContext().playStart != nullptr)
        return;
    Digest digest;
    for (const JvmFile& jvmFile : jvmFiles) {
        addTags(jvmFile.tags(), digest);
        if (&jvmFile.tags() != &match.tags())
            continue;
        const String place = jvmFile.tag(placeTag);
        const String mark = place.empty() ? String() : markOf(digest, jvmFile, match.home());
        if (!mark.empty())
            writePlace(place, mark + (match.temporary ? "1 " : "0 ") + match.home());
        return;
    }
}

}  // namespace corvane
