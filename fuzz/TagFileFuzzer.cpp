// Tag files: any text is read or refused, and what was read is the same once written and read
// again.
#include "Fuzz.h"
#include "support/Scratch.h"
#include "support/TestContext.h"

using namespace corvane;

namespace {

std::string dump(const TagFile& tags) {
    std::string out;
    for (const TagRecord& record : tags.records()) {
        out += test::text(record.name) + "\n";
        for (const String& value : *record.values)
            out += "\t" + test::text(value) + "\n";
    }
    return out;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::Scratch scratch;
    static const String path = scratch.path("written.tag");
    const test::TestContext run;
    const std::string text = fuzz::inputText(data, size);
    TagFile tags;
    const std::string failure = test::failureOf([&] { fuzz::readTags(tags, text); });
    // The text of a value ends at a NUL when it is written.
    if (failure != "no failure" || text.find('\0') != std::string::npos)
        return 0;
    tags.write(path);
    fuzz::require(dump(TagFile(path)) == dump(tags));
    return 0;
}
