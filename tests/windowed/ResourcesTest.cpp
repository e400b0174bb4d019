// The launcher's resources, as the system finds them in the finished program.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <tuple>
#include <vector>

#include "app/frontends/windowed/Decisions.h"
#include "app/frontends/windowed/UserInterface.h"
#include "windowed/Desktop.h"

namespace corvane {
namespace {

constexpr WORD arabic = 1025;
constexpr WORD hebrew = 1037;

// Languages that the dialogs and the texts speak, in the system's order. There may be more.
const std::vector<WORD> languages = {2,  5,    6,    7,    8,    9,    10,   11,   12,  14,
                                     16, 19,   20,   21,   24,   25,   26,   27,   29,  31,
                                     36, 1025, 1028, 1037, 1041, 1042, 1046, 2052, 2070};

const char* fontFor(WORD language) {
    const struct {
        WORD language;
        const char* font;
    } own[] = {{1028, "新細明體"}, {1041, "MS UI Gothic"}, {1042, "굴림"}, {2052, "宋体"}};
    for (const auto& row : own) {
        if (row.language == language)
            return row.font;
    }
    return "MS Sans Serif";
}

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
    std::vector<WORD> languagesOf(int id, const char* type) {
        std::vector<WORD> found;
        EnumResourceLanguagesA(
            program, type, MAKEINTRESOURCEA(id),
            [](HMODULE, LPCSTR, LPCSTR, WORD language, LONG_PTR list) {
                reinterpret_cast<std::vector<WORD>*>(list)->push_back(language);
                return TRUE;
            },
            reinterpret_cast<LONG_PTR>(&found));
        std::sort(found.begin(), found.end());
        return found;
    }

    HMODULE program;
};

struct Rectangle {
    LONG left, top, width, height;  // in dialog units
};

// What stands where; right-to-left reading moves some.
struct Layout {
    DialogId id;
    Rectangle status, bar, text, icon;
    Rectangle arabicStatus, arabicBar, arabicText, arabicIcon;
};
const Layout layouts[] = {{DialogId::tall,
                           {10, 52, 254, 21},
                           {10, 73, 257, 10},
                           {44, 10, 223, 35},
                           {10, 10, 21, 20},
                           {13, 52, 254, 21},
                           {10, 73, 257, 10},
                           {10, 10, 223, 35},
                           {246, 10, 21, 20}},
                          {DialogId::compact,
                           {34, 10, 236, 24},
                           {10, 37, 259, 10},
                           {44, 10, 223, 35},
                           {10, 10, 20, 20},
                           {7, 10, 236, 24},
                           {8, 37, 259, 10},
                           {44, 10, 223, 35},
                           {247, 10, 20, 20}}};

INT_PTR CALLBACK ignoreMessages(HWND, UINT, WPARAM, LPARAM) {
    return FALSE;
}

// Where a control stands in the dialog. Position and size are each brought into pixels.
void expectPlace(HWND dialog, HWND control, const Rectangle& units, bool iconOfItsOwnSize = false) {
    RECT expected{units.left, units.top, units.width, units.height};
    MapDialogRect(dialog, &expected);
    RECT actual{};
    GetWindowRect(control, &actual);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&actual), 2);
    EXPECT_EQ(actual.left, expected.left);
    EXPECT_EQ(actual.top, expected.top);
    if (!iconOfItsOwnSize) {
        EXPECT_EQ(actual.right - actual.left, expected.right);
        EXPECT_EQ(actual.bottom - actual.top, expected.bottom);
    }
}

// The control that has no number of its own.
HWND iconOf(HWND dialog) {
    HWND child = GetWindow(dialog, GW_CHILD);
    while (child != nullptr && (GetWindowLongA(child, GWL_STYLE) & SS_TYPEMASK) != SS_ICON)
        child = GetWindow(child, GW_HWNDNEXT);
    return child;
}

std::string fontOf(HWND dialog) {
    LOGFONTA font{};
    GetObjectA(reinterpret_cast<HFONT>(SendMessageA(dialog, WM_GETFONT, 0, 0)), sizeof font, &font);
    return font.lfFaceName;
}

void expectDialog(HWND dialog, const Layout& layout, WORD language) {
    const LONG style = GetWindowLongA(dialog, GWL_STYLE);
    const LONG wanted = static_cast<LONG>(WS_POPUP | WS_CAPTION | DS_MODALFRAME | DS_SETFONT);
    EXPECT_EQ(style & wanted, wanted);
    EXPECT_EQ(style & (WS_VISIBLE | WS_SYSMENU), 0);
    EXPECT_EQ(test::Desktop::textOf(dialog), "");
    EXPECT_EQ(fontOf(dialog), fontFor(language));

    const LONG extended = GetWindowLongA(dialog, GWL_EXSTYLE);
    EXPECT_EQ((extended & WS_EX_LAYOUTRTL) != 0, language == hebrew);
    EXPECT_EQ((extended & WS_EX_RTLREADING) != 0, language == arabic);
    const auto control = [dialog](DialogControl id) {
        return GetDlgItem(dialog, static_cast<int>(id));
    };
    for (const DialogControl id : {DialogControl::status, DialogControl::text})
        EXPECT_EQ((GetWindowLongA(control(id), GWL_EXSTYLE) & WS_EX_RTLREADING) != 0,
                  language == arabic);
    const bool shown = (GetWindowLongA(control(DialogControl::text), GWL_STYLE) & WS_VISIBLE) != 0;
    EXPECT_EQ(shown, layout.id == DialogId::tall);

    const bool moved = language == arabic;
    expectPlace(dialog, control(DialogControl::status),
                moved ? layout.arabicStatus : layout.status);
    expectPlace(dialog, control(DialogControl::bar), moved ? layout.arabicBar : layout.bar);
    expectPlace(dialog, control(DialogControl::text), moved ? layout.arabicText : layout.text);
    expectPlace(dialog, iconOf(dialog), moved ? layout.arabicIcon : layout.icon, true);
}

TEST_F(ResourcesTest, EveryLanguageHasDialogsAndTexts) {
    const std::vector<WORD> found = languagesOf(101, reinterpret_cast<const char*>(RT_DIALOG));
    EXPECT_TRUE(std::includes(found.begin(), found.end(), languages.begin(), languages.end()));
    EXPECT_EQ(languagesOf(103, reinterpret_cast<const char*>(RT_DIALOG)), found);
    // Texts are kept in blocks of 16; these hold 1 to 37, and 105.
    for (const int block : {1, 2, 3, 7})
        EXPECT_EQ(languagesOf(block, reinterpret_cast<const char*>(RT_STRING)), found);
}

TEST_F(ResourcesTest, TheDialogsAreLaidOutForTheirLanguage) {
    for (const Layout& layout : layouts) {
        const int id = static_cast<int>(layout.id);
        for (const WORD language : languages) {
            SCOPED_TRACE(std::to_string(id) + " in " + std::to_string(language));
            const auto* const form = static_cast<const DLGTEMPLATE*>(
                resource(id, reinterpret_cast<const char*>(RT_DIALOG), language));
            const HWND dialog =
                CreateDialogIndirectParamA(program, form, nullptr, ignoreMessages, 0);
            ASSERT_NE(dialog, nullptr);
            expectDialog(dialog, layout, language);
            DestroyWindow(dialog);
        }
    }
}

// Side and depth of each picture of a group.
std::vector<std::tuple<int, int>> picturesOf(const void* group) {
    constexpr int headerSize = 6;
    constexpr int entrySize = 14;
    constexpr int depthOffset = 6;
    std::vector<std::tuple<int, int>> pictures;
    const auto* const bytes = static_cast<const unsigned char*>(group);
    for (int i = 0; group != nullptr && i < bytes[4]; ++i) {
        const unsigned char* const entry = bytes + headerSize + i * entrySize;
        EXPECT_EQ(entry[0], entry[1]);
        pictures.emplace_back(entry[0], entry[depthOffset]);
    }
    std::sort(pictures.begin(), pictures.end());
    return pictures;
}

TEST_F(ResourcesTest, IconsVersionAndManifest) {
    using Pictures = std::vector<std::tuple<int, int>>;
    const Pictures nine = {{16, 4},  {16, 8}, {16, 32}, {32, 4}, {32, 8},
                           {32, 32}, {48, 4}, {48, 8},  {48, 32}};
    EXPECT_EQ(picturesOf(resource(102, reinterpret_cast<const char*>(RT_GROUP_ICON))), nine);
    EXPECT_EQ(picturesOf(resource(104, reinterpret_cast<const char*>(RT_GROUP_ICON))),
              (Pictures{{32, 4}}));
    EXPECT_NE(resource(1, reinterpret_cast<const char*>(RT_VERSION)), nullptr);
    EXPECT_NE(resource(1, reinterpret_cast<const char*>(RT_MANIFEST)), nullptr);
}

}  // namespace
}  // namespace corvane
