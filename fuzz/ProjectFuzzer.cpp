// Projects: whatever the files of one hold, it is checked to the end, and a finding stands where a
// line is.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "Fuzz.h"
#include "packer/base/Errors.h"
#include "packer/check/Check.h"
#include "support/Scratch.h"

using namespace corvane;
namespace fs = std::filesystem;

namespace {

// The files that a manifest may name; a line of "== NAME" begins another one.
constexpr const char* names[] = {"p.manifest", "a.script", "a.launch", "a.jvm", "a.msg", "a.jar"};

void writeFiles(const fs::path& folder, const std::string& text) {
    std::istringstream stream(text);
    std::ofstream file(folder / names[0], std::ios::binary);
    for (std::string line; std::getline(stream, line);) {
        const auto* const name = std::find(std::begin(names), std::end(names),
                                           line.starts_with("== ") ? line.substr(3) : "");
        if (name == std::end(names)) {
            file << line << '\n';
            continue;
        }
        file.close();
        file.open(folder / *name, std::ios::binary);
    }
}

void check(const fs::path& folder, pack::System system) {
    pack::Findings findings;
    try {
        pack::checkProject(folder / names[0], system, findings);
    } catch (const pack::PackError&) {
        // It said what is wrong.
    }
    std::ostringstream out;
    findings.print(out);
    findings.printJson(out);
    for (const pack::Finding& finding : findings.all())
        fuzz::require(!finding.text.empty() && finding.place.line >= 0 &&
                      finding.place.column >= 0 &&
                      (finding.place.line > 0 || finding.place.column == 0));
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const test::Scratch scratch;
    writeFiles(scratch.native(), fuzz::inputText(data, size));
    check(scratch.native(), pack::System::windows);
    check(scratch.native(), pack::System::host);
    return 0;
}
