// A launch for tests: a launcher, a JVM file, and a script from a template.
#pragma once

#include "launch/LaunchScript.h"
#include "platform/Platform.h"
#include "support/Payload.h"
#include "support/System.h"

namespace corvane::test {

class LaunchRun : public LauncherRun {
  public:
    LaunchRun() {
        jvmTags.setValue("JVM_HOME", "C:\\jdk");
        jvmTags.setValue("JVM_EXE", "bin\\java.exe");
        jvmTags.setValue("CLASSPATH", " -cp ");
        jvmTags.setValue("CLASSPATH_SEPARATOR", ";");
        jvmTags.setValue("SYSTEM", "-D");
        jvmTags.setValue("SYSTEM_SEPARATOR", "=");
    }

    // Loads the index of a launcher with these files.
    void embed(const std::vector<EmbeddedFile>& embedded) {
        useLauncher(embedded);
        const StreamGuard stream(openStream(context().launcherPath.cstr(), "rb"));
        files().readIndex(stream.get(), 0);
    }

    // The expansion of a template, or the failure. Paths in the scratch directory are shown as $.
    std::string expand(const std::string& commandTemplate, bool archives = false) {
        LaunchScript script(commandTemplate.c_str(), true, archives);
        std::string out = "no expansion";
        const std::string failure = failureOf([&] { out = text(script.expandCommand(jvmFile)); });
        return shortened(failure == "no failure" ? out : failure);
    }

    std::string shortened(std::string line) const {
        const std::string path = text(scratch.path());
        for (std::size_t at = line.find(path); at != std::string::npos; at = line.find(path))
            line.replace(at, path.size(), "$");
        return line;
    }

    TagFile jvmTags;
    JvmFile jvmFile{jvmTags};
    NoPauses noPauses;
};

}  // namespace corvane::test
