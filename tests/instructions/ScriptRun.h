// A script for tests: its lines become the value of the tag INSTRUCTIONS.
#pragma once

#include "instructions/Instructions.h"
#include "support/Payload.h"
#include "support/System.h"
#include "variables/VariableTable.h"

namespace corvane::test {

class ScriptRun : public LauncherRun {
  public:
    // Runs a script as the launcher's own; its exit value, or the failure. "\n" ends a line.
    std::string runScript(const std::string& lines) {
        scratch.write("script.tag", "INSTRUCTIONS:\n" + lines + "\n/:\n");
        tags = std::make_unique<TagFile>(scratch.path("script.tag"));
        files().instructions = makeOwned<Instructions>(*tags);
        std::int32_t value = 0;
        const std::string failure = failureOf([&] { value = runInstructions(); });
        return failure == "no failure" ? std::to_string(value) : failure;
    }

    std::string s(std::int32_t number) const { return text(VariableTable().stringValue(number)); }
    std::int32_t n(std::int32_t number) const { return VariableTable().numericValue(number); }

    std::unique_ptr<TagFile> tags;
    NoPauses noPauses;
};

}  // namespace corvane::test
