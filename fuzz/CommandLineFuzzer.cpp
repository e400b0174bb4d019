// Command lines: the launcher's own splitting, and the stand-in's, whose joining it undoes.
#include "Fuzz.h"
#include "driver/ArgumentVector.h"
#include "platform/hosted/CommandLine.h"
#include "support/TestContext.h"

using namespace corvane;

namespace {

void joinAndSplit(const std::string& line) {
    for (const auto pair : {hosted::QuotePair::keepsQuoting, hosted::QuotePair::endsQuoting}) {
        std::vector<std::string> arguments = hosted::splitArguments(line, pair);
        arguments.insert(arguments.begin(), "program");
        const std::string joined = hosted::joinCommandLine(arguments);
        arguments.erase(arguments.begin());
        fuzz::require(hosted::splitArguments(joined.substr(hosted::programNameEnd(joined)), pair) ==
                      arguments);
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    test::TestContext run;
    const std::string line = fuzz::inputText(data, size);
    joinAndSplit(line);
    hosted::setCommandLine(line);
    for (const bool win9xFamily : {true, false}) {
        run.context.win9xFamily = win9xFamily;
        ArgumentVector arguments;
        arguments.build();
        for (std::int32_t i = 0; i < arguments.count(); ++i)
            fuzz::require(arguments.at(i) != nullptr && (!win9xFamily || *arguments.at(i) != '\0'));
    }
    return 0;
}
