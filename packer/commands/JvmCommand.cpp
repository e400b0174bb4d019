// `corvane-pack jvm`.
#include <iostream>

#include "packer/base/Errors.h"
#include "packer/base/Paths.h"
#include "packer/base/Progress.h"
#include "packer/base/WholeFile.h"
#include "packer/commands/Command.h"
#include "packer/project/Project.h"
#include "packer/runtime/RuntimeInstaller.h"

namespace corvane::pack {

namespace {

namespace fs = std::filesystem;

void write(const fs::path& path, const std::string& bytes, const fs::path& unpacker) {
    writeWhole(path, bytes);
    fs::permissions(path, fs::status(unpacker).permissions());
}

int run(Arguments& arguments) {
    const std::optional<std::string> output = arguments.takeValue("-o");
    const std::optional<std::string> unpackerName = arguments.takeValue("--unpacker");
    const std::string place = arguments.takeValue("--keep").value_or("");
    const std::optional<System> system = takeSystem(arguments);
    const fs::path directory = pathOf(arguments.takeRest(1, 1, "a runtime image")[0]);
    if (!output)
        throw UsageError("it needs -o FILE");
    if (!place.empty() && !isKeepPlace(place))
        throw UsageError(noKeepPlace + place + "; " + keepPlaceHint);
    const RuntimeImage image = readRuntimeImage(directory);
    if (system)
        checkImageSystem(image, directory, *system);
    const fs::path unpacker = unpackerName ? pathOf(*unpackerName) : findUnpacker(image.system);
    const std::string bytes = makeRuntimeInstaller(image, unpacker, place);
    write(pathOf(*output), bytes, unpacker);
    std::cout << *output << ": for " << systemName(image.system) << ", " << sizeText(bytes.size())
              << ", unpacks to files=" << image.fileCount << " | bytes=" << image.size << '\n';
    return success;
}

}  // namespace

const Command jvmCommand = {
    "jvm", "DIR -o FILE [--keep PLACE] [--for windows|host] [--unpacker PROGRAM]",
    "packs a Java runtime for a launcher to carry",
    "Packs a runtime image, which jlink makes, into a program that unpacks it: an installer for\n"
    "INSTALL_JVM. The key JVM_IMAGE of a manifest does the same when the launcher is built.\n"
    "\n"
    "  DIR         the runtime image\n"
    "  -o FILE     the installer to write\n"
    "  --keep      where the launcher keeps the unpacked runtime between runs:\n"
    "              \"%LOCALAPPDATA%\\My App\\runtime\"; by default each run unpacks it anew\n"
    "  --for       the system that the image must be for; by default either will do\n"
    "  --unpacker  the bare self-extractor; by default unpack-java.exe or unpack-java beside\n"
    "              corvane-pack or in ../lib/corvane\n",
    run};

}  // namespace corvane::pack
