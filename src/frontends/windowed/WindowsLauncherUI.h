// `WindowsLauncherUI`: the front end with a progress dialog, message boxes and a folder dialog.
#pragma once

#include <cstdint>

#include "base/LauncherUI.h"
#include "driver/ArgumentVector.h"
#include "foundation/String.h"

namespace corvane {

// `init` and `run` belong to the main thread, which then serves the windows; the run itself goes on
// a worker thread. The other operations may be called on any thread: they reach the windows by
// messages, so they need a main thread that serves them, and that one never waits for the worker.
// What else belongs to the front end lies in `RunContext`.
class WindowsLauncherUI final : public LauncherUI {
  public:
    // `arguments` outlives the front end.
    explicit WindowsLauncherUI(const ArgumentVector& arguments) : arguments_(arguments) {}

    bool init(void* moduleHandle, std::int32_t showCommand) override;
    // The message loop; gives what the worker left as exit value.
    std::int32_t run() override;
    void setStatus(const String& text) override;
    // The detail follows the status text on the same line.
    void setStatusDetail(const String& text, const String& detail) override;
    // Both raise a `LauncherException` when the dialog has no bar.
    void stepProgress(std::int32_t delta) override;
    void setProgress(std::int32_t position) override;
    void show() override;
    void hide(std::int16_t delaySeconds) override;
    bool isVisible() override;
    void showMessage(const String& text) override;
    void showLink(const String& text, const String& address) override;
    // The dialog's caption, cut at 511 bytes.
    String title() override;
    void setTitle(const String& text) override;
    String chooseDirectory() override;

  private:
    const ArgumentVector& arguments_;
};

}  // namespace corvane
