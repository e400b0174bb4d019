// Reading of exported registry files, one logical line at a time.
#include "platform/hosted/RegistryFile.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <sstream>

#include "platform/hosted/WideText.h"
#include "platform/hosted/WindowsConstants.h"

namespace corvane::hosted {

namespace {

// An odd last byte is dropped.
std::u16string fromLittleEndian(const std::string& bytes) {
    std::u16string wide;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        wide += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                      static_cast<unsigned char>(bytes[i + 1]) << 8);
    }
    return wide;
}

// The text in UTF-8, whichever of the two forms the editor saved.
std::string withoutByteOrderMark(const std::string& text) {
    if (text.starts_with("\xFF\xFE")) {
        return toNarrow(fromLittleEndian(text.substr(2)));
    }
    return text.starts_with("\xEF\xBB\xBF") ? text.substr(3) : text;
}

// Without blanks, tabs and the carriage return at both ends.
std::string trimmed(const std::string& line) {
    const std::size_t first = line.find_first_not_of(" \t\r");
    const std::size_t last = line.find_last_not_of(" \t\r");
    return first == std::string::npos ? "" : line.substr(first, last - first + 1);
}

// Reads a quoted text from the start of `line` and takes it off.
std::optional<std::string> takeQuoted(std::string& line) {
    std::string text;
    for (std::size_t i = 1; i < line.size() && line[0] == '"'; ++i) {
        if (line[i] == '"') {
            line.erase(0, i + 1);
            return text;
        }
        // Only these two are escaped; another backslash is itself.
        const bool escape =
            line[i] == '\\' && i + 1 < line.size() && (line[i + 1] == '\\' || line[i + 1] == '"');
        text += line[escape ? ++i : i];
    }
    return std::nullopt;
}

// A hexadecimal number that fills the whole text.
std::optional<DWORD> hexNumber(const std::string& text) {
    DWORD number = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number, 16);
    return result.ec == std::errc() && result.ptr == end ? std::optional(number) : std::nullopt;
}

// Two-digit numbers between commas; none if anything else stands there.
std::optional<std::string> hexBytes(const std::string& text) {
    std::string bytes;
    std::istringstream items(text);
    for (std::string item; std::getline(items, item, ',');) {
        const auto number = hexNumber(trimmed(item));
        if (!number || *number > 0xFF) {
            return std::nullopt;
        }
        bytes += static_cast<char>(*number);
    }
    return bytes;
}

// The types whose data are texts, of which each form of the file has its own encoding.
bool isTextType(DWORD type) {
    return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

// Stored as the machine would: the low byte first.
std::optional<RegistryValue> dwordValue(const std::string& digits) {
    const auto number = hexNumber(digits);
    if (!number) {
        return std::nullopt;
    }
    std::string data;
    for (unsigned shift = 0; shift < 32; shift += 8) {
        data += static_cast<char>(*number >> shift & 0xFF);
    }
    return RegistryValue{REG_DWORD, data};
}

// "hex:..." is binary, "hex(N):..." of the type with the hexadecimal number N.
std::optional<RegistryValue> hexValue(const std::string& text, bool wideTexts) {
    const std::size_t colon = text.find(':');
    const bool typed = text.starts_with("hex(") && colon != std::string::npos && colon > 5 &&
                       text[colon - 1] == ')';
    if (!typed && !text.starts_with("hex:")) {
        return std::nullopt;
    }
    const auto type = typed ? hexNumber(text.substr(4, colon - 5)) : REG_BINARY;
    const auto bytes = hexBytes(text.substr(colon + 1));
    if (!type || !bytes) {
        return std::nullopt;
    }
    // Binary data are never converted, whatever they look like.
    const bool convert = wideTexts && isTextType(*type);
    return RegistryValue{*type, convert ? toNarrow(fromLittleEndian(*bytes)) : *bytes};
}

// What stands behind the equals sign; none for "-", which removes a value.
std::optional<RegistryValue> parseValue(std::string text, bool wideTexts) {
    if (auto quoted = takeQuoted(text)) {
        return RegistryValue{REG_SZ, *quoted + '\0'};
    }
    constexpr std::string_view dword = "dword:";
    return text.starts_with(dword) ? dwordValue(text.substr(dword.size()))
                                   : hexValue(text, wideTexts);
}

// A line, together with those that its last backslash takes in.
bool nextLine(std::istream& lines, std::string& line) {
    std::string part;
    if (!std::getline(lines, part)) {
        return false;
    }
    line = trimmed(part);
    while (!line.starts_with(';') && line.ends_with('\\') && std::getline(lines, part)) {
        line.pop_back();
        line += trimmed(part);
    }
    return true;
}

// Makes the key and those above it.
RegistryKey* addKey(RegistryTree& tree, const std::string& path) {
    for (std::size_t end = path.find('\\'); end != std::string::npos;
         end = path.find('\\', end + 1)) {
        tree[path.substr(0, end)];
    }
    return &tree[path];
}

// The key of a [KEY] line; null for a key to be removed.
RegistryKey* openSection(RegistryTree& tree, const std::string& line) {
    const std::size_t close = line.rfind(']');
    std::string path = line.substr(1, close == std::string::npos ? close : close - 1);
    // Some editors close a path with a backslash.
    while (path.ends_with('\\')) {
        path.pop_back();
    }
    return path.starts_with('-') ? nullptr : addKey(tree, path);
}

// A line without a name is none of a value.
void readValueLine(RegistryKey& key, std::string line, bool wideTexts) {
    std::string name;
    if (const auto quoted = takeQuoted(line)) {
        name = *quoted;
    } else if (line.starts_with('@')) {
        line.erase(0, 1);
    } else {
        return;
    }
    line = trimmed(line);
    const auto value =
        line.starts_with('=') ? parseValue(trimmed(line.substr(1)), wideTexts) : std::nullopt;
    if (value) {
        key[registryName(name)] = *value;
    }
}

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char c : text) {
        result += c == '\\' || c == '"' ? std::string{'\\', c} : std::string(1, c);
    }
    return result + '"';
}

// The key that a line opens, as it compares; none for any other line.
std::optional<std::string> keyOf(const std::string& line) {
    const std::size_t close = line.rfind(']');
    const bool opens = line.starts_with('[') && close != std::string::npos;
    return opens ? std::optional(registryName(line.substr(1, close - 1))) : std::nullopt;
}

bool isValueLine(std::string line, const std::string& name) {
    const auto named = takeQuoted(line);
    return named && registryName(*named) == registryName(name);
}

}  // namespace

std::string registryName(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return name;
}

RegistryTree parseRegistry(const std::string& text) {
    RegistryTree tree;
    RegistryKey* key = nullptr;
    bool wideTexts = false;
    std::istringstream lines(withoutByteOrderMark(text));
    for (std::string line; nextLine(lines, line);) {
        if (line.starts_with("Windows Registry Editor Version 5")) {
            wideTexts = true;
        } else if (line.starts_with('[')) {
            key = openSection(tree, line);
            // Values in front of the first key, or below a removed one, have no place.
        } else if (key != nullptr && !line.starts_with(';')) {
            readValueLine(*key, line, wideTexts);
        }
    }
    return tree;
}

std::string withRegistryText(const std::string& file, const std::string& key,
                             const std::string& name, const std::string& value) {
    const std::string text = withoutByteOrderMark(file);
    const std::string valueLine = quoted(name) + "=" + quoted(value) + "\n";
    std::string result = text.empty() ? "REGEDIT4\n" : "";
    bool inKey = false;
    bool written = false;
    bool replaced = false;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const auto opened = keyOf(trimmed(line));
        inKey = opened ? *opened == registryName(key) : inKey;
        if (replaced || (inKey && isValueLine(trimmed(line), name))) {
            replaced = trimmed(line).ends_with('\\');  // it goes on in the next line
            continue;
        }
        result += line + "\n";
        if (opened && inKey && !written) {
            result += valueLine;
            written = true;
        }
    }
    return written ? result : result + "\n[" + key + "]\n" + valueLine;
}

}  // namespace corvane::hosted
