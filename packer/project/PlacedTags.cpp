// A tag file that knows where its tags and values stand.
#include "packer/project/PlacedTags.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <random>
#include <sstream>

#include "foundation/ArgumentText.h"
#include "foundation/Exceptions.h"
#include "packer/base/Errors.h"

namespace corvane::pack {

namespace {

namespace fs = std::filesystem;
using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

constexpr const char* blanks = " \t\r";

// A file that is gone when it is closed. Windows' own lie in the root of the drive, where few may
// write, and two programs get the same name.
Stream temporaryFile() {
    std::random_device random;
    const std::string name = "corvane-pack-" + std::to_string(random()) + std::to_string(random());
    const fs::path path = fs::temp_directory_path() / name;
    Stream stream(std::fopen(path.string().c_str(), "w+bD"), std::fclose);  // D: only Windows knows
    std::error_code ignored;
    fs::remove(path, ignored);
    return stream;
}

// The reader takes a stream, which is such a file for a text that comes from nowhere.
Stream streamOf(const std::string& text) {
    Stream stream = temporaryFile();
    if (!stream || std::fwrite(text.data(), 1, text.size(), stream.get()) != text.size() ||
        std::fseek(stream.get(), 0, SEEK_SET) != 0)
        throw PackError("no temporary file can be written");
    return stream;
}

// The words of the reader's message without file and line, which stand in front of ours.
std::string ownWords(const String& message) {
    const std::string text(message.view());
    const std::size_t arrow = text.find("==> ");
    return arrow == std::string::npos ? text : text.substr(arrow + 4);
}

// Where the value begins on its line: behind the colon if the name stands there, too.
std::size_t startOfValue(const std::string& line, bool besideName) {
    const std::size_t from = besideName ? line.find(':') + 1 : 0;
    return std::min(line.find_first_not_of(blanks, from), line.size());
}

// Bytes of the line that `offset` bytes of a quoted value take: a quote stands there doubled.
std::size_t quotedLength(const std::string& line, std::size_t start, std::size_t offset) {
    std::size_t at = start;
    for (; offset > 0 && at < line.size(); --offset)
        at += line[at] == '"' ? 2U : 1U;
    return at - start;
}

}  // namespace

PlacedTags::PlacedTags(fs::path path, std::string text)
    : path_(std::move(path)), text_(std::move(text)) {}

bool PlacedTags::readAll(Findings& findings) {
    if (!checkBytes(findings))
        return false;
    try {
        read(streamOf(text_).get(), path_.string().c_str(), 0, -1);
    } catch (const LauncherException& failure) {
        findings.error("syntax", at(lineCount(), 0), ownWords(failure.message));
        return false;
    }
    checkNames(findings);
    return true;
}

bool PlacedTags::checkBytes(Findings& findings) const {
    if (text_.starts_with("\xFF\xFE") || text_.starts_with("\xFE\xFF") ||
        text_.find('\0') != std::string::npos)
        findings.error("utf-16", at(0, 0), "this is no text in UTF-8, but in UTF-16 or none at all",
                       "save it as UTF-8 without a byte order mark");
    else if (text_.starts_with("\xEF\xBB\xBF"))
        findings.error("byte-order-mark", at(1, 1),
                       "the file begins with a byte order mark, which becomes a part of the first "
                       "name",
                       "save it as UTF-8 without a byte order mark");
    else
        return true;
    return false;
}

void PlacedTags::checkEnd(Findings& findings) const {
    if (!text_.empty() && !text_.ends_with('\n'))
        findings.error("no-final-line-feed",
                       at(1 + static_cast<int>(std::ranges::count(text_, '\n')), 0),
                       "the file does not end with a line feed", "end its last line");
}

void PlacedTags::checkNames(Findings& findings) const {
    for (const Name& name : names_) {
        if (name.replaced && name.name != noteTag)
            findings.warning("tag-given-twice", at(name.line, 1),
                             name.name + " stands here and again at line " +
                                 std::to_string(find(name.name)->line) + ", and only that counts",
                             "give several values as a block: " + name.name + ": ... /:");
        checkQuotes(name, findings);
    }
}

void PlacedTags::checkQuotes(const Name& name, Findings& findings) const {
    for (const int line : name.valueLines) {
        const std::string text = lineAt(line);
        const std::size_t start = startOfValue(text, line == name.line);
        if (text.substr(start, 1) != "\"")
            continue;
        std::size_t end = start + 1;
        readArgument(text.c_str(), end, true);
        end = text.find_first_not_of(blanks, std::min(end, text.size()));
        if (end != std::string::npos)
            findings.warning("text-behind-quote", at(line, static_cast<int>(end) + 1),
                             "what stands behind the closing quote is ignored",
                             "take it into the quotes, and double those that it holds");
    }
}

void PlacedTags::onTag(const String& name) {
    const std::string text(name.view());
    for (Name& earlier : names_)
        earlier.replaced = earlier.replaced || earlier.name == text;
    names_.push_back({text, lineCount(), {}, false});
}

void PlacedTags::onValue() {
    names_.back().valueLines.push_back(lineCount());
}

const PlacedTags::Name* PlacedTags::find(const std::string& tag) const {
    const auto found = std::find_if(names_.rbegin(), names_.rend(),
                                    [tag](const Name& name) { return name.name == tag; });
    return found == names_.rend() ? nullptr : &*found;
}

Place PlacedTags::placeOfTag(const std::string& tag) const {
    const Name* const name = find(tag);
    if (name == nullptr)
        return at(0, 0);
    return at(name->line, static_cast<int>(startOfValue(lineAt(name->line), false)) + 1);
}

Place PlacedTags::place(const std::string& tag, std::size_t index, std::size_t offset) const {
    const Name* const name = find(tag);
    if (name == nullptr || index >= name->valueLines.size())
        return placeOfTag(tag);
    const int line = name->valueLines[index];
    const std::string text = lineAt(line);
    std::size_t start = startOfValue(text, line == name->line);
    if (text.substr(start, 1) == "\"") {
        ++start;
        offset = quotedLength(text, start, offset);
    }
    return at(line, static_cast<int>(std::min(start + offset, text.size())) + 1);
}

std::string PlacedTags::lineAt(int line) const {
    std::istringstream lines(text_);
    std::string text;
    for (int number = 0; number < line; ++number)
        std::getline(lines, text);
    return text;
}

}  // namespace corvane::pack
