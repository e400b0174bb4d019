// `ConsoleLauncherUI`: the front end on standard output and standard input.
#pragma once

#include <cstdint>

#include "base/LauncherUI.h"
#include "driver/ArgumentVector.h"
#include "driver/RunSequence.h"
#include "foundation/String.h"

namespace corvane {

// Ticks draw rows of 70 dots. Failed writes aren't looked at. Runs on the main thread alone.
class ConsoleLauncherUI final : public LauncherUI, private RunObserver {
  public:
    // `arguments` outlives the front end.
    explicit ConsoleLauncherUI(const ArgumentVector& arguments) : arguments_(arguments) {}

    bool init(void* moduleHandle, std::int32_t showCommand) override;
    std::int32_t run() override;
    void setStatus(const String& text) override;
    // The detail takes the place of the status text.
    void setStatusDetail(const String& text, const String& detail) override;
    void stepProgress(std::int32_t delta) override;
    void setProgress(std::int32_t position) override;
    void show() override { visible_ = true; }
    void hide(std::int16_t) override { visible_ = false; }
    bool isVisible() override { return visible_; }
    void showMessage(const String& text) override;
    void showLink(const String& text, const String& address) override;
    String title() override { return title_; }
    void setTitle(const String& text) override { title_ = text; }
    void endRow() override;
    // Reads one word, of at most 1023 characters; a path with a blank can't be entered.
    String chooseDirectory() override;

  private:
    void onRunEnded(std::int32_t) override {}
    void showFailureText(const String& text) override;
    void printLine(const String& text);
    void printUnended(const String& text);

    const ArgumentVector& arguments_;
    std::int32_t progress_ = 0;  // ticks so far, or the position set last
    bool visible_ = false;
    String title_;
    bool atLineStart_ = false;  // so that the first status line follows an empty one
    bool inRow_ = false;        // behind a dot
};

}  // namespace corvane
