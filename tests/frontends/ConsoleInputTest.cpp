// What the console front end reads from its user.
#include <gtest/gtest.h>

#include "frontends/ConsoleLauncherUI.h"
#include "support/Payload.h"
#include "support/hosted/ScopedInput.h"

namespace corvane {
namespace {

using test::text;

TEST(ConsoleInputTest, ADirectoryIsOneWord) {
    const struct {
        std::string input;
        std::string first;
        std::string second;
    } cases[] = {
        {"", "", ""},
        {" \n\tC:\\my dir", "C:\\my", "dir"},
        {std::string(1023, 'a') + "b c", std::string(1023, 'a'), "b"},
    };
    const test::LauncherRun run;
    const ArgumentVector arguments;
    ConsoleLauncherUI ui(arguments);
    for (const auto& [input, first, second] : cases) {
        run.scratch.write("input", input);
        const test::ScopedInput typed(run.scratch.native("input").string());
        ::testing::internal::CaptureStdout();
        EXPECT_EQ(text(ui.chooseDirectory()), first);
        EXPECT_EQ(text(ui.chooseDirectory()), second);
        const std::string question = "Choose the JVM Destination Directory";
        EXPECT_EQ(::testing::internal::GetCapturedStdout(), question + question);
    }
}

}  // namespace
}  // namespace corvane
