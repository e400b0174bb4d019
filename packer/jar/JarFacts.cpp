// Reading of a jar.
#include "packer/jar/JarFacts.h"

#include <algorithm>
#include <array>

#include "packer/base/Errors.h"
#include "packer/base/WholeFile.h"
#include "packer/jar/ClassFile.h"

namespace corvane::pack {

namespace {

using namespace std::string_view_literals;

// Classes for one Java or a later one alone, which an earlier one never looks at.
constexpr std::string_view versionsFolder = "META-INF/versions/";
// No class and no jar inside a jar is larger in earnest.
constexpr std::uint32_t largestClass = 16U << 20;
constexpr std::uint32_t largestJar = 1U << 30;

// Who names none of these draws no window: Java's own toolkits and those in use beside them, then
// what runs native code, or classes from elsewhere, which could.
struct WindowSign {
    std::string_view bytes;
    std::string_view text;
};
constexpr WindowSign windowSigns[] = {
    {"java/awt/", "java.awt"},
    {"java.awt.", "java.awt"},
    {"javax/swing/", "javax.swing"},
    {"javax.swing.", "javax.swing"},
    {"javafx/", "javafx"},
    {"javafx.", "javafx"},
    {"java/applet/", "java.applet"},
    {"org/eclipse/swt/", "org.eclipse.swt"},
    {"org/lwjgl/", "org.lwjgl"},
    {"com/jogamp/", "com.jogamp"},
    {"io/qt/", "io.qt"},
    {"com/sun/jna/", "native code"},
    {"java/lang/foreign/", "native code"},
    {"\x01\x00\x0BloadLibrary"sv, "native code"},
    {"java/net/URLClassLoader", "classes from elsewhere"},
};
constexpr std::string_view javaFxApplication = "javafx/application/Application";
constexpr std::string_view nativeLibraries[] = {".dll", ".so", ".dylib", ".jnilib"};

bool endsWithOneOf(std::string_view name, const auto& endings) {
    return std::ranges::any_of(endings, [name](auto ending) { return name.ends_with(ending); });
}

class JarReader {
  public:
    explicit JarReader(const ZipArchive& archive) : archive_(archive) {}

    JarFacts read() {
        if (const ZipEntry* manifest = archive_.find("META-INF/MANIFEST.MF"))
            facts_.manifest = JarManifest(archive_.read(*manifest));
        for (const ZipEntry& entry : archive_.entries())
            readEntry(entry, archive_, false);
        return std::move(facts_);
    }

  private:
    void readEntry(const ZipEntry& entry, const ZipArchive& archive, bool inside) {
        if (endsWithOneOf(entry.name, nativeLibraries))
            noteWindow(entry.name);
        if (entry.name.starts_with(versionsFolder))
            return;
        if (entry.name.ends_with(".class") && entry.size <= largestClass)
            readClassFile(entry, archive.read(entry), inside);
        else if (entry.name.ends_with(".jar") && entry.size <= largestJar && !inside)
            readJarInside(entry, archive.read(entry));
    }

    void readClassFile(const ZipEntry& entry, const std::string& bytes, bool inside) {
        try {
            take(entry.name, readClass(bytes), inside);
        } catch (const PackError& fault) {
            facts_.faults.push_back(entry.name + ": " + fault.what());
        }
        if (bytes.find(javaFxApplication) != std::string::npos)
            facts_.usesJavaFx = true;
        if (!facts_.windowSign.empty())
            return;
        for (const WindowSign& sign : windowSigns) {
            if (bytes.find(sign.bytes) != std::string::npos)
                noteWindow(entry.name + " uses " + std::string(sign.text));
        }
    }

    // A module-info tells of the module and not of the Java that the other classes need.
    void take(const std::string& entry, const ClassFile& file, bool inside) {
        if (entry.ends_with("module-info.class")) {
            if (!inside)
                facts_.moduleMainClass = file.moduleMainClass;
            return;
        }
        if (javaOf(file.major) > facts_.java) {
            facts_.java = javaOf(file.major);
            facts_.newestClass = file.name;
        }
        if (inside)
            return;
        facts_.classes.insert(file.name);
        if (file.hasMain)
            facts_.mainClasses[file.name] = file.bases;
    }

    void readJarInside(const ZipEntry& entry, const std::string& bytes) {
        facts_.holdsJars = true;
        const ZipArchive archive(entry.name, bytes);
        for (const ZipEntry& each : archive.entries())
            readEntry(each, archive, true);
    }

    void noteWindow(const std::string& sign) {
        if (facts_.windowSign.empty())
            facts_.windowSign = sign;
    }

    const ZipArchive& archive_;
    JarFacts facts_;
};

}  // namespace

JarFacts readJar(const std::string& name, std::string_view bytes) {
    return JarReader(ZipArchive(name, bytes)).read();
}

JarFacts readJar(const std::filesystem::path& path) {
    return readJar(path.string(), readWhole(path));
}

}  // namespace corvane::pack
