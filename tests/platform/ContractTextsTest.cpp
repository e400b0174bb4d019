// What callers rely on with environment, module, command lines, messages and texts, on Windows and
// on its stand-in alike.
#include <gtest/gtest.h>

#include <cstdarg>
#include <cstring>
#include <ctime>

#include "Testing.h"

namespace corvane {
namespace {

using namespace corvane::testing;

TEST(Environment, SizesAndCodes) {
    constexpr const char* name = "CORVANE_TEST_NAME";
    const ScopedVariable clean(name, nullptr);
    char buffer[16] = "unchanged";
    EXPECT_EQ(GetEnvironmentVariableA(name, buffer, sizeof buffer), 0u);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_ENVVAR_NOT_FOUND});
    ASSERT_TRUE(SetEnvironmentVariableA(name, "value"));
    EXPECT_EQ(GetEnvironmentVariableA(name, nullptr, 0), 6u);
    EXPECT_EQ(GetEnvironmentVariableA(name, buffer, 5), 6u);
    EXPECT_EQ(GetEnvironmentVariableA(name, buffer, 6), 5u);
    EXPECT_STREQ(buffer, "value");
    // Names don't tell case apart.
    ASSERT_TRUE(SetEnvironmentVariableA("Corvane_Test_Name", "other"));
    EXPECT_EQ(variable(name), "other");
    // Set to nothing isn't unset.
    ASSERT_TRUE(SetEnvironmentVariableA(name, ""));
    EXPECT_EQ(GetEnvironmentVariableA(name, nullptr, 0), 1u);
    ASSERT_TRUE(SetEnvironmentVariableA(name, nullptr));
    EXPECT_EQ(GetEnvironmentVariableA(name, nullptr, 0), 0u);
    for (const char* bad : {"", "A=B"}) {
        EXPECT_FALSE(SetEnvironmentVariableA(bad, "x")) << bad;
        EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER}) << bad;
    }
}

TEST(Clock, ShowsUniversalTime) {
    const auto minute = [] {
        const std::time_t now = std::time(nullptr);
        char text[20];
        std::strftime(text, sizeof text, "%w %Y-%m-%d %H:%M", std::gmtime(&now));
        return std::string(text);
    };
    const std::string before = minute();
    SYSTEMTIME now{};
    GetSystemTime(&now);
    char text[48];
    std::snprintf(text, sizeof text, "%u %u-%02u-%02u %02u:%02u", now.wDayOfWeek, now.wYear,
                  now.wMonth, now.wDay, now.wHour, now.wMinute);
    EXPECT_TRUE(text == before || text == minute()) << text;
}

TEST(Module, Path) {
    char path[MAX_PATH];
    const DWORD length = GetModuleFileNameA(nullptr, path, MAX_PATH);
    ASSERT_EQ(length, std::strlen(path));
    EXPECT_NE(attributesOf(path), INVALID_FILE_ATTRIBUTES);
    EXPECT_NE(std::string(path).find("\\floor0_platform_test"), std::string::npos);
    char cut[5];
    EXPECT_EQ(GetModuleFileNameA(nullptr, cut, sizeof cut), sizeof cut);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
    EXPECT_NE(GetModuleHandleA(nullptr), nullptr);
    EXPECT_EQ(GetModuleHandleA("no such module"), nullptr);
}

std::string narrow(LPCWSTR text) {
    const int size = WideCharToMultiByte(CP_ACP, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_ACP, 0, text, -1, result.data(), size, nullptr, nullptr);
    result.resize(result.size() - 1);
    return result;
}

// The arguments of a command line, each in brackets.
template <class Splitter>
std::string split(const std::string& line, Splitter splitter) {
    int count = 0;
    const std::basic_string<WCHAR> wide(line.begin(), line.end());
    LPWSTR* arguments = splitter(wide.c_str(), &count);
    std::string result;
    for (int i = 0; i < count; ++i)
        result.append("[").append(narrow(arguments[i])).append("]");
    GlobalUnlock(GlobalHandle(arguments));
    EXPECT_EQ(GlobalFree(GlobalHandle(arguments)), nullptr);
    return result;
}

TEST(CommandLine, SplittingByTheSystem) {
    const std::pair<const char*, const char*> cases[] = {
        {"C:\\dir\\p.exe -x  y\tz ", R"([C:\dir\p.exe][-x][y][z])"},
        {R"("C:\my dir\" a)", R"([C:\my dir\][a])"},
        {R"("a b"c "" d)", "[a b][c][][d]"},
        {R"( p q "open end)", "[][p][q][open end]"},
        {R"(p a\\"b c\" d" \\x)", R"([p][a\b c" d][\\x])"},
        {R"(p "a\\" b\")", R"([p][a\][b"])"},
        {R"(p a"b""c d"e f)", R"([p][ab"c][de f])"},
        {R"(p """a b""" c)", R"([p]["a][b"][c])"}};
    for (const auto& [line, arguments] : cases) {
        EXPECT_EQ(split(line, CommandLineToArgvW), arguments) << line;
        // Whose place ours takes on Windows.
        EXPECT_EQ(split(line, ::CommandLineToArgvW), arguments) << line;
    }
    EXPECT_NE(std::string(GetCommandLineA()).find("floor0_platform_test"), std::string::npos);
    EXPECT_EQ(narrow(GetCommandLineW()), GetCommandLineA());
}

// The filled pattern, or the error code.
std::string formatted(const char* pattern, ...) {
    va_list arguments;
    va_start(arguments, pattern);
    LocalGuard block;
    SetLastError(NO_ERROR);
    const DWORD length =
        FormatMessageA(FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ALLOCATE_BUFFER, pattern, 0, 0,
                       reinterpret_cast<LPSTR>(block.put()), 0, &arguments);
    const DWORD error = GetLastError();
    va_end(arguments);
    return length == 0 ? std::to_string(error) : std::string(block.get(), length);
}

TEST(FormatMessage, InsertsAndEscapes) {
    const std::string huge(5000, 'z');
    const struct {
        const char* pattern;
        const char* first;
        std::string text;
    } cases[] = {{"%2!s!, %1!s!, %1.", "x", "a longer y, x, x."},
                 {"%1!s!%n100%%", "%1 100%", "%1 100%\r\n100%"},
                 {"one\ntwo\r\nthree%0 dropped", "x", "one\r\ntwo\r\nthree"},
                 {"%1!s!", huge.c_str(), huge},
                 {"%1!s!", "", "235"},
                 {"bad %", "x", "87"},
                 {"%1!s", "x", "87"}};
    for (const auto& row : cases)
        EXPECT_EQ(formatted(row.pattern, row.first, "a longer y"), row.text) << row.pattern;
}

TEST(FormatMessage, SystemTexts) {
    constexpr DWORD flags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
    char text[512];
    const auto textOf = [&](DWORD code) {
        return FormatMessageA(flags, nullptr, code, 0x400, text, sizeof text, nullptr);
    };
    for (const DWORD code : {2u, 3u, 5u, 18u, 32u, 87u, 109u, 112u, 183u, 193u, 267u}) {
        const std::string words(text, textOf(code));
        EXPECT_TRUE(words.size() > 4 && words.ends_with("\r\n")) << code;
    }
    const DWORD length = textOf(2);
    EXPECT_EQ(FormatMessageA(flags, nullptr, 2, 0x400, text, length, nullptr), 0u);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
    EXPECT_EQ(textOf(987654321), 0u);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_MR_MID_NOT_FOUND});
}

TEST(Registry, KeysThatCantBeOpened) {
    const auto opened = [](HKEY parent, const char* path) {
        return RegOpenKeyExA(parent, path, 0, KEY_READ, KeyGuard().put());
    };
    EXPECT_EQ(opened(HKEY_LOCAL_MACHINE, "SOFTWARE\\No Such Corvane Key"), 2);
    EXPECT_EQ(opened(HKEY_LOCAL_MACHINE, "\\SOFTWARE"), 161);
    EXPECT_EQ(opened(nullptr, "SOFTWARE"), 6);
    EXPECT_EQ(opened(HKEY_LOCAL_MACHINE, ""), 0);
}

}  // namespace
}  // namespace corvane
