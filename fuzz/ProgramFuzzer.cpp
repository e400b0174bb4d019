// Windows programs that are given a face.
#include <sstream>

#include "Fuzz.h"
#include "packer/base/Errors.h"
#include "packer/face/Face.h"

using namespace corvane;

namespace {

pack::Face wholeFace() {
    pack::Face face;
    for (const auto& [key, value] : {std::pair{"TITLE", "Title"},
                                     {"VERSION", "1.2"},
                                     {"ELEVATION", "admin"},
                                     {"SUBSYSTEM", "windows"}})
        pack::setFace(face, key, value, "");
    face.icon = {{16, 16, 0, 32, "image"}};
    return face;
}

// What was made is a program, and stays as it is when its resources are written again.
void checkWhole(const std::string& changed) {
    if (!pack::isWindowsProgram(changed))
        return;
    pack::Program program(changed);
    program.setResources(program.resources());
    fuzz::require(program.bytes() == changed);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const pack::Face face = wholeFace();
    const std::string bytes = fuzz::inputText(data, size);
    try {
        std::stringstream file(bytes);
        pack::writeChecksum(file);
        fuzz::require(file.str().size() == size);
        checkWhole(pack::withFace(bytes, face, "a.exe"));
    } catch (const pack::PackError&) {
        // It said what is wrong.
    }
    return 0;
}
