// `ToolLauncherUI`: the front end of a command-line tool, which says nothing but what went wrong,
// on standard error.
#pragma once

#include <cstdint>

#include "base/LauncherUI.h"
#include "driver/ArgumentVector.h"
#include "driver/RunSequence.h"
#include "foundation/String.h"

namespace corvane {

// Has no window and no progress, and asks nothing: the standard streams are the application's.
class ToolLauncherUI final : public LauncherUI, private RunObserver {
  public:
    // `arguments` outlives the front end.
    explicit ToolLauncherUI(const ArgumentVector& arguments) : arguments_(arguments) {}

    bool init(void* moduleHandle, std::int32_t showCommand) override;
    std::int32_t run() override;
    void setStatus(const String&) override {}
    void setStatusDetail(const String&, const String&) override {}
    void stepProgress(std::int32_t) override {}
    void setProgress(std::int32_t) override {}
    void show() override {}
    void hide(std::int16_t) override {}
    bool isVisible() override { return false; }
    void showMessage(const String& text) override;
    void showLink(const String& text, const String& address) override;
    String title() override { return title_; }
    void setTitle(const String& text) override { title_ = text; }
    String chooseDirectory() override { return {}; }

  private:
    void onRunEnded(std::int32_t) override {}
    void showFailureText(const String& text) override { showMessage(text); }

    const ArgumentVector& arguments_;
    String title_;
};

}  // namespace corvane
