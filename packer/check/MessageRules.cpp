// Rules for JVM messages.
#include "packer/check/MessageRules.h"

#include "frontends/windowed/Decisions.h"

namespace corvane::pack {

void checkMessage(const CheckedProject& project, Findings& findings) {
    const CheckedFile* const file = project.first(FileType::jvmMessage);
    if (file == nullptr)
        return;
    if (file->tags.value("MESSAGE", 0).empty())
        findings.error("no-message", file->place("MESSAGE"),
                       "there is no MESSAGE to show when no JVM is found",
                       "MESSAGE: Hello needs Java 17 or later.");
    const String link = file->tags.value("LINK", 0);
    if (!link.empty() && !isWebAddress(link))
        findings.error("link", file->place("LINK"),
                       "no click opens " + std::string(link.view()) + ", which is shown as text",
                       "an address begins with https:// and holds no blanks");
}

}  // namespace corvane::pack
