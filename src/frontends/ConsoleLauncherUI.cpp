// The console front end.
#include "frontends/ConsoleLauncherUI.h"

#include <cctype>
#include <cstdio>

#include "base/Messages.h"
#include "base/RunContext.h"
#include "foundation/TextLines.h"
#include "frontends/FrontEnds.h"

namespace corvane {

namespace {

constexpr std::int32_t dotsPerRow = 70;
constexpr std::int32_t fullProgress = 100;
constexpr std::size_t longestWord = 1023;

// The next word of standard input; what follows it stays there.
String readWord() {
    String word;
    int c = std::getchar();
    while (c != EOF && std::isspace(c) != 0)
        c = std::getchar();
    for (; c != EOF && std::isspace(c) == 0; c = std::getchar()) {
        if (word.length() == longestWord)
            break;
        word.append(static_cast<char>(c));
    }
    std::ungetc(c, stdin);
    return word;
}

}  // namespace

Owned<LauncherUI> makeConsoleFrontEnd(const ArgumentVector& arguments) {
    return makeOwnedAs<LauncherUI, ConsoleLauncherUI>(arguments);
}

bool ConsoleLauncherUI::init(void* moduleHandle, std::int32_t) {
    runContext().moduleHandle = moduleHandle;
    return true;
}

std::int32_t ConsoleLauncherUI::run() {
    return arguments_.count() < 1 ? -1 : runSequence(arguments_, *this);
}

// Also under `silent`.
void ConsoleLauncherUI::showFailureText(const String& text) {
    showMessage(text);
}

void ConsoleLauncherUI::printLine(const char* text) {
    writeLine(stdout, text);
    atLineStart_ = true;
}

void ConsoleLauncherUI::printUnended(const char* text) {
    std::fputs(text, stdout);
    std::fflush(stdout);
    atLineStart_ = false;
}

void ConsoleLauncherUI::setStatus(const String& text) {
    if (!atLineStart_)
        printLine("");
    printLine(text.cstr());
}

void ConsoleLauncherUI::setStatusDetail(const String&, const String& detail) {
    setStatus(detail);
}

void ConsoleLauncherUI::stepProgress(std::int32_t delta) {
    for (std::int32_t i = 0; i < delta; ++i) {
        ++progress_;
        if (progress_ > 0 && progress_ % dotsPerRow == 0) {
            printLine(".");
        } else {
            printUnended(".");
        }
    }
}

void ConsoleLauncherUI::setProgress(std::int32_t position) {
    if (progress_ == fullProgress || position > progress_)
        printLine("");
    progress_ = position;
}

void ConsoleLauncherUI::showMessage(const String& text) {
    printLine(text.cstr());
}

void ConsoleLauncherUI::showLink(const String& text, const String& address) {
    showMessage(text);
    showMessage(address);
}

String ConsoleLauncherUI::chooseDirectory() {
    printUnended(loadMessage(MessageId::chooseDirectory).cstr());
    return readWord();
}

}  // namespace corvane
