// The launcher's resources, as the system finds them in the finished program.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "frontends/windowed/UserInterface.h"
#include "windowed/Desktop.h"

namespace corvane {
namespace {

constexpr WORD arabic = 1025;
constexpr WORD hebrew = 1037;
const char* const dialogType = reinterpret_cast<const char*>(RT_DIALOG);

// Languages that the dialogs and the texts speak, and those with a font of their own.
const WORD languages[] = {2,  5,    6,    7,    8,    9,    10,   11,     12,    14,
                          16, 19,   20,   21,   24,   25,   26,   27,     29,    31,
                          36, 1028, 1041, 1042, 1046, 2052, 2070, arabic, hebrew};
const std::map<WORD, std::string> fonts = {
    {1028, "新細明體"}, {1041, "MS UI Gothic"}, {1042, "굴림"}, {2052, "宋体"}};

class ResourcesTest : public ::testing::Test {
  protected:
    ResourcesTest() : program(LoadLibraryExA(LAUNCHER, nullptr, LOAD_LIBRARY_AS_DATAFILE)) {
        INITCOMMONCONTROLSEX classes{sizeof classes, ICC_PROGRESS_CLASS};
        InitCommonControlsEx(&classes);
    }
    ~ResourcesTest() override { FreeLibrary(program); }

    const void* resource(int id, const char* type, WORD language = 0) {
        const HRSRC found = FindResourceExA(program, type, MAKEINTRESOURCEA(id), language);
        return found == nullptr ? nullptr : LockResource(LoadResource(program, found));
    }
    // Side and depth of each picture of a group of icons.
    std::multiset<std::pair<int, int>> picturesOf(int group) {
        constexpr int headerSize = 6;
        constexpr int entrySize = 14;
        constexpr int depthOffset = 6;
        std::multiset<std::pair<int, int>> pictures;
        const auto* const bytes = static_cast<const unsigned char*>(
            resource(group, reinterpret_cast<const char*>(RT_GROUP_ICON)));
        for (int i = 0; bytes != nullptr && i < bytes[4]; ++i) {
            const unsigned char* const entry = bytes + headerSize + i * entrySize;
            pictures.emplace(entry[0], entry[depthOffset]);
        }
        return pictures;
    }

    HMODULE program;
};

INT_PTR CALLBACK ignoreMessages(HWND, UINT, WPARAM, LPARAM) {
    return FALSE;
}

std::string fontOf(HWND dialog) {
    LOGFONTA font{};
    GetObjectA(reinterpret_cast<HFONT>(SendMessageA(dialog, WM_GETFONT, 0, 0)), sizeof font, &font);
    return font.lfFaceName;
}

// No visible control reaches out of the dialog or over another, and the icon is where reading
// starts. Of a mirrored dialog all places count from the right.
void expectOrder(HWND dialog, bool iconOnTheRight) {
    RECT inside{};
    GetClientRect(dialog, &inside);
    std::vector<RECT> places;
    for (HWND control = GetWindow(dialog, GW_CHILD); control != nullptr;
         control = GetWindow(control, GW_HWNDNEXT)) {
        const LONG style = GetWindowLongA(control, GWL_STYLE);
        if ((style & WS_VISIBLE) == 0)
            continue;
        RECT place{};
        GetWindowRect(control, &place);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
        RECT common{};
        IntersectRect(&common, &place, &inside);
        EXPECT_TRUE(EqualRect(&common, &place));
        for (const RECT& other : places)
            EXPECT_FALSE(IntersectRect(&common, &place, &other));
        places.push_back(place);
        if ((style & SS_TYPEMASK) == SS_ICON) {
            EXPECT_EQ(place.left > inside.right / 2, iconOnTheRight);
        }
    }
    EXPECT_GE(places.size(), 3u);
}

TEST_F(ResourcesTest, EveryLanguageHasDialogsAndTexts) {
    for (const WORD language : languages) {
        const auto font = fonts.find(language);
        for (const int id : {101, 103}) {
            SCOPED_TRACE(std::to_string(id) + " in " + std::to_string(language));
            const auto* const form =
                static_cast<const DLGTEMPLATE*>(resource(id, dialogType, language));
            ASSERT_NE(form, nullptr);
            const HWND dialog =
                CreateDialogIndirectParamA(program, form, nullptr, ignoreMessages, 0);
            const LONG style = GetWindowLongA(dialog, GWL_STYLE);
            const LONG wanted = static_cast<LONG>(WS_POPUP | WS_CAPTION | DS_MODALFRAME);
            EXPECT_EQ(style & (wanted | WS_VISIBLE | WS_SYSMENU), wanted);
            const LONG extended = GetWindowLongA(dialog, GWL_EXSTYLE);
            EXPECT_EQ((extended & WS_EX_LAYOUTRTL) != 0, language == hebrew);
            EXPECT_EQ((extended & WS_EX_RTLREADING) != 0, language == arabic);
            EXPECT_EQ(fontOf(dialog), font == fonts.end() ? "MS Sans Serif" : font->second);
            expectOrder(dialog, language == arabic);
            DestroyWindow(dialog);
        }
        // Texts are kept in blocks of 16; these hold 1 to 38, and 105.
        for (const int block : {1, 2, 3, 7})
            EXPECT_NE(resource(block, reinterpret_cast<const char*>(RT_STRING), language), nullptr);
    }
}

TEST_F(ResourcesTest, IconsVersionAndManifest) {
    using Pictures = std::multiset<std::pair<int, int>>;
    EXPECT_EQ(
        picturesOf(102),
        (Pictures{
            {16, 4}, {16, 8}, {16, 32}, {32, 4}, {32, 8}, {32, 32}, {48, 4}, {48, 8}, {48, 32}}));
    EXPECT_EQ(picturesOf(104), (Pictures{{32, 4}}));
    EXPECT_NE(resource(1, reinterpret_cast<const char*>(RT_VERSION)), nullptr);
    EXPECT_NE(resource(1, reinterpret_cast<const char*>(RT_MANIFEST)), nullptr);
}

}  // namespace
}  // namespace corvane
