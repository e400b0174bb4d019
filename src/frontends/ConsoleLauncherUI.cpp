// The console front end.
#include "frontends/ConsoleLauncherUI.h"

#include <cctype>
#include <cstdio>

#include "base/Messages.h"
#include "base/RunContext.h"
#include "frontends/FrontEnds.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

constexpr std::int32_t dotsPerRow = 70;
constexpr std::int32_t fullProgress = 100;
constexpr std::size_t longestWord = 1023;

// The next word of standard input.
String readWord() {
    int c = readInput();
    while (c != EOF && std::isspace(c) != 0)
        c = readInput();
    String word;
    for (; c != EOF && std::isspace(c) == 0; c = readInput()) {
        word.append(static_cast<char>(c));
        if (word.length() == longestWord)
            break;
    }
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
    endRow();
    showMessage(text);
}

void ConsoleLauncherUI::printLine(const String& text) {
    writeOutput((text + "\n").cstr());
    atLineStart_ = true;
    inRow_ = false;
}

void ConsoleLauncherUI::printUnended(const String& text) {
    writeOutput(text.cstr());
    atLineStart_ = false;
}

void ConsoleLauncherUI::setStatus(const String& text) {
    if (!atLineStart_)
        printLine("");
    printLine(text);
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
            inRow_ = true;
        }
    }
}

void ConsoleLauncherUI::setProgress(std::int32_t position) {
    if (progress_ == fullProgress || position > progress_)
        printLine("");
    progress_ = position;
}

void ConsoleLauncherUI::showMessage(const String& text) {
    printLine(text);
}

void ConsoleLauncherUI::endRow() {
    if (inRow_)
        printLine("");
}

void ConsoleLauncherUI::showLink(const String& text, const String& address) {
    showMessage(text);
    showMessage(address);
}

String ConsoleLauncherUI::chooseDirectory() {
    printUnended(loadMessage(MessageId::chooseDirectory));
    return readWord();
}

}  // namespace corvane
