// Tag files and scripts, against plain reading and against a language made for scripts.
#include <malloc.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <vector>

#include "Comparison.h"
#include "instructions/Instructions.h"
#include "platform/Guards.h"
#include "platform/Platform.h"
#include "platform/hosted/ChildText.h"
#include "support/Scratch.h"
#include "support/TestContext.h"
#include "variables/VariableTable.h"

namespace corvane::bench {

namespace {

std::string tagText(int count) {
    std::ostringstream text;
    for (int i = 0; i < count; ++i)
        text << "TAG_" << i << ":  the value of tag " << i << "\n";
    return text.str();
}

class ManyFiles {
  public:
    static constexpr int count = 1000;
    static constexpr int tags = 300;

    ManyFiles() {
        for (int i = 0; i < count; ++i)
            paths_.push_back(scratch_.write("file" + std::to_string(i) + ".tag", tagText(tags)));
    }

    // Keeps all the files, and gives what they take in memory.
    std::size_t load() const {
        const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
        std::vector<std::unique_ptr<TagFile>> files;
        for (const String& path : paths_)
            files.push_back(std::make_unique<TagFile>(path));
        return mallinfo2().uordblks + mallinfo2().hblkhd - before;
    }

    // Reads the files in one piece each, and finds their lines.
    std::size_t readLines() const {
        std::size_t lines = 0;
        eachLine([&lines] { ++lines; });
        return lines;
    }

    // The same, and makes for each line the blocks that no tag is without: two texts, the item that
    // holds one of them and the first slots of a list.
    std::size_t readIntoBlocks() const {
        std::vector<std::unique_ptr<char[]>> blocks;
        eachLine([&blocks] {
            for (const std::size_t size : {33U, 33U, 40U, 30U * 8})
                blocks.push_back(std::make_unique<char[]>(size));
        });
        return blocks.size() / 4;
    }

  private:
    void eachLine(const auto& action) const {
        std::vector<char> text(1 << 20);
        for (const String& path : paths_) {
            const StreamGuard file(openStream(path.cstr(), "rb"));
            const char* at = text.data();
            const char* const end = at + std::fread(text.data(), 1, text.size(), file.get());
            while (at != end) {
                const auto size = static_cast<std::size_t>(end - at);
                at = static_cast<const char*>(std::memchr(at, '\n', size)) + 1;
                action();
            }
        }
    }

    test::Scratch scratch_;
    std::vector<String> paths_;
};

void beside(benchmark::State& state, const ManyFiles& files,
            std::size_t (ManyFiles::*theirs)() const) {
    const test::TestContext run;
    compare(state, {"", [&] { benchmark::DoNotOptimize(files.load()); },
                    [&] {
                        if ((files.*theirs)() != std::size_t{ManyFiles::count} * ManyFiles::tags)
                            state.SkipWithError("lines are missing");
                    }});
}

void manyFiles(benchmark::State& state) {
    const ManyFiles files;
    beside(state, files, &ManyFiles::readLines);
    const std::size_t bytes = tagText(ManyFiles::tags).size() * ManyFiles::count;
    state.SetLabel(labelOf("reading their lines; in memory " +
                               std::to_string(files.load() / bytes) + " times the bytes, goal 3",
                           "3"));
}
BENCHMARK(manyFiles)->Name("1000 tag files of 300 tags")->Iterations(5)->UseManualTime();

void manyBlocks(benchmark::State& state) {
    beside(state, ManyFiles(), &ManyFiles::readIntoBlocks);
    state.SetLabel(labelOf("reading lines into as many blocks", ""));
}
BENCHMARK(manyBlocks)->Name("the same beside its blocks")->Iterations(5)->UseManualTime();

void manyTags(benchmark::State& state) {
    const test::TestContext run;
    const test::Scratch scratch;
    const String all = scratch.write("all.tag", tagText(20000));
    const String half = scratch.write("half.tag", tagText(10000));
    const auto load = [&state](const String& path, std::int32_t count) {
        if (TagFile(path).records().count() != count)
            state.SkipWithError("tags are missing");
    };
    compare(state,
            {"10000 tags", [&] { load(all, 20000); }, [&] { load(half, 10000); }, [] {}, "2"});
}
BENCHMARK(manyTags)->Name("20000 tags in a file")->Iterations(11)->UseManualTime();

constexpr int rounds = 1000000;
constexpr int labels = 300;

// Each round sets two variables and jumps twice, down over the labels and back.
void setScript(TagFile& tags) {
    for (const char* const line : {"// rounds", ":TOP", "SET S1 = \"a text\"", "GOTO L299"})
        tags.addValue("INSTRUCTIONS", line);
    for (int i = 0; i < labels; ++i)
        tags.addValue("INSTRUCTIONS", (":L" + std::to_string(i)).c_str());
    for (const char* const line : {"SET S2 = \"@S1@ and more\"", "GOTO TOP"})
        tags.addValue("INSTRUCTIONS", line);
}

// The same in a loop, since so many labels of Lua's own are too many for its parser.
std::string luaScript() {
    std::ostringstream text;
    text << "local labels = {}\nfor i = 0, " << labels - 1 << " do labels['L' .. i] = i end\n"
         << "local n, s1, s2 = 0, '', ''\nwhile n < " << rounds << " do\n"
         << "  s1 = 'a text'\n  assert(labels['L299'])\n  s2 = s1 .. ' and more'\n  n = n + "
            "1\nend\n";
    return text.str();
}

void script(benchmark::State& state) {
    const test::TestContext run;
    const test::Scratch scratch;
    TagFile tags;
    setScript(tags);
    scratch.write("rounds.lua", luaScript());
    const std::string lua = "lua5.4 " + scratch.native("rounds.lua").string();
    const auto ours = [&] {
        Instructions instructions(tags);
        constexpr int linesOfRound = 4;
        for (int i = 0; i < 2 + linesOfRound * rounds; ++i)
            instructions.runNextLine();
        if (!(VariableTable().stringValue(2) == "a text and more"))
            state.SkipWithError("the script went wrong");
    };
    const auto theirs = [&] {
        if (std::system(lua.c_str()) != 0)
            state.SkipWithError("lua5.4 can't run it");
    };
    compare(state, {"the same in lua5.4", ours, theirs, [] {}, "5"});
}
BENCHMARK(script)->Name("script of 1000000 rounds")->Iterations(3)->UseManualTime();

// Each slash may begin a host path that a backslash far behind it ends.
void slashes(benchmark::State& state) {
    const auto translate = [](int size) {
        std::string text;
        while (text.size() < static_cast<std::size_t>(size))
            text += " /";
        benchmark::DoNotOptimize(hosted::childText(text + "\\").size());
    };
    compare(state,
            {"120 KB", [=] { translate(240 << 10); }, [=] { translate(120 << 10); }, [] {}, "2"});
}
BENCHMARK(slashes)->Name("argument of 240 KB of slashes")->Iterations(11)->UseManualTime();

}  // namespace

}  // namespace corvane::bench
