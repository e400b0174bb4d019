// A JVM file as a table of named values for the command templates.
#include "jvmfile/JvmFile.h"

#include "foundation/TextLines.h"

namespace corvane {

void JvmFile::resolveToken(String& text, char, std::size_t start, std::size_t end) {
    const String name = text.substr(start + 1, end - start - 1);
    String value = tag(name.cstr());
    if (name == "JVM_HOME" && endsWith(value, pathSeparator) != String::npos)
        value.erase(value.length() - 1);
    text.replace(start, end - start + 1, value);
}

String JvmFile::expandTokens(const String& text) {
    return expandTemplate(*this, text, '@');
}

}  // namespace corvane
