// Jars: zip archives, their manifest and the class files in them. An input that is no archive is
// read as a class.
#include "Fuzz.h"
#include "packer/base/Errors.h"
#include "packer/jar/ClassFile.h"
#include "packer/jar/JarFacts.h"

using namespace corvane;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes = fuzz::inputText(data, size);
    try {
        if (bytes.starts_with("\xCA\xFE")) {
            pack::readClass(bytes);
        } else {
            const pack::JarFacts facts = pack::readJar("input", bytes);
            facts.manifest.words("Class-Path");
        }
    } catch (const pack::PackError&) {
        // told to the user
    }
    return 0;
}
