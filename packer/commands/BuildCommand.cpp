// `corvane-pack build`.
#include <fstream>
#include <functional>
#include <iostream>
#include <sstream>

#include "packer/base/Paths.h"
#include "packer/base/Progress.h"
#include "packer/base/WholeFile.h"
#include "packer/check/Check.h"
#include "packer/commands/Command.h"
#include "packer/payload/PayloadWriter.h"
#include "packer/payload/Stub.h"
#include "packer/project/Project.h"
#include "packer/runtime/RuntimeInstaller.h"

namespace corvane::pack {

namespace {

namespace fs = std::filesystem;

// Makes the installers of the Java runtimes that the manifest names.
void packImages(Project& project) {
    for (ManifestEntry& file : project.manifest.entries) {
        if (!file.image.empty())
            file.content =
                makeRuntimeInstaller(readRuntimeImage(file.image), findUnpacker(project.system),
                                     project.manifest.keepPlace);
    }
}

// The size of the launcher but for its index. Finds a file that is too large while its line is
// known and nothing is written yet.
std::uint64_t checkSizes(const Project& project, const Stub& stub) {
    std::uint64_t size = stub.bytes.size();
    for (const ManifestEntry& file : project.manifest.entries) {
        size += file.path.empty() ? file.content.size() : fs::file_size(file.path);
        if (size >= sizeLimit)
            throw Mistake("too-large", file.place, tooLarge);
    }
    return size;
}

// An output that is one of the inputs, by whatever name, would destroy it.
void checkOutput(const Project& project, const Stub& stub, const fs::path& output) {
    if (fs::is_directory(output))
        throw PackError(output.string() + ": this is a folder; name a file with -o");
    const auto check = [&output](const fs::path& input) {
        std::error_code ignored;
        if (fs::equivalent(input, output, ignored))
            throw PackError(output.string() + ": this is an input of the launcher" +
                            (input == output ? "" : ", " + input.string()) +
                            "; name another file with -o");
    };
    check(project.manifestPath);
    check(stub.path);
    check(project.manifest.face.iconFile);
    for (const ManifestEntry& file : project.manifest.entries) {
        if (!file.path.empty())
            check(file.path);
    }
}

// Leaves the seal in the place that the program has for it.
void leaveRecord(std::ostream& out, const Stub& stub, const Seal& seal) {
    out.seekp(static_cast<std::streamoff>(stub.recordPosition));
    for (const std::uint32_t value : {seal.length, seal.checksum}) {
        for (int shift = 24; shift >= 0; shift -= 8)
            out.put(static_cast<char>(value >> shift & 0xFF));
    }
    if (!out.flush())
        throw PackError("the file could not be written");
}

void write(const Project& project, const Stub& stub, const fs::path& path, Progress& progress) {
    std::fstream out(path, std::ios::binary | std::ios::in | std::ios::out | std::ios::trunc);
    if (!out)
        throw PackError(path.string() + ": the file can't be created");
    PayloadWriter writer(out, [&progress](std::uint64_t size) { progress.reach(size); });
    std::istringstream program(stub.bytes);
    writer.appendProgram(program);
    appendFiles(project.manifest, writer);
    leaveRecord(out, stub, writer.finish(project.manifest.kind));
    writeChecksum(out);
}

// Gives the stub the face that the manifest describes.
void setFace(Stub& stub, const Project& project, const fs::path& output) {
    const std::u8string name = output.filename().u8string();
    try {
        setProgram(stub, withFace(stub.bytes, project.manifest.face, {name.begin(), name.end()}));
    } catch (const PackError& failure) {
        throw PackError(stub.path.string() + ": " + failure.what());
    }
}

// The output appears only when it is whole, and is a program as the stub is.
void build(const Project& project, const Stub& stub, const fs::path& output) {
    checkOutput(project, stub, output);
    checkOutput(project, stub, PartialFile::pathFor(output));
    const std::uint64_t size = checkSizes(project, stub);
    PartialFile partial(output);
    Progress progress(output.filename().string(), size);
    try {
        write(project, stub, partial.path(), progress);
        fs::permissions(partial.path(), fs::status(stub.path).permissions());
    } catch (const fs::filesystem_error& failure) {
        throw PackError(failure.what());
    }
    partial.keep();
}

// One line that says what was made.
void tell(const Project& project, const fs::path& output, std::ostream& out) {
    out << output.string() << ": for " << systemName(project.system) << ", "
        << sizeText(fs::file_size(output)) << ", holds ";
    const char* separator = "";
    for (const ManifestEntry& file : project.manifest.entries) {
        out << separator << file.entry.name;
        separator = ", ";
    }
    out << '\n';
}

// The bare launcher that is named, else the one for the system; that is the stub's own if only the
// stub is named.
Stub chooseStub(const std::optional<std::string>& name, std::optional<System> system) {
    Stub stub = readStub(name ? pathOf(*name) : findStub(system.value_or(System::windows)));
    if (system && stub.system != *system)
        throw PackError(stub.path.string() + ": this launcher is for " + systemName(stub.system) +
                        ", not for " + systemName(*system));
    return stub;
}

// A project without mistakes; warnings are printed.
Project readCheckedProject(const fs::path& place, System system) {
    Findings findings;
    Project project = checkProject(place, system, findings);
    findings.print(std::cerr);
    if (findings.hasErrors())
        throw PackError("nothing was built: the project has mistakes");
    return project;
}

int run(Arguments& arguments) {
    const std::optional<std::string> output = arguments.takeValue("-o");
    const std::optional<std::string> stubName = arguments.takeValue("--stub");
    const std::optional<System> system = takeSystem(arguments);
    const bool unchecked = arguments.takeFlag("--no-check");
    const fs::path place = findManifest(takeProject(arguments));
    Stub stub = chooseStub(stubName, system);
    Project project =
        unchecked ? readSoundProject(place, stub.system) : readCheckedProject(place, stub.system);
    const fs::path outputPath = output ? pathOf(*output) : project.output();
    setFace(stub, project, outputPath);
    packImages(project);
    build(project, stub, outputPath);
    tell(project, outputPath, std::cout);
    return success;
}

}  // namespace

const Command buildCommand = {
    "build", "[FOLDER|MANIFEST] [-o FILE] [--for windows|host] [--stub LAUNCHER] [--no-check]",
    "makes a launcher of a project",
    "Appends the files that the manifest names to a copy of the bare launcher.\n"
    "\n"
    "  FOLDER      holds one *.manifest; the current folder if nothing is named\n"
    "  -o FILE     the launcher to write; by default it stands beside the manifest and is\n"
    "              called as it is, on Windows with .exe\n"
    "  --for       the system for which it is made: windows (the default), or host, which is\n"
    "              Linux\n"
    "  --stub      the bare launcher; by default launcher.exe or launcher beside corvane-pack or\n"
    "              in ../lib/corvane\n"
    "  --no-check  packs files that the launcher could not run\n",
    run};

}  // namespace corvane::pack
