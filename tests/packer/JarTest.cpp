// Jars, whole and damaged, and the projects that are made of them.
#include <gtest/gtest.h>
#include <zlib.h>

#include <filesystem>
#include <fstream>

#include "packer/base/Errors.h"
#include "packer/jar/Application.h"
#include "packer/jar/ClassFile.h"
#include "packer/project/NewProject.h"

namespace corvane::pack {
namespace {

using namespace std::string_literals;
namespace fs = std::filesystem;

std::string little(std::size_t size, std::uint64_t value) {
    std::string bytes;
    for (; size > 0; --size, value >>= 8)
        bytes.push_back(static_cast<char>(value & 0xFF));
    return bytes;
}

std::string big(std::size_t size, std::uint64_t value) {
    const std::string bytes = little(size, value);
    return {bytes.rbegin(), bytes.rend()};
}

std::string utf8(const std::string& text) {
    return "\1" + big(2, text.size()) + text;
}

// A class with a field, with or without a main method, that names one text more.
std::string classOf(const std::string& name, int java, bool hasMain = false,
                    const std::string& text = "x", const std::string& attributes = big(2, 0)) {
    std::string bytes = big(4, 0xCAFEBABE) + big(4, static_cast<std::uint64_t>(java) + 44);
    bytes += big(2, 11) + utf8(name) + "\7" + big(2, 1) + utf8("main") +
             utf8("([Ljava/lang/String;)V") + utf8(text) + "\5" + big(8, 7) +
             utf8("ModuleMainClass") + utf8("a/Started") + "\7" + big(2, 9);
    bytes += big(2, 1) + big(2, 2) + big(2, 0) + big(2, 0);
    bytes += big(2, 1) + big(2, 9) + big(2, 3) + big(2, 4) + big(2, 0);
    bytes += hasMain ? big(2, 1) + big(2, 9) + big(2, 3) + big(2, 4) + big(2, 0) : big(2, 0);
    return bytes + attributes;
}

std::string deflated(const std::string& content) {
    std::string packed(content.size() + 64, '\0');
    z_stream stream = {};
    deflateInit2(&stream, 9, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(content.data()));
    stream.avail_in = static_cast<uInt>(content.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

using Files = std::vector<std::pair<std::string, std::string>>;

// A zip archive; every other file is deflated.
std::string zipOf(const Files& files) {
    std::string bytes;
    std::string directory;
    bool deflate = false;
    for (const auto& [name, content] : files) {
        const std::string packed = deflate ? deflated(content) : content;
        const auto checksum = crc32(0, reinterpret_cast<const Bytef*>(content.data()),
                                    static_cast<uInt>(content.size()));
        const std::string common = little(2, 20) + little(2, 0) + little(2, deflate ? 8 : 0) +
                                   little(4, 0) + little(4, checksum) + little(4, packed.size()) +
                                   little(4, content.size()) + little(2, name.size()) +
                                   little(2, 0);
        directory += "PK\1\2" + little(2, 20) + common + little(2, 0) + little(8, 0) +
                     little(4, bytes.size()) + name;
        bytes += "PK\3\4" + common + name + packed;
        deflate = !deflate;
    }
    return bytes + directory + "PK\5\6" + little(4, 0) + little(2, files.size()) +
           little(2, files.size()) + little(4, directory.size()) + little(4, bytes.size()) +
           little(2, 0);
}

std::string failureOf(const auto& action) {
    try {
        action();
    } catch (const PackError& failure) {
        return failure.what();
    }
    return "";
}

TEST(Jar, ManifestGoesOnOverLines) {
    const JarManifest manifest(
        "Manifest-Version: 1.0\r\nmain-class: a.b.\r\n C \r\nClass-Path: x.jar  y\n .jar\n"
        "no colon\n\nName: other\nMain-Class: not.this.One\n");
    EXPECT_EQ(manifest.get("Main-Class"), "a.b.C");
    EXPECT_EQ(manifest.words("CLASS-PATH"), (std::vector<std::string>{"x.jar", "y.jar"}));
    EXPECT_EQ(manifest.get("Add-Opens"), "");
}

TEST(Jar, TellsWhatItsClassesNeed) {
    const std::string mainClass = big(2, 1) + big(2, 8) + big(4, 2) + big(2, 10);
    const std::string inner = zipOf({{"in/Side.class", classOf("in/Side", 21)}});
    const JarFacts facts =
        readJar("app.jar",
                "#!/bin/sh\n" +
                    zipOf({{"META-INF/MANIFEST.MF", "Main-Class: a.B\n"},
                           {"a/B.class", classOf("a/B", 8, true)},
                           {"a/C.class", classOf("a/C", 11)},
                           {"META-INF/versions/25/a/C.class", classOf("a/C", 25)},
                           {"module-info.class", classOf("module-info", 25, false, "x", mainClass)},
                           {"lib/inner.jar", inner},
                           {"text.class", "not a class"}}));
    EXPECT_EQ(facts.manifest.get("Main-Class"), "a.B");
    EXPECT_EQ(facts.java, 21);
    EXPECT_EQ(facts.newestClass, "in.Side");
    EXPECT_EQ(facts.mainClasses.size(), 1U);
    EXPECT_TRUE(facts.mainClasses.contains("a.B"));
    EXPECT_EQ(facts.moduleMainClass, "a.Started");
    EXPECT_TRUE(facts.holdsJars);
    EXPECT_EQ(facts.faults, std::vector<std::string>{"text.class: it is no class file"});
    EXPECT_EQ(facts.windowSign, "");
}

TEST(Jar, SaysWhatMayDrawAWindow) {
    for (const std::string& text :
         {"java/awt/Frame"s, "(Ljavax/swing/JFrame;)V"s, "javafx.stage.Stage"s, "loadLibrary"s})
        EXPECT_NE(readJar("a.jar", zipOf({{"A.class", classOf("A", 8, true, text)}})).windowSign,
                  "")
            << text;
    EXPECT_EQ(
        readJar("a.jar", zipOf({{"A.class", classOf("A", 8, true, "myloadLibraryX")}})).windowSign,
        "");
    EXPECT_EQ(readJar("a.jar", zipOf({{"win/a.dll", ""}})).windowSign, "win/a.dll");
}

TEST(Jar, DamageIsToldWithItsPlace) {
    const std::string whole = zipOf({{"s.class", classOf("S", 8)}, {"d.class", classOf("D", 8)}});
    const std::size_t directory = whole.find("PK\1\2");
    const std::size_t second = whole.find("PK\1\2", directory + 1);
    const std::size_t end = whole.find("PK\5\6");
    const std::size_t deflated = whole.find("d.class") + 7;
    const struct {
        std::size_t at;
        std::string bytes;
        std::string message;
    } cases[] = {
        {60, "#", "s.class, at byte 0: its checksum differs from what it holds"},
        {deflated, "\7\7\7", "d.class, at byte "},
        {0, "XX", "s.class, at byte 0: no entry begins there"},
        {directory, "XX", "no entry of the directory stands at byte "},
        {directory + 24, little(4, 5), "s.class, at byte 0: it has two sizes"},
        {directory + 8, little(2, 1), "s.class, at byte 0: it is encrypted"},
        {directory + 10, little(2, 14), "its packing method 14 is none that Java reads"},
        {directory + 20, little(4, 0x7FFF'FFFF), "its entries are larger than the file"},
        {directory + 28, little(2, 0xFFFF), "a name should stand at byte "},
        {directory + 42, little(4, 0x7FFF'FFFF), "s.class should stand at byte 2147483647"},
        {second + 20, little(4, 0xFFFF'FFFF), "an entry of more than 4 GB"},
        {second + 24, little(4, 0xFF'0000), "it can't be as large as its directory says"},
        {second + 24, little(4, 1), "what it holds can't be unpacked"},
        {end + 10, little(2, 9), "an entry of the directory should stand at byte "},
        {end + 12, little(4, 0x7FFF'FFFF), "its directory, 2147483647 bytes at byte "},
        {end, "XX", "its end is missing; it was probably cut off on its way"},
    };
    EXPECT_EQ(failureOf([&] { readJar("a.jar", whole); }), "");
    for (const auto& each : cases) {
        std::string damaged = whole;
        damaged.replace(each.at, each.bytes.size(), each.bytes);
        EXPECT_NE(failureOf([&] { readJar("a.jar", damaged); }).find(each.message),
                  std::string::npos)
            << each.message << "\n"
            << failureOf([&] { readJar("a.jar", damaged); });
    }
    EXPECT_EQ(failureOf([] { readJar("a.jar", "plain text"); }),
              "a.jar: this is no jar: it has no directory of a zip archive");
    const std::string bytes = classOf("a/B", 8, true);
    for (std::size_t size = 0; size < bytes.size(); ++size)
        EXPECT_NE(failureOf([&] { readClass(bytes.substr(0, size)); }), "") << size;
}

// A folder with app.jar, and what is read of it.
class NewProjectTest : public testing::Test {
  protected:
    NewProjectTest()
        : folder_(fs::temp_directory_path() /
                  ("corvane jar " +
                   std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
                   testing::UnitTest::GetInstance()->current_test_info()->name())) {
        fs::remove_all(folder_);
        fs::create_directories(folder_);
    }
    ~NewProjectTest() override { fs::remove_all(folder_); }

    fs::path write(const std::string& name, const Files& files) {
        fs::create_directories((folder_ / name).parent_path());
        std::ofstream(folder_ / name, std::ios::binary) << zipOf(files);
        return folder_ / name;
    }

    Application read(const std::string& manifest, Files files = {},
                     const std::optional<std::string>& mainClass = std::nullopt) {
        files.insert(files.begin(), {"a/B.class", classOf("a/B", 8, true)});
        files.insert(files.begin(), {"META-INF/MANIFEST.MF", manifest + "\n"});
        return readApplication({write("app.jar", files)}, mainClass);
    }

    std::string command(const Application& application) {
        const std::string script = launchScript({"app", "", folder_, false}, application);
        const std::size_t start = script.rfind("JAVAARGS%()") + 11;
        return script.substr(start, script.find("\"\n", start) - start);
    }

    fs::path folder_;
};

TEST_F(NewProjectTest, CommandLineFollowsTheManifest) {
    write("lib/one two.jar", {});
    const struct {
        const char* manifest;
        const char* command;
    } cases[] = {
        {"Main-Class: a.B", " %CP%() %RUNTIME_SYSTEMPROP%() a.B"},
        {"Main-Class: a/B", " %CP%() %RUNTIME_SYSTEMPROP%() a.B"},
        {"X: y", " %CP%() %RUNTIME_SYSTEMPROP%() a.B"},
        {"JavaFX-Application-Class: a.B", " %CP%() %RUNTIME_SYSTEMPROP%() a.B"},
        {"Main-Class: a.B\nAdd-Opens: java.base/java.lang",
         " %RUNTIME_SYSTEMPROP%() -jar \"\"%APPLICATION_ARCHIVE%()\"\""},
        {"Main-Class: a.B\nLauncher-Agent-Class: a.B",
         " %RUNTIME_SYSTEMPROP%() -jar \"\"%APPLICATION_ARCHIVE%()\"\""},
        {"Main-Class: a.B\nClass-Path: lib/one%20two.jar\nAdd-Opens: java.base/java.lang x/y\n"
         "Enable-Native-Access: ALL-UNNAMED",
         " -XX:+IgnoreUnrecognizedVMOptions --add-opens=java.base/java.lang=ALL-UNNAMED "
         "--add-opens=x/y=ALL-UNNAMED --enable-native-access=ALL-UNNAMED %CP%() "
         "%RUNTIME_SYSTEMPROP%() a.B"},
    };
    for (const auto& each : cases)
        EXPECT_EQ(command(read(each.manifest)), each.command) << each.manifest;
}

TEST_F(NewProjectTest, MainClassIsFoundOrOffered) {
    const Files two = {{"a/Cd.class", classOf("a/Cd", 8, true)}};
    EXPECT_EQ(read("Main-Class: a.B", two, "a.Cd").mainClass, "a.Cd");
    const std::string jar = (folder_ / "app.jar").string();
    const std::string offer =
        "\n  corvane-pack new " + jar + " --main a.B\n  corvane-pack new " + jar + " --main a.Cd";
    EXPECT_EQ(failureOf([&] { read("X: y", two); }),
              jar + ": its manifest has no Main-Class. These have a main method:" + offer);
    EXPECT_EQ(failureOf([&] { read("Main-Class: no.Where", two); }),
              jar +
                  ": its manifest has the Main-Class no.Where, which none of its jars holds. "
                  "These have a main method:" +
                  offer);
    EXPECT_EQ(failureOf([&] { read("X: y", two, "a.CD"); }),
              jar +
                  ": none of its jars holds the class a.CD; did you mean a.Cd? These have a main "
                  "method:" +
                  offer);
}

TEST_F(NewProjectTest, ClassPathIsFollowed) {
    write("lib/b.jar", {{"META-INF/MANIFEST.MF", "Class-Path: ../b.jar gone.jar\n"},
                        {"b/B.class", classOf("b/B", 17)}});
    write("b.jar", {{"META-INF/MANIFEST.MF", "Class-Path: app.jar\n"}});
    write("c.jar", {});
    Application application =
        read("Main-Class: a.B\nClass-Path: lib/b.jar lib/ c.jar ./lib/../lib/b.jar");
    std::vector<std::string> names;
    for (const ClassPathJar& jar : application.classPath.jars)
        names.push_back(jar.path.lexically_relative(folder_).generic_string());
    EXPECT_EQ(names, (std::vector<std::string>{"app.jar", "lib/b.jar", "b.jar", "c.jar"}));
    EXPECT_EQ(application.java, 17);
    EXPECT_EQ(application.classPath.missing, std::vector<std::string>{"gone.jar"});
    EXPECT_EQ(application.classPath.folders, std::vector<std::string>{"lib/"});
    EXPECT_EQ(application.windowSign, "gone.jar is not there");

    application.version = "beta 2";  // no number at its front
    application.vendor = "We";
    writeProject({"app", "My App", folder_ / "p", true}, application);
    std::ifstream stream(folder_ / "p/app.manifest");
    const std::string manifest{std::istreambuf_iterator<char>(stream), {}};
    EXPECT_NE(manifest.find("CLASSPATH_FILE:\n  ../app.jar\n  ../lib/b.jar\n"
                            "  ../b.jar | name=b-2.jar\n  ../c.jar\n/:\n"),
              std::string::npos)
        << manifest;
    EXPECT_TRUE(manifest.ends_with("\nPRODUCT: My App\nCOMPANY: We\n")) << manifest;
    EXPECT_EQ(failureOf([&] {
                  writeProject({"app", "My App", folder_ / "p", true}, application);
              }),
              (folder_ / "p").string() +
                  ": this folder is not empty; name another one with -o, or remove it");
}

TEST(NewProject, JavaIsRoundedUpToWhatShips) {
    const std::pair<int, const char*> rows[] = {{0, "<8+>"},   {8, "<8+>"},   {9, "<11+>"},
                                                {17, "<17+>"}, {22, "<25+>"}, {99, "<25+>"}};
    for (const auto& [java, word] : rows)
        EXPECT_EQ(jvmWordFor(java), word) << java;
}

}  // namespace
}  // namespace corvane::pack
