// What a candidate prints when it is verified. The lines of the input up to an empty one are the
// wanted values, the rest is the output.
#include "Fuzz.h"
#include "foundation/TextLines.h"
#include "jvmsearch/Verification.h"
#include "support/TestContext.h"

using namespace corvane;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const test::TestContext run;
    const String text = fuzz::counted(fuzz::inputText(data, size));
    JvmPropertyList properties;
    std::size_t pos = 0;
    String line;
    for (readLine(text, pos, line); !line.empty() && pos < text.length();
         readLine(text, pos, line.erase())) {
        properties.add(std::make_unique<JvmProperty>(JvmProperty{"name", line}));
    }
    const String output = text.substr(std::min(pos, text.length()));
    if (!matchProperties(output, properties))
        return 0;
    // Lines are read without their carriage returns.
    std::string lines = test::text(output);
    std::erase(lines, '\r');
    fuzz::require(lines.find("1739021872") != std::string::npos);
    return 0;
}
