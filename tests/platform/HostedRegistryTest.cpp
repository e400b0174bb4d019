// The registry of the stand-in: what an exported file says is what the operations give.
#include <gtest/gtest.h>

#include "Testing.h"
#include "platform/hosted/RegistryFile.h"

namespace corvane::hosted {
namespace {

using namespace corvane::testing;

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
              "[][a][a\\b] bytes=3:AB dword=4:AB[0][0] empty=3: expand=2:%A%[0] long=3:ABC "
              "multi=7:A[0]B[0][0] path=1:C:\\jdk\\[0] said=1:say \"hi\"[0][d]");
}

TEST(RegistryFile, VersionFiveHasWideTexts) {
    const std::string text =
        "Windows Registry Editor Version 5.00\r\n\r\n[K]\r\n@=\"caf\xC3\xA9\"\r\n"
        "\"e\"=hex(2):e9,00,41,00,\\\r\n  00,00\r\n\"b\"=hex:41,00\r\n";
    EXPECT_EQ(dump(parseRegistry("\xEF\xBB\xBF" + text)),
              "[k] =1:caf\xC3\xA9[0] b=3:A[0] e=2:\xC3\xA9\x41[0]");
    // As Windows' own editor exports it: UTF-16 with a byte order mark.
    std::string wide = "\xFF\xFE";
    for (const char c : std::string("REGEDIT4\n[A]\n@=\"x\"\n"))
        wide += std::string{c, '\0'};
    EXPECT_EQ(dump(parseRegistry(wide)), "[a] =1:x[0]");
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
