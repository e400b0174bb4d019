// The report: whatever a text holds, its line stays one line, is UTF-8, and gives it back.
#include "Fuzz.h"
#include "base/Report.h"
#include "packer/trial/ReportReader.h"
#include "support/Scratch.h"
#include "support/TestContext.h"

using namespace corvane;

namespace {

bool isPlain(const std::string& text) {
    for (const char character : text) {
        if (static_cast<signed char>(character) <= 0)
            return false;
    }
    return true;
}

// Of what is no UTF-8, the reader can't know; it is enough that nothing else comes of it.
void requireSame(const std::string& read, const std::string& written) {
    fuzz::require(!isPlain(written) || read == written);
    for (std::size_t i = 0; i < read.size(); ++i)
        fuzz::require(static_cast<unsigned char>(read[i]) < 0xF5);
}

}  // namespace

// The name of a property ends at the first line feed.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::Scratch scratch;
    test::TestContext run;
    const std::string input = fuzz::inputText(data, size);
    const std::string name = input.substr(0, input.find('\n'));
    const std::string text = input.substr(name.size());
    run.context.reportFile = scratch.path("report");
    StringList list;
    list.add(fuzz::counted(text));
    ReportObject("input")
        .add("before", fuzz::counted(text))
        .add("list", list)
        .open("properties")
        .addIn(fuzz::counted(name), fuzz::counted(text))
        .close()
        .add("behind", static_cast<std::int64_t>(size))
        .write();
    const auto objects = pack::readReport(scratch.native("report"));
    remove(scratch.native("report").c_str());
    fuzz::require(objects.size() == 1 && objects[0].at("event") == "input");
    requireSame(objects[0].at("before"), text);
    fuzz::require(objects[0].at("behind") == std::to_string(size));
    if (isPlain(name))
        requireSame(objects[0].at("properties." + name), text);
    return 0;
}
