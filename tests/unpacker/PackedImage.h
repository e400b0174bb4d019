// A small runtime image, packed.
#pragma once

#include <filesystem>

#include "packer/base/Errors.h"
#include "packer/runtime/RuntimeInstaller.h"
#include "platform/Platform.h"
#include "support/Scratch.h"
#include "support/TestContext.h"
#include "unpacker/Unpacking.h"

namespace corvane::test {

class PackedImage {
  public:
    PackedImage() {
        scratch.write("image\\bin\\java.exe", "MZ\xE8\1\2\3" + std::string(1, '\0') + " program");
        scratch.write("image\\bin\\java", "#!/bin/sh\n");
        scratch.write("image\\release", "JAVA_VERSION=\"21.0.1\"\n");
        scratch.write("image\\lib\\modules", std::string(70000, 'm'));
        scratch.write("image\\lib\\empty", "");
        std::filesystem::create_directories(scratch.native("target"));
    }

    std::string pack(const std::string& place = "") const {
        const pack::RuntimeImage read = pack::readRuntimeImage(scratch.native("image"));
        scratch.write("stub", read.system == pack::System::windows ? "MZ"
                                                                   : "\x7F"
                                                                     "ELF");
        return pack::makeRuntimeInstaller(read, scratch.native("stub"), place);
    }

    // How the unpacking of an installer fails, if it does.
    std::string unpack(const std::string& installer) const {
        const String path = scratch.write("installer", installer);
        return failureOf([&] {
            const StreamGuard file(openStream(path.cstr(), "rb"));
            unpackRuntime(file.get(), static_cast<std::uint32_t>(installer.size()),
                          scratch.path("target"));
        });
    }

    std::vector<std::string> unpacked() const {
        std::vector<std::string> list;
        for (const std::string& path : scratch.list()) {
            if (path.starts_with("target\\"))
                list.push_back(path.substr(7));
        }
        return list;
    }

    Scratch scratch;
};

}  // namespace corvane::test
