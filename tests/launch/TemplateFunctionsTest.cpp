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

TEST_F(TemplateFunctionsTest, Functions) {
    run.jvmTags.setValue("PRESENT", "here");
    run.jvmTags.setValue("BLANK", "");
    run.jvmTags.setValue("FROM", "a");
    run.jvmTags.setValue("PERCENT", "%LAUNCHER_DIR%()");
    run.jvmTags.setValue("HASH", "#CORVANE_TEST#");
    run.context().originalLauncherPath = "C:\\orig\\setup.exe";
    setEnvironmentValue("CORVANE_TEST", "env@PRESENT@");
    const struct {
        const char* in;
        const char* out;
    } cases[] = {
        {"%REPLACE%(\"a\",\"b\",\"aaa\")", "bbb"},
        {"%REPLACE%(\"a\",\"aa\",\"aa\")", "aaaa"},
        {"%REPLACE%(\"@FROM@\",\"@PRESENT@\",\"xax\")", "xherex"},
        {"%REPLACE%(\"C\",\"D\",\"@JVM_HOME@\")", "C:\\jdk"},
        {"%REPLACE%(\"@NONE@\",\"x\",\"kept\")", "kept"},
        {"%REPLACE%(\"a\")", "Launch script error: REPLACE function requires 3 arguments."},
        {"%IF_EXISTS%(\"PRESENT\",\"<@PRESENT@>\")", "<here>"},
        {"%IF_EXISTS%(\"BLANK\",\"x\")", ""},
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
        {"%CP%()", " -cp \"\";\"\""},
        {"%CP%(\"x", "Expected double quote to end argument near 6"},
        // What one pass puts in, the passes behind it see, and no other.
        {"@PERCENT@", "%LAUNCHER_DIR%()"},
        {"%IF_EXISTS%(\"PERCENT\",\"@PERCENT@\")", "C:\\orig"},
        {"%IF_EXISTS%(\"HASH\",\"@HASH@\")-@HASH@", "env@PRESENT@-env@PRESENT@"},
    };
    for (const auto& [in, out] : cases)
        EXPECT_EQ(run.expand(in), out) << in;
    run.context().tempDir = run.scratch.path("temp\\");
    EXPECT_EQ(run.expand("%TEMP_DIR%()"), "$\\temp");
}

TEST_F(TemplateFunctionsTest, CompanionFilesLieBesideTheOriginalLauncher) {
    run.context().originalLauncherPath = run.scratch.path("home\\setup.exe");
    run.scratch.write("home\\setup.sp", "a = b\r\n\n no equals sign\n x=@JVM_HOME@ \n=\n");
    run.scratch.write("home\\setup.ja", "-Xss1m\n\n-Dh=@JVM_HOME@");
    EXPECT_EQ(run.expand("%RUNTIME_SYSTEMPROP%()"), "-Da = b -Dx=C:\\jdk -D=");
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

TEST_F(TemplateFunctionsTest, TheClassPathIsNeverEmpty) {
    run.context().classpathPrepend = " @" + run.scratch.write("empty", "\n");
    run.context().classpathAppend = "@" + run.scratch.path("none");
    EXPECT_EQ(run.expand("%CP%()"), " -cp \"\"");
    EXPECT_EQ(run.expand("%CP%(\"a.jar\")"), " -cp a.jar");
}

TEST_F(TemplateFunctionsTest, ACleanClassPathHasNoEmptyEntries) {
    TagFile tags;
    tags.setValue("COMMAND", "%CP%(\"a.jar\",\"\",\"b.jar\")");
    tags.setValue("CLEAN_CP", "1");
    const LaunchScript script(tags, true);
    const auto expanded = [&] { return text(script.expandCommand(run.jvmFile)); };
    EXPECT_EQ(expanded(), " -cp a.jar;b.jar");
    run.context().classpathPrepend = "x y";
    run.context().classpathAppend = " ";
    EXPECT_EQ(expanded(), " -cp \"x y\";a.jar;b.jar");
    tags.setValue("COMMAND", "%CP%()");
    run.context().classpathPrepend = "";
    EXPECT_EQ(text(LaunchScript(tags, true).expandCommand(run.jvmFile)), " -cp \"\"");
}

// Whatever their names hold: at worst the separators of all three passes, each twice.
TEST_F(TemplateFunctionsTest, PathsOfTheLaunchersOwnGoInLiterally) {
    const std::string odd = "a%b%c@d@e#f#g%%h";
    run.scratch.write(odd + "\\app.jar", "jar");
    std::filesystem::create_directory(run.scratch.native(odd) / "temp");
    run.context().originalLauncherPath = run.scratch.path((odd + "\\setup.exe").c_str());
    run.context().tempDir = run.scratch.path((odd + "\\temp").c_str());
    run.jvmTags.setValue("JVM_HOME", ("C:\\" + odd).c_str());
    run.jvmTags.setValue("TAG", "#CORVANE_TEST#");
    setEnvironmentValue("CORVANE_TEST", "env");
    EXPECT_EQ(
        run.expand("%LAUNCHER_DIR%()-%TEMP_DIR%()-%SYSTEMPROP%(\"h\",\"@JVM_HOME@\")-@TAG@-"
                   "@JVM_HOME@-%REPLACE%(\"x\",\"@JVM_HOME@\",\"x\")"),
        "$\\" + odd + "-$\\" + odd + "\\temp--Dh=C:\\" + odd + "-env-C:\\" + odd + "-C:\\" + odd);
    const std::string path = run.expand("%APPLICATION_ARCHIVE%(\"app.jar\")");
    EXPECT_TRUE(path.starts_with("$\\" + odd + "\\temp\\LRE")) << path;
    EXPECT_EQ(run.expand("%LAUNCHER_DIR%()%NONE%()"),
              "Launch script error: Invalid function name (NONE).");
    EXPECT_NE(run.log().find(odd), std::string::npos);
}

TEST_F(TemplateFunctionsTest, TheClassPathMayGoIntoTheEnvironment) {
    run.embed({{FileType::classpathFile, "core.jar", "jar", 1}});
    EXPECT_EQ(run.expand("%CP%()", false), " -cp \"\";\"\"") << "without the embedded archives";
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
}

TEST_F(TemplateFunctionsTest, TheArchiveTagJoinsTheClassPath) {
    TagFile tags;
    tags.setValue("COMMAND", "%CP%()");
    tags.setValue("ARCHIVE", "%LAUNCHER_DIR%()\\app.jar");
    EXPECT_EQ(run.shortened(text(LaunchScript(tags, true).expandCommand(run.jvmFile))),
              " -cp \"\";$\\app.jar;\"\"");
    // In an environment variable nothing would expand it later.
    run.jvmTags.setValue("USE_CP_ENV_VAR", "1");
    run.jvmTags.setValue("CP_ENV_VAR", "CORVANE_TEST_CP");
    tags.setValue("ARCHIVE", "\"%LAUNCHER_DIR%()\\app.jar\"");
    LaunchScript(tags, true).expandCommand(run.jvmFile);
    EXPECT_EQ(run.shortened(text(getEnvironmentValue("CORVANE_TEST_CP"))), "\"\";$\\app.jar;\"\"");
    tags.setValue("ARCHIVE", "%CP%()");
    EXPECT_EQ(test::failureOf([&] { LaunchScript(tags, true).expandCommand(run.jvmFile); }),
              "Launch script error: A token expands to itself.");
}

TEST_F(TemplateFunctionsTest, EmbeddedApplicationArchivesAreSettledOnce) {
    run.embed({{FileType::applicationArchive, "a.jar", "A", 1},
               {FileType::applicationArchive, "b.jar", "B", 2},
               {FileType::classpathFile, "c.jar", "C", 3}});
    const std::string path = run.expand("%APPLICATION_ARCHIVE%()");
    EXPECT_TRUE(path.starts_with("$\\temp\\LRE") && path.ends_with("\\b.jar")) << path;
    EXPECT_EQ(run.expand("%APPLICATION_ARCHIVE%(\"other.jar\")"), path);
    EXPECT_EQ(run.context().tempDirs.count(), 1);
}

TEST_F(TemplateFunctionsTest, AnApplicationArchiveBesideTheLauncherIsCopied) {
    EXPECT_EQ(run.expand("%APPLICATION_ARCHIVE%(\"none.jar\")"), "");
    const std::string content(10000, 'j');
    run.scratch.write("lib\\app.jar", content);
    const std::string path = run.expand("%APPLICATION_ARCHIVE%(\"lib\\app.jar\")");
    EXPECT_TRUE(path.ends_with("\\app.jar")) << path;
    EXPECT_EQ(run.scratch.read(path.substr(2)), content);
}

}  // namespace
}  // namespace corvane
