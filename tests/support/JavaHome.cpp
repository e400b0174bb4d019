// JVM homes for tests.
#include "support/JavaHome.h"

namespace corvane::test {

String makeJavaHome(const Scratch& scratch, const std::string& name, const std::string& behaviour) {
    scratch.write(name + "\\behaviour", behaviour);
    copyTestJava(scratch, name + "\\bin\\java.exe");
    return scratch.path(name);
}

String copyTestJava(const Scratch& scratch, const std::string& name) {
    const std::filesystem::path target = scratch.native(name);
    std::filesystem::create_directories(target.parent_path());
    // Marked as UTF-8, which the checkout's path is on both systems.
    std::filesystem::copy_file(u8"" TEST_JAVA, target);
    return scratch.path(name);
}

}  // namespace corvane::test
