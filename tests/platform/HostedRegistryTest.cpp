// The registry of the stand-in: what an exported file says is what the operations give.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <iterator>

#include "Testing.h"
#include "platform/hosted/RegistryFile.h"

namespace corvane::hosted {
namespace {

using namespace corvane::testing;

std::string text(const std::string& hostFile) {
    std::ifstream stream(hostFile);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// The keys with their values as "[key]name=TYPE:bytes", a NUL shown as "0" in brackets.
std::string dump(const RegistryTree& tree) {
    std::string text;
    for (const auto& [path, key] : tree) {
        text += "[" + path + "]";
        for (const auto& [name, value] : key) {
            text += " " + name + "=" + std::to_string(value.type) + ":";
            for (const char c : value.data)
                text += c == '\0' ? std::string("[0]") : std::string(1, c);
        }
    }
    return text;
}

TEST(RegistryFile, KeysAndValuesOfAllForms) {
    const RegistryTree tree = parseRegistry(R"(REGEDIT4
"early"="x"
[A\B\]
; "no"="comment" \
"path"="C:\\jdk\\"
"SAID" = "say \"hi\""
"dword"=dword:00004241
"bytes"=hex:41,42
"empty"=hex:
"expand"=hex(2):25,41,25,00
"multi"=hex(7):41,00,42,00,00
"long"=hex:41,\
  42,\
  43
"no"=-
"no"=hex:zz
"no"=hex:4z
"no"=hex:141
"no"=hex(:41
"no"=dword:xyz
"no="open
"no"
[-C]
"v"="2"
[
[D]
)");
    EXPECT_EQ(dump(tree),
              "[][A][A\\B] bytes=3:AB dword=4:AB[0][0] empty=3: expand=2:%A%[0] long=3:ABC "
              "multi=7:A[0]B[0][0] path=1:C:\\jdk\\[0] said=1:say \"hi\"[0][D]");
}

TEST(RegistryFile, SettingAValueLeavesTheRestAsItStands) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "REGEDIT4\n\n[A\\B]\n\"n\"=\"C:\\\\x \\\"y\\\"\"\n"},
        {"REGEDIT4\n[a\\b]\n\"N\"=hex:41,\\\n  42\n; \"n\"\n\"o\"=\"1\"\n[c]\n\"n\"=\"2\"\n",
         "REGEDIT4\n[a\\b]\n\"n\"=\"C:\\\\x \\\"y\\\"\"\n; \"n\"\n\"o\"=\"1\"\n[c]\n\"n\"=\"2\"\n"},
        {"[-a\\b]\r\n[A]", "[-a\\b]\r\n[A]\n\n[A\\B]\n\"n\"=\"C:\\\\x \\\"y\\\"\"\n"},
    };
    for (const auto& [before, after] : cases)
        EXPECT_EQ(withRegistryText(before, "A\\B", "n", "C:\\x \"y\""), after);
}

TEST(Registry, ValuesAreKeptInAFileOfTheUsersStates) {
    const Scratch scratch;
    const std::string state = scratch.native().string() + "/new/state";
    const ScopedVariable file("CORVANE_REGISTRY", nullptr);
    const ScopedVariable home("XDG_STATE_HOME", state.c_str());
    KeyGuard key;
    ASSERT_EQ(RegCreateKeyExA(HKEY_CURRENT_USER, "Software\\My App", 0, nullptr,
                              REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr, key.put(), nullptr),
              ERROR_SUCCESS);
    const auto set = [&](const char* name, const std::string& value) {
        return RegSetValueExA(key.get(), name, 0, REG_SZ,
                              reinterpret_cast<const BYTE*>(value.c_str()),
                              static_cast<DWORD>(value.size() + 1));
    };
    EXPECT_EQ(set("Java", "1"), ERROR_SUCCESS);
    EXPECT_EQ(set("java", "2"), ERROR_SUCCESS);
    EXPECT_EQ(text(state + "/corvane/registry.reg"),
              "REGEDIT4\n\n[HKEY_CURRENT_USER\\Software\\My App]\n\"java\"=\"2\"\n");
    // Nobody can replace a directory.
    const ScopedVariable directory("CORVANE_REGISTRY", state.c_str());
    EXPECT_EQ(set("Java", "3"), static_cast<LSTATUS>(ERROR_ACCESS_DENIED));
}

TEST(Registry, ProcessesThatSetValuesAtOnceLoseNone) {
    const Scratch scratch;
    const ScopedVariable file("CORVANE_REGISTRY", scratch.path("registry").c_str());
    std::vector<pid_t> children;
    for (const char name : {'a', 'b', 'c', 'd'}) {
        children.push_back(fork());
        if (children.back() != 0)
            continue;
        KeyGuard key;
        RegCreateKeyExA(HKEY_CURRENT_USER, "K", 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE,
                        nullptr, key.put(), nullptr);
        const char text[] = {name, '\0'};
        for (int i = 0; i < 50; ++i)
            RegSetValueExA(key.get(), text, 0, REG_SZ, reinterpret_cast<const BYTE*>(text), 2);
        _exit(0);
    }
    for (const pid_t child : children)
        waitpid(child, nullptr, 0);
    EXPECT_EQ(dump(parseRegistry(text(scratch.native("registry").string()))),
              "[HKEY_CURRENT_USER][HKEY_CURRENT_USER\\K] a=1:a[0] b=1:b[0] c=1:c[0] d=1:d[0]");
}

TEST(RegistryFile, VersionFiveHasWideTexts) {
    const std::string text =
        "Windows Registry Editor Version 5.00\r\n\r\n[K]\r\n@=\"caf\xC3\xA9\"\r\n"
        "\"e\"=hex(2):e9,00,41,00,\\\r\n  00,00\r\n\"b\"=hex:41,00\r\n";
    EXPECT_EQ(dump(parseRegistry("\xEF\xBB\xBF" + text)),
              "[K] =1:caf\xC3\xA9[0] b=3:A[0] e=2:\xC3\xA9\x41[0]");
    // As Windows' own editor exports it: UTF-16 with a byte order mark.
    std::string wide = "\xFF\xFE";
    for (const char c : std::string("REGEDIT4\n[A]\n@=\"x\"\n"))
        wide += std::string{c, '\0'};
    wide.replace(wide.find('x'), 2, "\x01\x01");
    EXPECT_EQ(dump(parseRegistry(wide)), "[A] =1:\xC4\x81[0]");
}

TEST(Registry, ReadsByNamesInAnyCase) {
    const Scratch scratch;
    const std::string file = scratch.file("test.reg",
                                          "REGEDIT4\n\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Acme\\Home]"
                                          "\n@=\"D:\\\\jdk\"\n\"Size\"=dword:7\n");
    const ScopedVariable variable("CORVANE_REGISTRY", file.c_str());
    KeyGuard above;
    KeyGuard key;
    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "Software\\ACME\\", 0, KEY_READ, above.put()), 0);
    ASSERT_EQ(RegOpenKeyExA(above.get(), "home", 0, KEY_READ, key.put()), 0);
    DWORD type = 0;
    EXPECT_EQ(RegQueryValueExA(key.get(), "", nullptr, &type, nullptr, nullptr), 0);
    EXPECT_EQ(type, REG_SZ);
    HKEY closed = key.release();
    EXPECT_EQ(RegCloseKey(closed), 0);
    EXPECT_EQ(RegCloseKey(closed), 6);
    EXPECT_EQ(RegQueryValueExA(closed, "", nullptr, &type, nullptr, nullptr), 6);
}

TEST(Registry, UnreadableFileIsEmpty) {
    for (const char* file : {static_cast<const char*>(nullptr), "Z:\\no\\file", "/tmp"}) {
        const ScopedVariable variable("CORVANE_REGISTRY", file);
        KeyGuard key;
        EXPECT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE", 0, KEY_READ, key.put()), 2);
        EXPECT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, nullptr, 0, KEY_READ, key.put()), 0);
    }
}

}  // namespace
}  // namespace corvane::hosted
