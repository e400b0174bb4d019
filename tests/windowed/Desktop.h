// What a test sees of the windows on the desktop, and does to them, as a user or another program
// would. Waiting is for conditions, and bounded.
#pragma once

#include <cstdint>
#include <string>

#include "frontends/windowed/Decisions.h"
#include "platform/Platform.h"
#include "support/Wait.h"

namespace corvane::test {

// The windows of one process's front end.
class Desktop {
  public:
    explicit Desktop(DWORD process = GetCurrentProcessId()) : process_(process) {}

    // Null while there is none.
    HWND mainWindow() const;
    HWND progressDialog() const;
    // A visible dialog that isn't the progress dialog.
    HWND question() const;
    // Whether any window of the process can be seen.
    bool anythingVisible() const;

    // Waits for one to be there.
    HWND waitForQuestion() const;

    std::string status() const { return textOf(control(DialogControl::status)); }
    std::int32_t barPosition() const;
    HWND control(DialogControl id) const;

    static std::string textOf(HWND window);
    // The text of a message box.
    static std::string messageOf(HWND box);
    // Presses a button of a question and waits for it to go; by default the user just closes it.
    static void answer(HWND question, int button = 0);

  private:
    // The first window of a class (null: of any) that is `wanted`.
    HWND find(const char* className, bool (*wanted)(HWND)) const;

    DWORD process_;
};

}  // namespace corvane::test
