// The choice of a JVM by hand.
#include "jvmsearch/HandPick.h"

#include "base/Log.h"
#include "base/Messages.h"
#include "base/RunContext.h"
#include "base/Ui.h"
#include "foundation/TextLines.h"
#include "jvmfile/JvmMatch.h"
#include "jvmsearch/JvmAdvice.h"
#include "launcherfile/LauncherFile.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

constexpr const char* executable = "bin\\java.exe";

struct Tag {
    const char* name;
    const char* value;
};

// What a JVM file says of a JVM of the usual kind.
constexpr Tag usualTags[] = {
    {"JVM_EXE", executable}, {"CLASSPATH", " -cp "},    {"CLASSPATH_SEPARATOR", ";"},
    {"SYSTEM", " -D"},       {"SYSTEM_SEPARATOR", "="},
};

void showAdvice(const JvmMessage& message) {
    const String text = jvmAdvice(message);
    logMessage(text);
    uiShowMessage(text, message.link);
}

// An author's own text comes first; a launcher without one goes on to the question. A tool asks
// nothing.
void tellUser() {
    const JvmMessage* const message = runContext().launcherFile->jvmMessage.get();
    if (message != nullptr)
        showAdvice(*message);
    if (!runContext().isTool)
        uiShowMessage(loadMessage(MessageId::selectJvm));
    else if (message == nullptr)
        uiShowMessage(formatMessage(MessageId::jvmNotFound, loadMessage(MessageId::title)));
}

// The path that the user chose; empty for none.
String askForFile() {
    if (runContext().playStart != nullptr)
        return {};
    char path[MAX_PATH] = "";
    OPENFILENAMEA dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.lpstrFilter = "*.exe\0*.exe\0";  // what is shown, and the pattern
    dialog.nFilterIndex = 1;
    dialog.lpstrFile = path;
    dialog.nMaxFile = sizeof path;
    // The dialog would leave the directory that the user looked at as the current one.
    dialog.Flags = OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST | OFN_NOCHANGEDIR;
    return GetOpenFileNameA(&dialog) == TRUE ? path : "";
}

bool canBeRead(const String& path) {
    return static_cast<bool>(FileGuard(CreateFileA(path.cstr(), GENERIC_READ, 0, nullptr,
                                                   OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)));
}

}  // namespace

bool pickJvmByHand(String& home, String& file) {
    tellUser();
    const String path = runContext().isTool ? String() : askForFile();
    if (path.empty())
        return false;
    const std::size_t start = endsWith(path, executable);
    if (!canBeRead(path) || start == String::npos) {
        uiShowMessage(loadMessage(MessageId::selectedFileNotValid));
        return false;
    }
    home = path.substr(0, start == 0 ? 0 : start - 1);
    logMessage("user selected JVM_HOME=" + home);
    TagFile tags;
    tags.setValue("JVM_HOME", home);
    for (const Tag& tag : usualTags)
        tags.setValue(tag.name, tag.value);
    file = JvmMatch(home, tags).writeResolvedFile();
    return true;
}

}  // namespace corvane
