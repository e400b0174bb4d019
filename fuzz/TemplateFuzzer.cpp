// Command templates. The first line of the input is the template, the rest the tags of the JVM
// file; its tag ARCHIVE serves as the launch script's.
#include "Fuzz.h"
#include "host/TempFiles.h"
#include "launch/LaunchScript.h"
#include "launcherfile/LauncherFile.h"
#include "support/Scratch.h"
#include "support/TestContext.h"

using namespace corvane;

namespace {

// Puts each token's own name in its place.
class EchoResolver final : public TokenResolver {
  public:
    void resolveToken(String& text, char separator, std::size_t start, std::size_t end) override {
        fuzz::require(start + 1 < end && text.at(start) == separator && text.at(end) == separator);
        text.replace(start, end - start + 1, text.substr(start + 1, end - start - 1));
    }
};

// The launcher's directory, with all the companion files that the functions read.
const test::Scratch& launcherPlace() {
    static const test::Scratch scratch;
    static const bool prepared = [] {
        for (const char* name : {"setup.cp", "setup.cp1", "setup.cp2", "list"})
            scratch.write(name, "one.jar\n\n@JVM_HOME@\\%LAUNCHER_DIR%()\\two.jar\n");
        scratch.write("setup.sp", "a=b\nno equals sign\nhome=@JVM_HOME@\n");
        scratch.write("setup.ja", "-Xss1m\n-Dh=@JVM_HOME@\n");
        return true;
    }();
    fuzz::require(prepared);
    return scratch;
}

void prepare(RunContext& context) {
    const test::Scratch& place = launcherPlace();
    context.launcherPath = place.path("setup.exe");
    context.originalLauncherPath = context.launcherPath;
    context.tempDir = place.path();
    context.classpathPrepend = "@" + place.path("list");
    // Settled, so that no file of the fuzzer's choice is copied.
    context.applicationArchive = place.path("app.jar");
    context.launcherFile = makeOwned<LauncherFile>();
}

void expand(const String& command, TagFile& jvmTags) {
    JvmFile jvmFile(jvmTags);
    // The process's own variables are none of the fuzzer's.
    if (jvmTags.valueCount("CP_ENV_VAR") > 0)
        jvmTags.setValue("CP_ENV_VAR", "CORVANE_FUZZ_CP");
    if (jvmTags.valueCount("ARCHIVE") == 0) {
        LaunchScript(command, true, false).expandCommand(jvmFile);
        return;
    }
    TagFile scriptTags;
    scriptTags.setValue("COMMAND", command);
    scriptTags.setValue("ARCHIVE", jvmTags.value("ARCHIVE", 0));
    LaunchScript(scriptTags, true).expandCommand(jvmFile);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    test::TestContext run;
    prepare(run.context);
    const std::string text = fuzz::inputText(data, size);
    const std::size_t lineEnd = text.find('\n');
    const String command = fuzz::counted(text.substr(0, lineEnd));
    EchoResolver echo;
    for (const char separator : {'%', '@', '#'})
        test::failureOf([&] { expandTemplate(echo, command, separator); });
    test::failureOf([&] {
        TagFile jvmTags;
        if (lineEnd != std::string::npos)
            fuzz::readTags(jvmTags, text.substr(lineEnd + 1));
        expand(command, jvmTags);
    });
    cleanupAtExit();
    return 0;
}
