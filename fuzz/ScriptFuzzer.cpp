// Scripts of the instruction language, in a launcher that has nothing to start and nothing to
// search: no files, no JVM files, an empty drive.
#include "Fuzz.h"
#include "foundation/ArgumentText.h"
#include "instructions/Instructions.h"
#include "jvmsearch/JvmSearch.h"
#include "launcherfile/LauncherFile.h"
#include "support/Scratch.h"
#include "support/System.h"
#include "support/TestContext.h"

using namespace corvane;

namespace {

constexpr const char* scriptTag = "INSTRUCTIONS";

// The label that a line jumps to, as it is written; empty for another line.
String jumpTarget(const String& line) {
    std::size_t pos = 0;
    bool noMore = false;
    const String command = nextToken(line, pos, noMore);
    if (command == "JMP0")
        nextToken(line, pos, noMore);
    return command == "GOTO" || command == "JMP0" ? nextToken(line, pos, noMore) : String();
}

// The lines of a text, each jump that may lead back made a comment, so that a run takes no more
// steps than it has lines. A label with references may turn out to be any of those before it.
void addForwardLines(TagFile& tags, const String& text) {
    StringList labels;
    for (std::size_t pos = 0; pos < text.length();) {
        const std::size_t end = std::min(text.find('\n', pos), text.length());
        const String line = text.substr(pos, end - pos);
        pos = end + 1;
        if (!line.empty() && line.at(0) == ':')
            labels.add(line);
        const String target = jumpTarget(line);
        const bool mayLeadBack =
            target.find('@') != String::npos ? labels.count() > 0 : labels.contains(":" + target);
        tags.addValue(scriptTag, mayLeadBack ? "// " + line : line);
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::Scratch scratch;
    static const test::MappedDrives drives(scratch, {{"C", ""}});
    test::TestContext run;
    run.context.tempDir = scratch.path();
    run.context.launcherFile = makeOwned<LauncherFile>();
    TagFile tags;
    addForwardLines(tags, fuzz::counted(fuzz::inputText(data, size)));
    Instructions script(tags);
    test::failureOf([&] { script.run(); });
    return 0;
}
