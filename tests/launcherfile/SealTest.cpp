// What tells that a launcher file is whole, and where a signed one ends.
#include <gtest/gtest.h>

#include "launcherfile/PackedRecord.h"
#include "launcherfile/SignedProgram.h"
#include "platform/Platform.h"
#include "support/Payload.h"

namespace corvane {
namespace {

// The front of a Windows program with a certificate table at `table`.
std::string programHeaders(char magic, std::size_t entry, std::uint32_t table, std::uint32_t size) {
    std::string bytes(0x200, '\0');
    const auto put = [&bytes](std::size_t at, std::uint32_t value) {
        for (std::size_t i = 0; i < 4; ++i)
            bytes[at + i] = static_cast<char>(value >> 8 * i & 0xFF);
    };
    bytes.replace(0, 2, "MZ");
    put(0x3C, 0x80);
    bytes.replace(0x80, 2, "PE");
    bytes[0x98] = '\x0B';
    bytes[0x99] = magic;
    put(0x98 + entry, table);
    put(0x98 + entry + 4, size);
    return bytes;
}

class SealTest : public ::testing::Test {
  protected:
    StreamGuard open(const std::string& bytes) {
        return StreamGuard(openStream(run.scratch.write("f", bytes).cstr(), "rb"));
    }

    test::LauncherRun run;
};

TEST_F(SealTest, CertificatesAreNotPartOfThePayload) {
    const std::string certificates(24, 'c');
    const struct {
        const char* what;
        char magic;
        std::size_t entry;
        std::size_t padding;
        std::uint32_t size;
        bool found;
    } cases[] = {
        {"64 bits", 2, 144, 0, 24, true},         {"32 bits", 1, 128, 0, 24, true},
        {"filled up", 2, 144, 7, 24, true},       {"too far away", 2, 144, 8, 24, false},
        {"another kind", 3, 144, 0, 24, false},   {"no table", 2, 144, 0, 0, false},
        {"beyond the end", 2, 144, 0, 25, false}, {"far beyond", 2, 144, 0, 0xFFFFFFFF, false},
    };
    for (const auto& [what, magic, entry, padding, size, found] : cases) {
        const auto end = test::launcherBytes(0, {}, programHeaders(magic, entry, 0, 0)).size();
        const auto table = static_cast<std::uint32_t>(end + padding);
        const std::string bytes =
            test::launcherBytes(0, {}, programHeaders(magic, entry, table, size)) +
            std::string(padding, '\0') + certificates;
        const StreamGuard file = open(bytes);
        EXPECT_EQ(signedPayloadEnd(file.get()),
                  found ? -static_cast<std::int32_t>(padding + 24) : 0)
            << what;
    }
    for (const std::string& short_ : {std::string("M"), std::string("MZ a program"), std::string()})
        EXPECT_EQ(signedPayloadEnd(open(short_).get()), 0);
}

TEST_F(SealTest, IndexAndTrailerAreHeldAgainstTheSeal) {
    EXPECT_EQ(crc32("123456789", 9), 0xCBF43926u);
    const std::string whole =
        test::launcherBytes(0, {{FileType::instructions, "a", "INSTRUCTIONS: SET N1 = 1\n", 1},
                                {FileType::classpathFile, std::string(5000, 'n'), "jar", 2}});
    const std::size_t index = whole.rfind("jar") + 3;
    const std::uint32_t sum = crc32(whole.data() + index, whole.size() - index);
    const auto length = static_cast<std::uint32_t>(whole.size());
    EXPECT_TRUE(isWhole(open(whole).get(), length, sum));
    EXPECT_TRUE(isWhole(open(whole + "a signature").get(), length, sum));
    EXPECT_FALSE(isWhole(open(whole).get(), length, sum + 1));
    EXPECT_FALSE(isWhole(open("").get(), length, sum));
    for (const std::size_t at : {index, whole.size() - 6, whole.size() - 1}) {
        std::string damaged = whole;
        damaged[at] ^= 0x40;
        EXPECT_FALSE(isWhole(open(damaged).get(), length, sum)) << at;
        EXPECT_FALSE(isWhole(open(whole.substr(0, at)).get(), length, sum)) << at;
    }
}

}  // namespace
}  // namespace corvane
