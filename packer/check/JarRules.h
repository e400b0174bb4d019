// Rules for the embedded class path files, in which the application's classes are.
#pragma once

#include <string>
#include <vector>

#include "packer/base/Findings.h"
#include "packer/check/CheckedProject.h"
#include "packer/jar/JarFacts.h"

namespace corvane::pack {

struct EmbeddedJar {
    const CheckedFile* file;
    JarFacts facts;
};

// The embedded class path files that are jars. Tells which can't be read.
std::vector<EmbeddedJar> readJars(const CheckedProject& project, Findings& findings);

// Checks that the jars run on every Java that a JVM file accepts.
void checkJava(const CheckedProject& project, const std::vector<EmbeddedJar>& jars,
               Findings& findings);

// Checks that one of the jars holds the class that `place` names to start with.
void checkMainClass(const std::vector<EmbeddedJar>& jars, const std::string& mainClass,
                    const Place& place, Findings& findings);

}  // namespace corvane::pack
