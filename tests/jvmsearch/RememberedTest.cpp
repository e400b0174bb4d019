// The home that a former run found.
#include <gtest/gtest.h>

#include "host/Environment.h"
#include "jvmsearch/Remembered.h"
#include "jvmsearch/SearchRun.h"
#include "platform/Platform.h"

namespace corvane {
namespace {

using test::text;

class RememberedTest : public ::testing::Test {
  protected:
    RememberedTest() {
        // Windows has a registry of its own.
        setEnvironmentValue("CORVANE_REGISTRY", run.scratch.path("registry"));
        test::SearchRun::describe(front, "Java 21", "21...");
        test::SearchRun::describe(tags, "Java 17", "17...");
        tags.setValue("REMEMBER", place);
        files.add(std::make_unique<JvmFile>(front));
        files.add(std::make_unique<JvmFile>(tags));
    }
    ~RememberedTest() override { SetEnvironmentVariableA("CORVANE_REGISTRY", nullptr); }

    // Puts a text where the home is remembered.
    static void keep(const std::string& value) {
        KeyGuard key;
        RegCreateKeyExA(HKEY_CURRENT_USER, "Software\\Corvane Test", 0, nullptr,
                        REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr, key.put(), nullptr);
        RegSetValueExA(key.get(), "Java", 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                       static_cast<DWORD>(value.size() + 1));
    }

    std::string recalled() const {
        const auto match = recallMatch(files);
        return match == nullptr ? "" : text(match->home()) + (match->temporary ? " beside" : "");
    }

    static constexpr const char* place = "\\HKEY_CURRENT_USER\\Software\\Corvane Test\\Java";

    test::SearchRun run;
    TagFile front;
    TagFile tags;
    JvmFileList files;
    const String home = run.home("my jdk", "17");
};

TEST_F(RememberedTest, AHomeIsTakenAsLongAsAllIsAsItWas) {
    keep("");
    EXPECT_EQ(recalled(), "");
    JvmMatch found(home, tags);
    rememberMatch(files, found);
    EXPECT_EQ(recalled(), text(home));
    found.temporary = true;
    rememberMatch(files, found);
    EXPECT_EQ(recalled(), text(home) + " beside");
    EXPECT_EQ(&recallMatch(files)->tags(), &tags);

    const auto exe = run.scratch.native("my jdk\\bin\\java.exe");
    const auto time = std::filesystem::last_write_time(exe);
    const auto aside = run.scratch.native("aside");
    const struct {
        const char* what;
        std::function<void()> change;
        std::function<void()> back;
    } cases[] = {
        {"the JVM file", [&] { tags.setValue("REQ_JAVA_ARGS", "-x"); },
         [&] { tags.setValue("REQ_JAVA_ARGS", ""); }},
        {"the one in front", [&] { front.addValue("PATH_HINT", "jre"); },
         [&] { front.setValue("PATH_HINT", ""); }},
        {"the time", [&] { last_write_time(exe, time + std::chrono::hours(1)); },
         [&] { last_write_time(exe, time); }},
        {"the executable is gone", [&] { rename(exe, aside); }, [&] { rename(aside, exe); }},
    };
    for (const auto& [what, change, back] : cases) {
        rememberMatch(files, found);
        change();
        EXPECT_EQ(recalled(), "") << what;
        back();
    }
}

TEST_F(RememberedTest, WhatNobodyWroteIsNoHome) {
    rememberMatch(files, JvmMatch(home, tags));
    for (const char* const value : {"x", "1 2 3", "1 2 3 ", "1 2 3 0 ", "1 2 3 0 C:\\"}) {
        keep(value);
        EXPECT_EQ(recalled(), "") << value;
    }
    tags.setValue("REMEMBER", "Software\\Java");
    EXPECT_NE(test::failureOf([&] { recalled(); }).find("Software"), std::string::npos);
}

}  // namespace
}  // namespace corvane
