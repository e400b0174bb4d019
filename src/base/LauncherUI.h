// `LauncherUI`, what the launcher asks of a front end. Only the `ui` operations (Ui.h) and the run
// sequence call it; everybody else goes through those.
#pragma once

#include <cstdint>

#include "foundation/String.h"

namespace corvane {

class LauncherUI {
  public:
    // Prepares the front end; false ends the process. `showCommand` is ignored.
    virtual bool init(void* moduleHandle, std::int32_t showCommand) = 0;
    // The whole run; the result is the process's exit value.
    virtual std::int32_t run() = 0;
    virtual void setStatus(const String& text) = 0;
    virtual void setStatusDetail(const String& text, const String& detail) = 0;
    // Moves the progress on; `setProgress` sets it on a scale of 0 to 100.
    virtual void stepProgress(std::int32_t delta) = 0;
    virtual void setProgress(std::int32_t position) = 0;
    virtual void show() = 0;
    // Becomes invisible; the windowed form after `delaySeconds`.
    virtual void hide(std::int16_t delaySeconds) = 0;
    virtual bool isVisible() = 0;
    // Tells the user something; the windowed form returns when the user has answered.
    virtual void showMessage(const String& text) = 0;
    // The same with an address below the text, which the windowed form opens on request.
    virtual void showLink(const String& text, const String& address) = 0;
    virtual String title() = 0;
    virtual void setTitle(const String& text) = 0;
    // Asks for a directory; empty means none.
    virtual String chooseDirectory() = 0;
    // Ends a row of dots, if the front end is in one, before others write to the same output.
    virtual void endRow() {}

  protected:
    ~LauncherUI() = default;
};

}  // namespace corvane
