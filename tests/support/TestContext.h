// A fresh `RunContext` for the scope of a test, with a front end that records what it is told.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "base/LauncherUI.h"
#include "base/RunContext.h"
#include "foundation/Exceptions.h"

namespace corvane::test {

// Records each call as one line, such as "setStatus a" or "hide 3".
class RecordingUI final : public LauncherUI {
  public:
    bool init(void*, std::int32_t) override { return true; }
    std::int32_t run() override { return 0; }
    void setStatus(const String& text) override { note("setStatus", text); }
    void setStatusDetail(const String& text, const String& detail) override {
        note("setStatusDetail", text + "|" + detail);
    }
    void stepProgress(std::int32_t delta) override {
        steps += delta;
        if (onStep)
            onStep();
    }
    void setProgress(std::int32_t position) override {
        progress = position;
        if (onProgress)
            onProgress();
    }
    void show() override { note("show", ""); }
    void hide(std::int16_t delaySeconds) override {
        note("hide", std::to_string(delaySeconds).c_str());
    }
    bool isVisible() override { return false; }
    void showMessage(const String& text) override { note("showMessage", text); }
    void showLink(const String& text, const String& address) override {
        note("showLink", text + "|" + address);
    }
    String title() override { return currentTitle; }
    void setTitle(const String& text) override {
        currentTitle = text;
        note("setTitle", text);
    }
    String chooseDirectory() override {
        note("chooseDirectory", "");
        return chosenDirectory;
    }

    // What was recorded since the last call of this.
    std::vector<std::string> take() { return std::exchange(calls, {}); }
    // The texts shown by `showMessage` so far, joined by line feeds.
    std::string messages() const {
        const std::string operation = "showMessage ";
        std::string joined;
        for (const std::string& call : calls) {
            if (call.starts_with(operation))
                joined += (joined.empty() ? "" : "\n") + call.substr(operation.size());
        }
        return joined;
    }

    std::vector<std::string> calls;
    std::function<void()> onStep;  // what the user does then
    std::function<void()> onProgress;
    int steps = 0;
    int progress = -1;
    String currentTitle;
    String chosenDirectory;

  private:
    void note(const std::string& operation, const String& text) {
        calls.push_back(operation + (text.empty() ? "" : " ") + std::string(text.view()));
    }
};

// Makes its own record the current one, and puts the former one back.
class TestContext {
  public:
    TestContext() : former_(exchangeRunContext(context)) { context.ui = &ui; }
    TestContext(const TestContext&) = delete;
    TestContext& operator=(const TestContext&) = delete;
    ~TestContext() { exchangeRunContext(former_); }

    RunContext context;
    RecordingUI ui;

  private:
    RunContext& former_;
};

// The text as the standard library's, for comparisons that print both sides.
inline std::string text(const String& string) {
    return std::string(string.view());
}

// The message of the exception that `action` raises, with " @line" for one in the script.
std::string failureOf(auto&& action) {
    try {
        action();
    } catch (const LauncherException& failure) {
        return text(failure.message);
    } catch (const InstructionsException& failure) {
        return text(failure.message) + " @" + std::to_string(failure.lineNumber);
    }
    return "no failure";
}

}  // namespace corvane::test
