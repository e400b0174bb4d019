// The console front end on a console of Windows, whose code pages lack most letters.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <io.h>

#include <string>

#include "frontends/ConsoleLauncherUI.h"
#include "platform/Platform.h"
#include "support/Payload.h"

namespace corvane {
namespace {

using test::text;

constexpr UINT inputPage = 437;
constexpr UINT outputPage = 850;

// Puts a stream of the standard library on a handle for a scope, and closes the handle behind it.
class Redirected {
  public:
    Redirected(std::FILE* stream, HANDLE handle)
        : descriptor_(_fileno(stream)),
          former_(_dup(descriptor_)),
          opened_(_open_osfhandle(reinterpret_cast<intptr_t>(handle), _O_TEXT)) {
        std::fflush(stream);
        EXPECT_EQ(_dup2(opened_, descriptor_), 0);
    }
    Redirected(const Redirected&) = delete;
    Redirected& operator=(const Redirected&) = delete;
    ~Redirected() {
        _dup2(former_, descriptor_);
        _close(former_);
        _close(opened_);
    }

  private:
    int descriptor_;
    int former_;
    int opened_;
};

// Whether there was none. One that doesn't answer is given up first.
bool makeConsole() {
    return GetConsoleCP() == 0 && (FreeConsole(), AllocConsole());
}

HANDLE openKeyboard() {
    return CreateFileA("CONIN$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                       nullptr, OPEN_EXISTING, 0, nullptr);
}

HANDLE makeScreen() {
    return CreateConsoleScreenBuffer(GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                     CONSOLE_TEXTMODE_BUFFER, nullptr);
}

// A console for a scope: the test's own if it has one, with a screen that nobody sees.
class Console {
  public:
    Console() {
        SetConsoleCP(inputPage);
        SetConsoleOutputCP(outputPage);
    }
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;
    ~Console() {
        SetConsoleCP(formerInputPage_);
        SetConsoleOutputCP(formerOutputPage_);
        if (made_)
            FreeConsole();
    }

    void type(const std::wstring& keys) {
        for (const wchar_t key : keys) {
            INPUT_RECORD record{};
            record.EventType = KEY_EVENT;
            record.Event.KeyEvent.bKeyDown = TRUE;
            record.Event.KeyEvent.wRepeatCount = 1;
            record.Event.KeyEvent.wVirtualKeyCode = key == L'\r' ? VK_RETURN : 0;
            record.Event.KeyEvent.uChar.UnicodeChar = key;
            DWORD written = 0;
            EXPECT_TRUE(WriteConsoleInputW(keyboard_, &record, 1, &written));
        }
    }

    // The front of a line of the screen.
    std::wstring line(SHORT number, std::size_t length) {
        std::wstring text(length, L'\0');
        DWORD count = 0;
        EXPECT_TRUE(ReadConsoleOutputCharacterW(screen_, text.data(), static_cast<DWORD>(length),
                                                {0, number}, &count));
        return text;
    }

  private:
    const bool made_ = makeConsole();
    const UINT formerInputPage_ = GetConsoleCP();
    const UINT formerOutputPage_ = GetConsoleOutputCP();
    const HANDLE keyboard_ = openKeyboard();
    const HANDLE screen_ = makeScreen();
    const Redirected input_{stdin, keyboard_};
    const Redirected output_{stdout, screen_};
};

TEST(ConsoleScreenTest, AnyLetterIsShownAndTakenAndTheCodePagesStay) {
    const test::LauncherRun run;
    const ArgumentVector arguments;
    ConsoleLauncherUI ui(arguments);
    Console console;
    ui.setStatus("Grüße\nслово");
    EXPECT_EQ(console.line(1, 6), L"Grüße ");
    EXPECT_EQ(console.line(2, 6), L"слово ");
    console.type(L"C:\\Grüße\\слово\\中\\😀 second\r");
    EXPECT_EQ(text(ui.chooseDirectory()), "C:\\Grüße\\слово\\中\\😀");
    EXPECT_EQ(text(ui.chooseDirectory()), "second");
    console.type(L"\x1a\r");
    EXPECT_EQ(text(ui.chooseDirectory()), "") << "Ctrl-Z is the end of the input";
    EXPECT_EQ(GetConsoleCP(), inputPage);
    EXPECT_EQ(GetConsoleOutputCP(), outputPage);
}

}  // namespace
}  // namespace corvane
