// What a project's JVM files ask of Java, in words for a user.
#pragma once

#include <string>

namespace corvane::pack {

struct Manifest;

// "Java 17 or later", "Java 17 or 21", or plain "Java" where the JVM files don't say it by
// `corvane.java.feature`.
std::string wantedJava(const Manifest& manifest);

}  // namespace corvane::pack
