// Class files, as far as they say how a program is started.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corvane::pack {

struct ClassFile {
    int major = 0;                   // of its version
    std::string name;                // as Java code writes it: "a.b.C"
    std::vector<std::string> bases;  // the class and the interfaces that it extends
    bool hasMain = false;            // public static void main(String[])
    std::string moduleMainClass;     // what a module-info names, or empty
};

// Raises `PackError` with what is wrong with it.
ClassFile readClass(std::string_view bytes);

// The Java that a class of this version needs: 8 for 52.
int javaOf(int major);

}  // namespace corvane::pack
