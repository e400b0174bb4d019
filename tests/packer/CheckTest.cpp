// The rules of `check`, held against their page: each mistake there gives the messages that stand
// below it, and its mend gives none. With CORVANE_WRITE_PAGE set, the messages are written anew.
#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>

#include "packer/check/Check.h"

namespace corvane::pack {
namespace {

namespace fs = std::filesystem;

using Lines = std::vector<std::string>;

const fs::path page = fs::path(CORVANE_SOURCE_DIR) / "docs/mistakes.md";

const fs::path hello = fs::path(CORVANE_BINARY_DIR) / "examples/hello";

// The jar of the example with a class file of Java 17. Nothing in it is compressed.
std::string jarOfJava17() {
    std::ostringstream content;
    content << std::ifstream(hello / "hello.jar", std::ios::binary).rdbuf();
    std::string jar = content.str();
    const std::size_t data = jar.find("\xCA\xFE\xBA\xBE");
    const std::size_t header = jar.rfind("PK\3\4", data);
    const std::string checksum = jar.substr(header + 14, 4);
    std::size_t size = 0;
    for (std::size_t i = 4; i-- > 0;)
        size = size << 8 | static_cast<unsigned char>(jar[header + 18 + i]);
    jar[data + 7] = 61;
    const uLong sum = crc32(0, reinterpret_cast<const Bytef*>(&jar[data]), static_cast<uInt>(size));
    for (std::size_t at = jar.find(checksum); at != std::string::npos;
         at = jar.find(checksum, at)) {
        for (std::size_t i = 0; i < 4; ++i)
            jar[at + i] = static_cast<char>(sum >> 8 * i & 0xFF);
    }
    return jar;
}

Lines readLines(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    Lines lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

std::string joined(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += line + '\n';
    return text;
}

std::string tagOf(const std::string& line) {
    return line.substr(0, line.find(':') + 1);
}

// An example of the page: one file of the project, changed.
struct Example {
    std::string file;
    Lines wrong;
    Lines right;

    // The file with one of the two in the place of the right lines, if it has them, else of the
    // tag, or behind all others.
    Lines changed(const Lines& content, const Lines& tags) const {
        const auto same = std::ranges::search(content, right);
        if (!same.empty()) {
            Lines lines(content.begin(), same.begin());
            lines.insert(lines.end(), tags.begin(), tags.end());
            lines.insert(lines.end(), same.end(), content.end());
            return lines;
        }
        const std::string tag = tagOf(right.empty() ? wrong[0] : right[0]);
        Lines lines = content;
        const auto found = std::ranges::find_if(
            lines, [&](const std::string& line) { return line.starts_with(tag); });
        const bool block = found != lines.end() && found->ends_with(':');
        const auto end = block ? std::find(found, lines.end(), "/:") : found;
        lines.insert(found == lines.end() ? found : lines.erase(found, end + 1), tags.begin(),
                     tags.end());
        return lines;
    }
};

Lines told(const Findings& findings) {
    Lines lines;
    for (const auto& [severity, rule, place, text, hint] : findings.all()) {
        std::string where = place.file.filename().string();
        for (const int number : {place.line, place.column})
            where += number > 0 ? ":" + std::to_string(number) : "";
        lines.push_back("! " + where + (severity == Severity::error ? ": error: " : ": warning: ") +
                        text);
        if (!hint.empty())
            lines.push_back("!     " + hint);
    }
    return lines;
}

class CheckTest : public testing::Test {
  protected:
    CheckTest() {
        fs::remove_all(folder_);
        fs::create_directories(folder_);
    }

    Findings check(const Example& example, const Lines& tags) {
        std::ofstream(folder_ / "app.jar", std::ios::binary) << jarOfJava17();
        for (const auto& [name, content] : project_) {
            const Lines& lines = name == example.file ? example.changed(content, tags) : content;
            std::ofstream(folder_ / name, std::ios::binary) << joined(lines);
        }
        Findings findings;
        checkProject(folder_, System::windows, findings);
        return findings;
    }

    // What the page says of an example.
    Lines messages(const std::string& rule, const Example& example) {
        EXPECT_EQ(told(check(example, example.right)), Lines());
        const Findings findings = check(example, example.wrong);
        EXPECT_TRUE(std::ranges::any_of(
            findings.all(), [&rule](const Finding& finding) { return finding.rule == rule; }));
        return told(findings);
    }

    // The page with the messages as they are; remembers the project at its beginning.
    Lines written(const Lines& lines) {
        Lines out;
        std::string rule;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            out.push_back(lines[i]);
            if (lines[i].starts_with("### "))
                rule = lines[i].substr(4);
            else if (lines[i] == "```")
                copyFile(lines, i, out);
            else if (lines[i] == "```diff")
                copyExample(lines, i, rule, out);
        }
        return out;
    }

  protected:
    const fs::path folder_ = fs::path(CORVANE_BINARY_DIR) / "tests/packer/check";

  private:
    // A fenced file, whose name stands two lines above as `NAME`:
    void copyFile(const Lines& lines, std::size_t& i, Lines& out) {
        Lines& content = project_[lines[i - 2].substr(1, lines[i - 2].size() - 3)];
        for (++i; lines[i] != "```"; ++i) {
            content.push_back(lines[i]);
            out.push_back(lines[i]);
        }
        out.push_back(lines[i]);
    }

    void copyExample(const Lines& lines, std::size_t& i, const std::string& rule, Lines& out) {
        Example example{lines[++i], {}, {}};
        out.push_back(lines[i]);
        for (++i; lines[i] != "```"; ++i) {
            if (lines[i][0] == '!')
                continue;
            (lines[i][0] == '-' ? example.wrong : example.right).push_back(lines[i].substr(1));
            out.push_back(lines[i]);
        }
        SCOPED_TRACE(rule + ": " + joined(example.wrong));
        const Lines messages = this->messages(rule, example);
        out.insert(out.end(), messages.begin(), messages.end());
        out.push_back(lines[i]);
    }

    std::map<std::string, Lines> project_;
};

TEST_F(CheckTest, MistakesAreToldAsThePageSays) {
    const Lines lines = readLines(page);
    const Lines now = written(lines);
    if (std::getenv("CORVANE_WRITE_PAGE") != nullptr)
        std::ofstream(page, std::ios::binary) << joined(now);
    else
        EXPECT_EQ(joined(lines), joined(now));
}

TEST_F(CheckTest, TheExamplesAndWhatShipsAreSound) {
    for (const auto& [manifest, system] : {std::pair("hello.manifest", System::host),
                                           std::pair("hello-named.manifest", System::host),
                                           std::pair("hello-windows.manifest", System::windows)}) {
        Findings findings;
        checkProject(hello / manifest, system, findings);
        EXPECT_EQ(told(findings), Lines()) << manifest;
    }
}

// What can't be seen on a page.
TEST_F(CheckTest, BytesThatNoLauncherReads) {
    const std::string good = "DESC: App\nCOMMAND: x\n";
    const std::pair<std::string, std::string> cases[] = {
        {"\xEF\xBB\xBF" + good, "byte-order-mark"},
        {std::string("\xFF\xFE"
                     "D\0",
                     4),
         "utf-16"},
        {"DESC: App", "no-final-line-feed"},
    };
    for (const auto& [bytes, rule] : cases) {
        std::ofstream(folder_ / "a.manifest", std::ios::binary)
            << "INSTRUCTIONS: <tool>\nLAUNCHSCRIPT: a.launch\n";
        std::ofstream(folder_ / "a.launch", std::ios::binary) << bytes;
        Findings findings;
        checkProject(folder_ / "a.manifest", System::windows, findings);
        ASSERT_FALSE(findings.all().empty());
        EXPECT_EQ(findings.all()[0].rule, rule);
    }
}

}  // namespace
}  // namespace corvane::pack
