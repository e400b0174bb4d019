// Programs, icons and settings, whole and damaged.
#include <gtest/gtest.h>

#include <sstream>

#include "packer/face/Bytes.h"
#include "packer/face/Face.h"
#include "packer/face/Picture.h"

namespace corvane::pack {
namespace {

using namespace std::string_literals;

constexpr std::size_t optionalHeader = 0x58;
constexpr std::size_t firstSection = optionalHeader + 240;
constexpr std::uint32_t own = 0x1000;  // the address of the resources
const std::string relocations = "relocations";

void put(std::string& bytes, std::size_t at, std::initializer_list<std::uint32_t> values) {
    for (const std::uint32_t value : values) {
        setNumber(bytes, at, value, 4);
        at += 4;
    }
}

// A program of headers, resources and relocations.
std::string programOf(const Resources& resources) {
    std::string section = writeResources(resources, own);
    const auto size = static_cast<std::uint32_t>(section.size());
    fillUp(section, 0x200);
    const auto fileSize = static_cast<std::uint32_t>(section.size());
    const std::uint32_t behind = own + (size + 0xFFF) / 0x1000 * 0x1000;
    std::string bytes(0x200, '\0');
    bytes.replace(0, 2, "MZ");
    put(bytes, 0x3C, {0x40});
    bytes.replace(0x40, 2, "PE");
    put(bytes, 0x44, {0x0002'8664});
    setNumber(bytes, 0x54, 240, 2);
    setNumber(bytes, optionalHeader, 0x20B, 2);
    put(bytes, optionalHeader + 32, {0x1000, 0x200});
    put(bytes, optionalHeader + 56, {behind + 0x1000, 0x200});
    setNumber(bytes, optionalHeader + 68, 3, 2);
    put(bytes, optionalHeader + 108, {16, 0, 0, 0, 0, own, size, 0, 0, 0, 0, behind, 11});
    put(bytes, firstSection + 8, {size, own, fileSize, 0x200});
    put(bytes, firstSection + 48, {11, behind, 0x200, 0x200 + fileSize});
    bytes += section + relocations;
    fillUp(bytes, 0x200);
    return bytes;
}

std::string group(std::uint32_t image) {
    std::string bytes;
    for (const std::uint32_t value : {0U, 1U, 1U, 0x2020U, 0U, 1U, 32U, 1U, 0U, image})
        appendNumber(bytes, value, 2);
    return bytes;
}

const ResourceKey title{resourcetype::textBlock, 7, 1031};
const ResourceKey rights{resourcetype::manifest, 1, 0};
const ResourceKey version{resourcetype::version, 1, 1031};

Resources bareResources() {
    const std::string texts(32, '\0');
    return {{{resourcetype::icon, 1, 0}, "front"},
            {{resourcetype::icon, 2, 0}, "dialog"},
            {{resourcetype::icon, 3, 0}, "kept"},
            {{resourcetype::iconGroup, ResourceName(u"A"), 0}, group(1)},
            {{resourcetype::iconGroup, 102, 0}, group(2)},
            {{resourcetype::iconGroup, 104, 0}, group(3)},
            {title, texts},
            {{resourcetype::textBlock, 7, 1033}, texts},
            {version, "old"},
            {rights, "<a><requestedExecutionLevel level=\"asInvoker\" uiAccess=\"false\"/></a>"}};
}

std::string wide(std::u16string_view text) {
    std::string bytes;
    appendText(bytes, text);
    return bytes;
}

std::string failureOf(const auto& act) {
    try {
        act();
    } catch (const PackError& failure) {
        return failure.what();
    }
    return "";
}

// One image of 2 pixels a side and 32 bits.
std::string iconFile() {
    std::string bytes = "\0\0\1\0\1\0\2\2"s;
    for (const std::uint32_t value : {0U, 0x0020'0001U, 64U, 22U, 40U, 2U, 4U, 0x0020'0001U})
        appendNumber(bytes, value, value == 0 ? 2 : 4);
    return bytes + std::string(86 - bytes.size(), '\0');
}

TEST(FaceTest, EverySettingIsReadBackAndTheRestStays) {
    Face face;
    face.icon = readIcon(writePng({256, 256, std::string(256 * 256 * 4, '\x7F')}));
    for (const auto& [key, value] : {std::pair{"PRODUCT", "Gr\u00FC\u00DFe"},
                                     {"COMPANY", "Maker"},
                                     {"VERSION", "1.4.2-beta"},
                                     {"TITLE", "My App"},
                                     {"ELEVATION", "admin"},
                                     {"SUBSYSTEM", "windows"}})
        setFace(face, key, value, "");
    const std::string bytes = withFace(programOf(bareResources()), face, "app.exe");
    const Program program(bytes);
    Resources resources = program.resources();

    EXPECT_EQ(
        resources.at(rights),
        "<a><requestedExecutionLevel level=\"requireAdministrator\" uiAccess=\"false\"/></a>");
    for (const auto language : {std::uint16_t{1031}, std::uint16_t{1033}})
        EXPECT_EQ(resources.at({resourcetype::textBlock, 7, language}),
                  std::string(18, '\0') + "\6\0"s + wide(u"My App") + std::string(12, '\0'));
    for (const char16_t* text : {u"Gr\u00FC\u00DFe", u"Maker", u"1.4.2-beta", u"app.exe"})
        EXPECT_NE(resources.at(version).find(wide(text)), std::string::npos);
    EXPECT_EQ(resources.at(version).find(wide(u"LegalCopyright")), std::string::npos);
    EXPECT_EQ(numberAt(bytes, optionalHeader + 68, 2), 2U);

    const std::string& front = resources.at({resourcetype::iconGroup, ResourceName(u"A"), 0});
    EXPECT_EQ(numberAt(front, 4, 2), 8U);
    EXPECT_EQ(resources.at({resourcetype::iconGroup, 102, 0}), front);
    EXPECT_EQ(resources.count({resourcetype::icon, 1, 0}), 0U);
    EXPECT_EQ(resources.at({resourcetype::icon, 3, 0}), "kept");
    const std::string& smallest = resources.at({resourcetype::icon, 4, 0});
    EXPECT_EQ(smallest.substr(40, 4), "\x7F\x7F\x7F\x7F");
    EXPECT_EQ(smallest.size(), 40U + 16 * 16 * 4 + 16 * 4);

    const std::size_t moved = numberAt(bytes, firstSection + 40 + 20, 4);
    EXPECT_EQ(bytes.substr(moved, relocations.size()), relocations);
    EXPECT_EQ(numberAt(bytes, optionalHeader + 112 + 40, 4),
              numberAt(bytes, firstSection + 40 + 12, 4));
}

TEST(FaceTest, AProgramWithoutASettingAndOneOfAnotherSystemStayAsTheyAre) {
    Face face;
    EXPECT_EQ(withFace("MZ", face, ""), "MZ");
    setFace(face, "TITLE", "My App", "");
    EXPECT_EQ(withFace("\x7F"
                       "ELF",
                       face, ""),
              "\x7F"
              "ELF");
}

TEST(FaceTest, OddProgramsAreRefused) {
    const struct {
        std::size_t at;
        std::uint32_t value;
        const char* failure;
    } cases[] = {
        {0x44, 0x0002'014C, "this is no Windows program of 64 bits"},
        {0x4C, 1, "this program still has its symbols; take them off (strip)"},
        {optionalHeader + 112 + 32, 1,
         "this program is signed; name one that isn't, and sign what is packed"},
        {optionalHeader + 112 + 16, 0, "this program has no resources in a section of their own"},
        {optionalHeader + 112 + 40, 0,
         "the resources can't grow: more than relocations stand behind them"},
        {firstSection + 16, 0x200, "the program's headers are damaged, or of an unusual kind"},
        {firstSection + 20, 0xFFFF'FE00,
         "the program's headers are damaged, or of an unusual kind"},
        {optionalHeader + 36, 0, "the program's headers are damaged, or of an unusual kind"},
    };
    Face face;
    setFace(face, "TITLE", "My App", "");
    const std::string whole = programOf(bareResources());
    for (const auto& [at, value, failure] : cases) {
        std::string bytes = whole;
        setNumber(bytes, at, value, 4);
        EXPECT_EQ(failureOf([&] { withFace(bytes, face, ""); }), failure) << at;
    }
    EXPECT_EQ(failureOf([&] { withFace(whole + "payload", face, ""); }),
              "bytes stand behind this program; name a bare one");
    // A directory of resources that leads into itself.
    std::string circle = whole;
    setNumber(circle, 0x200 + 16 + 4, 0x8000'0000, 4);
    EXPECT_NE(failureOf([&] { withFace(circle, face, ""); }), "");
}

TEST(FaceTest, DamagedIconsAreRefused) {
    const std::string whole = iconFile();
    ASSERT_EQ(readIcon(whole).size(), 1U);
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_NE(failureOf([&] { readIcon(whole.substr(0, length)); }), "") << length;
    const struct {
        std::size_t at;
        std::uint32_t value;
    } cases[] = {{4, 0}, {6, 3}, {14, 0xFFFF'FFFF}, {18, 0xFFFF'FFFF}, {22, 41}, {36, 7}, {38, 1}};
    for (const auto& [at, value] : cases) {
        std::string bytes = whole;
        setNumber(bytes, at, value, at == 4 || at == 36 ? 2 : 4);
        EXPECT_NE(failureOf([&] { readIcon(bytes); }), "") << at;
    }
    const std::string picture = writePng({256, 256, std::string(256 * 256 * 4, 'x')});
    EXPECT_EQ(failureOf([&] { readIcon(picture.substr(0, 200)); }),
              "the picture is damaged, or has more than 4096 pixels a side");
    EXPECT_EQ(failureOf([&] {
                  readIcon(writePng({256, 300, std::string(256 * 300 * 4, 'x')}));
              }),
              "a picture for an icon must be square and have 256 pixels or more a side; this one "
              "has 256 by 300");
}

TEST(FaceTest, BadValuesAreTold) {
    const struct {
        const char* key;
        const char* value;
        const char* failure;
    } cases[] = {
        {"ELEVATION", "root", "unknown value root; known are none, admin, highest"},
        {"SUBSYSTEM", "", "unknown value ; known are console, windows"},
        {"TITLE", "", "a text of 1 to 160 characters is needed"},
        {"PRODUCT", "a\tb", "a control character in the text"},
        {"COMPANY", "\xFF", "the text is no UTF-8: \xFF"},
        {"VERSION", "1.65536",
         "a version begins with one to four numbers from 0 to 65535 with dots between them, as in "
         "1.4.2: 1.65536"},
        {"VERSION", "1.2.3.4.5", "more than four numbers in a version: 1.2.3.4.5"},
    };
    Face face;
    for (const auto& [key, value, failure] : cases)
        EXPECT_EQ(failureOf([&, k = key, v = value] { setFace(face, k, v, ""); }), failure) << key;
}

}  // namespace
}  // namespace corvane::pack
