// The functions of the command template, and the three passes together.
#include <gtest/gtest.h>

#include "host/Environment.h"
#include "launch/LaunchRun.h"

namespace corvane {
namespace {

using test::text;

class TemplateFunctionsTest : public ::testing::Test {
  protected:
    test::LaunchRun run;
};

TEST_F(TemplateFunctionsTest, TheWorkedExample) {
    run.embed({{FileType::jvmFile, "a.jvm", "x", 2},
               {FileType::classpathFile, "core.jar", "jar", 1},
               {FileType::applicationArchive, "app.jar", "x", 3}});
    run.context().originalLauncherPath = "C:\\app\\setup.exe";
    run.jvmTags.setValue("REQ_JAVA_ARGS", "-Xmx64m");
    const std::string line = run.expand(
        "\\@JVM_EXE@\" %CP%(\"C:\\app\\lib.jar\") %RUNTIME_JAVAARGS%() "
        "%SYSTEMPROP%(\"app.dir\",\"%LAUNCHER_DIR%()\") Main",
        true);
    const std::size_t from = line.find("$\\temp\\LRE");
    ASSERT_NE(from, std::string::npos) << line;
    const std::string directory = line.substr(from, line.find("\\core.jar") - from);
    EXPECT_EQ(line, "\\bin\\java.exe\"  -cp \"\";C:\\app\\lib.jar;\"" + directory +
                        "\\core.jar\";\"\"  -Xmx64m -Dapp.dir=C:\\app Main");
}

TEST_F(TemplateFunctionsTest, Functions) {
    run.jvmTags.setValue("PRESENT", "here");
    run.jvmTags.setValue("BLANK", "");
    run.jvmTags.setValue("FROM", "a");
    run.context().originalLauncherPath = "C:\\orig\\setup.exe";
    setEnvironmentValue("CORVANE_TEST", "env@PRESENT@");
    const struct {
        const char* in;
        const char* out;
    } cases[] = {
        {"no tokens", "no tokens"},
        {"%REPLACE%(\"a\",\"b\",\"aaa\")", "bbb"},
        {"%REPLACE%(\"a\",\"aa\",\"aa\")", "aaaa"},
        {"%REPLACE%(\"@FROM@\",\"@PRESENT@\",\"xax\")", "xherex"},
        {"%REPLACE%(\"C\",\"D\",\"@JVM_HOME@\")", "C:\\jdk"},
        {"%REPLACE%(\"@NONE@\",\"x\",\"kept\")", "kept"},
        {"%REPLACE%(\"a\")", "Launch script error: REPLACE function requires 3 arguments."},
        {"%IF_EXISTS%(\"PRESENT\",\"<@PRESENT@>\")", "<here>"},
        {"%IF_EXISTS%(\"BLANK\",\"x\")", ""},
        {"%IF_EXISTS%(\"NO_TAG\",\"x\")", ""},
        {"%IF_EXISTS%(\"a\")", "Launch script error: IF_EXISTS function requires 2 arguments."},
        {"%SYSTEMPROP%(\"@FROM@\",\"@PRESENT@\")", "-Da=here"},
        {"%SYSTEMPROP%()", "Launch script error: SYSTEMPROP function requires 2 arguments."},
        {"%LAUNCHER_FILE%()", "$\\setup.exe"},
        {"%LAUNCHER_DIR%()", "C:\\orig"},
        {"%LAUNCHER_DIR%(\"x\")", "Launch script error: LAUNCHER_DIR function takes 0 arguments."},
        {"%TEMP_DIR%()", "$\\temp"},
        {"%TEMP_DIR%", "Launch script error: Expected left parenthesis. (near character 10)"},
        {"%RUNTIME_JAVAARGS%()", ""},
        {"%RUNTIME_SYSTEMPROP%()", ""},
        {"%APPLICATION_ARCHIVE%(\"a.jar\",\"b.jar\")",
         "Launch script error: APPLICATION_ARCHIVE function takes 0 arguments."},
        {"50% of 60%", "Launch script error: Invalid function name ( of 60)."},
        {"%cp%()", "Launch script error: Invalid function name (cp)."},
        {"100%%", "100%"},
        {"#CORVANE_TEST#", "env@PRESENT@"},
        {"a#NO_SUCH_VARIABLE#b", "ab"},
        {"a@NO_SUCH_TAG@b", "ab"},
        {"%CP%(\"x", "Expected double quote to end argument near 6"},
    };
    for (const auto& [in, out] : cases)
        EXPECT_EQ(run.expand(in), out) << in;
    EXPECT_NE(run.log().find("Launch command:\n50% of 60%\n"), std::string::npos);
    run.context().tempDir = run.scratch.path("temp\\");
    EXPECT_EQ(run.expand("%TEMP_DIR%()"), "$\\temp");
}

// What one pass puts in, the passes behind it see, and no other.
TEST_F(TemplateFunctionsTest, TheOrderOfThePasses) {
    run.jvmTags.setValue("PERCENT", "%LAUNCHER_DIR%()");
    run.jvmTags.setValue("HASH", "#CORVANE_TEST#");
    setEnvironmentValue("CORVANE_TEST", "v");
    EXPECT_EQ(run.expand("@PERCENT@"), "%LAUNCHER_DIR%()");
    EXPECT_EQ(run.expand("%IF_EXISTS%(\"PERCENT\",\"@PERCENT@\")"), "$");
    EXPECT_EQ(run.expand("%IF_EXISTS%(\"HASH\",\"@HASH@\")-@HASH@"), "v-v");
}

TEST_F(TemplateFunctionsTest, CompanionFilesLieBesideTheOriginalLauncher) {
    run.context().originalLauncherPath = run.scratch.path("home\\setup.exe");
    run.scratch.write("home\\setup.sp", "a = b\r\n\n no equals sign\n x=@JVM_HOME@ \n=\n");
    run.scratch.write("home\\setup.ja", "-Xss1m\n\n-Dh=@JVM_HOME@");
    EXPECT_EQ(run.expand("%RUNTIME_SYSTEMPROP%()"), "-Da = b -Dx=C:\\jdk -D=");
    EXPECT_EQ(run.expand("%RUNTIME_JAVAARGS%()"), "-Xss1m -Dh=C:\\jdk");
    run.jvmTags.setValue("REQ_JAVA_ARGS", "-server");
    EXPECT_EQ(run.expand("%RUNTIME_JAVAARGS%()"), "-Xss1m -Dh=C:\\jdk -server");
    run.scratch.write("home\\setup.cp1", "one.jar\n\ntwo.jar\n");
    run.scratch.write("home\\setup.cp", "@JVM_HOME@\\lib.jar\n%LAUNCHER_DIR%()\\x.jar\n");
    run.scratch.write("home\\setup.cp2", "last.jar");
    run.jvmTags.setValue("JVM_CLASSPATH", "jvm.jar");
    run.jvmTags.setValue("CLASSPATH_SEPARATOR", ":");
    EXPECT_EQ(run.expand("%CP%(\"arg.jar\")"),
              " -cp \"\":one.jar:two.jar:jvm.jar:C:\\jdk\\lib.jar:$\\home\\x.jar:arg.jar:last.jar:"
              "\"\"");
}

TEST_F(TemplateFunctionsTest, ClassPathOptions) {
    EXPECT_EQ(run.expand("%CP%()"), " -cp \"\";\"\"");
    run.context().classpathPrepend = "X";
    run.context().classpathAppend = "Y";
    EXPECT_EQ(run.expand("%CP%()"), " -cp \"X\";\"Y\"");
    // An option that begins with an at sign names a list file.
    run.scratch.write("list", " p q.jar \n\nr.jar\n");
    run.context().classpathPrepend = "@" + run.scratch.path("list");
    run.context().classpathAppend = "@" + run.scratch.path("missing");
    EXPECT_EQ(run.expand("%CP%(\"m.jar\")"), " -cp p q.jar;r.jar;m.jar");
    EXPECT_NE(run.log().find("WARNING: Could not find the file " +
                             text(run.scratch.path("missing")) + " while building the classpath."),
              std::string::npos);
}

TEST_F(TemplateFunctionsTest, AScriptMayDoWithoutTheEmbeddedArchives) {
    run.embed({{FileType::classpathFile, "core.jar", "jar", 1}});
    EXPECT_EQ(run.expand("%CP%()", false), " -cp \"\";\"\"");
    EXPECT_EQ(run.context().tempDirs.count(), 0);
}

TEST_F(TemplateFunctionsTest, TheClassPathMayGoIntoTheEnvironment) {
    run.embed({{FileType::classpathFile, "core.jar", "jar", 1}});
    run.jvmTags.setValue("USE_CP_ENV_VAR", "1");
    EXPECT_EQ(run.expand("a%CP%(\"x.jar\")b"), "ab");
    EXPECT_NE(run.log().find("ERROR: If USE_CP_ENV_VAR is set to 1 in the jvm file, then the jvm "
                             "file should also define CP_ENV_VAR."),
              std::string::npos);
    run.jvmTags.setValue("CP_ENV_VAR", "CORVANE_TEST_CP");
    EXPECT_EQ(run.expand("a%CP%(\"\"\"C:\\a b\\c.jar\"\"\",\"\"\"\")b", true), "ab");
    std::string value = run.shortened(text(getEnvironmentValue("CORVANE_TEST_CP")));
    value.erase(value.find("LRE"), value.find("\\core") - value.find("LRE"));
    EXPECT_EQ(value, "\"\";C:\\a b\\c.jar;$\\temp\\\\core.jar;\"\"");
    EXPECT_NE(run.log().find("Set env var CORVANE_TEST_CP to "), std::string::npos);
}

TEST_F(TemplateFunctionsTest, TheArchiveTagJoinsTheClassPath) {
    TagFile tags;
    tags.setValue("COMMAND", "%CP%()");
    tags.setValue("ARCHIVE", "%LAUNCHER_DIR%()\\app.jar");
    LaunchScript script(tags, true);
    EXPECT_EQ(run.shortened(text(script.expandCommand(run.jvmFile))), " -cp \"\";$\\app.jar;\"\"");
    // In an environment variable nothing would expand it later.
    run.jvmTags.setValue("USE_CP_ENV_VAR", "1");
    run.jvmTags.setValue("CP_ENV_VAR", "CORVANE_TEST_CP");
    tags.setValue("ARCHIVE", "\"%LAUNCHER_DIR%()\\app.jar\"");
    LaunchScript(tags, true).expandCommand(run.jvmFile);
    EXPECT_EQ(run.shortened(text(getEnvironmentValue("CORVANE_TEST_CP"))), "\"\";$\\app.jar;\"\"");
}

TEST_F(TemplateFunctionsTest, AnArchiveTagThatAsksForTheClassPathIsAnError) {
    TagFile tags;
    tags.setValue("COMMAND", "%CP%()");
    tags.setValue("ARCHIVE", "%CP%()");
    LaunchScript script(tags, true);
    EXPECT_EQ(test::failureOf([&] { script.expandCommand(run.jvmFile); }),
              "Launch script error: A token expands to itself.");
    // What was under way then is forgotten.
    EXPECT_EQ(run.expand("%CP%()"), " -cp \"\";\"\"");
}

TEST_F(TemplateFunctionsTest, EmbeddedApplicationArchivesAreSettledOnce) {
    run.embed({{FileType::applicationArchive, "a.jar", "A", 1},
               {FileType::applicationArchive, "b.jar", "B", 2},
               {FileType::classpathFile, "c.jar", "C", 3}});
    const std::string path = run.expand("%APPLICATION_ARCHIVE%()");
    EXPECT_EQ(path.find("$\\temp\\LRE"), 0u);
    EXPECT_EQ(path.substr(path.rfind('\\')), "\\b.jar");
    EXPECT_EQ(run.expand("%APPLICATION_ARCHIVE%(\"other.jar\")"), path);
    EXPECT_EQ(run.context().tempDirs.count(), 1);
}

TEST_F(TemplateFunctionsTest, AnApplicationArchiveBesideTheLauncherIsCopied) {
    EXPECT_EQ(run.expand("%APPLICATION_ARCHIVE%(\"none.jar\")"), "");
    const std::string content(10000, 'j');
    run.scratch.write("lib\\app.jar", content);
    const std::string path = run.expand("%APPLICATION_ARCHIVE%(\"lib\\app.jar\")");
    EXPECT_EQ(path.substr(path.rfind('\\')), "\\app.jar");
    EXPECT_EQ(run.scratch.read(path.substr(2)), content);
}

}  // namespace
}  // namespace corvane
